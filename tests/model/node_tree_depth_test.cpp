// Chains of a million nodes, each the child of the one before, on a stack that recursion would fill.

#include <gtest/gtest.h>

#include <cstddef>
#include <list>

#include "support/archive_bytes.h"
#include "support/model/documents.h"
#include "support/model/hand_bytes.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/sanitizers.h"
#include "support/small_stack.h"

namespace ondrel::test {
namespace {

using Probe = CMMCObjectSetProbe;

constexpr std::size_t kStack = 256 * 1024;

// The sanitizers watch every access to memory, and would take minutes for the full depth on a busy machine. A level
// that took only two bytes of stack would still show.
constexpr __int64 kDepth = kSanitized ? 100'000 : 1'000'000;

void FillChain(CMMCObjectSet& set, __int64 depth = kDepth) {
  for (__int64 cookie = 0; cookie < depth; ++cookie) {
    ASSERT_EQ(set.AddNode(cookie - 1, cookie, CMMCObjectParams(cookie, _T(""), CMMCObjectParams::eList)), 0);
  }
}

void ExpectChain(CMMCObjectSet& set) {
  const auto& nodes = Probe::Tables(set).nodes;
  ASSERT_EQ(nodes.size(), static_cast<std::size_t>(kDepth));
  __int64 cookie = 0;
  for (const auto& [key, record] : nodes) {
    ASSERT_EQ(key.first, cookie - 1);
    ASSERT_EQ(key.second, cookie);
    ASSERT_EQ(record.GetCookie(), cookie);
    ++cookie;
  }
}

TEST(NodeTreeDepth, ChainsPassThroughXmlAndBack) {
  RunOnStack(kStack, [] {
    const CComPtr<IXMLDOMDocument> document = NewDocument();
    const CComPtr<IXMLDOMElement> root = AddRoot(document, _T("P"));
    CComPtr<IXMLDOMElement> group;
    ASSERT_EQ(document->createElement(CComBSTR(_T("G")), &group), 0);
    ASSERT_EQ(root->appendChild(group, nullptr), 0);
    {
      CMMCObjectSet set(LeaveToSet);
      FillChain(set);
      ASSERT_EQ(Probe::SerializeNode(set, 0, document, group), 0);
    }
    CMMCObjectSet set(LeaveToSet);
    ASSERT_EQ(Probe::DeserializeNodes(set, CMMCObjectSet::RootNode, Select(root, _T("G"))), 1);
    ExpectChain(set);
  });
}

TEST(NodeTreeDepth, ChainsPassThroughTheBinaryFormAndBack) {
  RunOnStack(kStack, [] {
    std::string bytes;
    {
      CMMCObjectSet set(LeaveToSet);
      FillChain(set);
      bytes = Stored([&](CVellum& archive) { Probe::SerializeNode(set, 0, archive); });
    }
    // Cookie, empty name, icon, type, no child queries, menu script, no scripts; then the number of children.
    const std::size_t recordSize = 8 + 4 + 8 + 4 + 8 + 8 + 8;
    ASSERT_EQ(bytes.size(), static_cast<std::size_t>(kDepth) * (recordSize + 8));
    const auto entry = [](__int64 cookie, std::uint64_t children) {
      return Cookie(cookie) + ShortText("") + Cookie(0) + Long(0) + Count(0) + Cookie(0) + Count(0) + Count(children);
    };
    EXPECT_EQ(Hex(bytes.substr(0, 2 * (recordSize + 8))), Hex(entry(0, 1) + entry(1, 1)));
    EXPECT_EQ(Hex(bytes.substr(bytes.size() - recordSize - 8)), Hex(entry(kDepth - 1, 0)));

    CMMCObjectSet set(LeaveToSet);
    LoadingArchive archive(bytes);
    Probe::DeserializeNode(set, CMMCObjectSet::RootNode, *archive);
    EXPECT_EQ(archive.Unused(), 0U);
    ExpectChain(set);
  });
}

TEST(NodeTreeDepth, AFailureFarBelowLeavesTheParentAlone) {
  constexpr __int64 kFar = 50'000;  // deep enough for the stack, and quick
  RunOnStack(kStack, [] {
    CMMCObjectSet set(LeaveToSet);
    FillChain(set, kFar);
    Probe::ForgetObject(set, kFar - 1);
    const CComPtr<IXMLDOMDocument> document = ParseDocument("<G/>");
    EXPECT_EQ(Probe::SerializeNode(set, 0, document, RootOf(document)), static_cast<HRESULT>(0x80070490));
    EXPECT_EQ(XmlOf(document), "<G/>");
  });
}

}  // namespace
}  // namespace ondrel::test
