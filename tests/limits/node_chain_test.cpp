// Chains of a million nodes, each the child of the one before, on a stack that recursion would fill.
#include <gtest/gtest.h>

#include <string>

#include "node_chain.h"
#include "support/archive_bytes.h"
#include "support/model/documents.h"
#include "support/model/hand_bytes.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

TEST(NodeChain, IsSavedAsAnImageAndLoadedAgain) {
  RunOnStack(kChainStack, [] {
    std::string image;
    {
      CMMCObjectSet set(LeaveToSet);
      FillChain(set);
      image = SavedImage(set);
    }
    // Cookie, empty name, icon, type, no child queries, menu script, no scripts; then the number of children.
    const std::size_t entrySize = 8 + 4 + 8 + 4 + 8 + 8 + 8 + 8;
    const std::string head = Long(1) + Long(1) + Count(1);
    const std::string tail = Count(0) + Count(0) + Count(0) + Count(0);  // dialogs, icon files, code files twice
    ASSERT_EQ(image.size(), head.size() + static_cast<std::size_t>(kChainDepth) * entrySize + tail.size());
    const auto entry = [](__int64 cookie, std::uint64_t children) {
      return Cookie(cookie) + ShortText("") + Cookie(0) + Long(0) + Count(0) + Cookie(0) + Count(0) + Count(children);
    };
    EXPECT_EQ(Hex(image.substr(0, head.size() + 2 * entrySize)), Hex(head + entry(0, 1) + entry(1, 1)));
    EXPECT_EQ(Hex(image.substr(image.size() - tail.size() - entrySize)), Hex(entry(kChainDepth - 1, 0) + tail));

    CMMCObjectSet set(LeaveToSet);
    LoadImage(set, image);
    ExpectChain(set);
  });
}

TEST(NodeChain, AFailureFarBelowLeavesTheParentAlone) {
  constexpr __int64 kFar = 50'000;  // deep enough for the stack, and quick
  RunOnStack(kChainStack, [] {
    CMMCObjectSet set(LeaveToSet);
    FillChain(set, kFar);
    CMMCObjectSetProbe::ForgetObject(set, kFar - 1);
    const CComPtr<IXMLDOMDocument> document = ParseDocument("<G/>");
    EXPECT_EQ(CMMCObjectSetProbe::SerializeNode(set, 0, document, RootOf(document)), kNotFound);
    EXPECT_EQ(XmlOf(document), "<G/>");
  });
}

}  // namespace
}  // namespace ondrel::test
