// The console tree written to and read from a document whose calls fail, each in turn.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/model/documents.h"
#include "support/model/failing_document.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

using Probe = CMMCObjectSetProbe;

void FillTree(CMMCObjectSet& set) {
  ASSERT_EQ(set.AddNode(-1, 1, MakeRecord({.cookie = 1, .name = _T("top"), .type = CMMCObjectParams::eHTML})), 0);
  ASSERT_EQ(set.AddNode(1, 2, MakeRecord({.cookie = 2, .name = _T("a"), .menuScript = 7})), 0);
  ASSERT_EQ(set.AddNode(1, 3, MakeRecord({.cookie = 3, .name = _T("b")})), 0);
  ASSERT_EQ(set.AddNode(2, 4, MakeRecord({.cookie = 4, .name = _T("aa")})), 0);
}

TEST(NodeTreeXmlFaults, AFailedWriteAttachesNothingToTheParent) {
  CMMCObjectSet set(LeaveToSet);
  FillTree(set);
  for (std::size_t failing = 1;; ++failing) {
    const CComPtr<IXMLDOMDocument> document = ParseDocument("<G><Old/></G>");
    DocumentCalls calls(failing);
    const HRESULT status = Probe::SerializeNode(set, 1, Failing(document, calls), Failing(RootOf(document), calls));
    if (!calls.HasFailed()) {
      EXPECT_EQ(status, 0);
      EXPECT_GT(failing, 80U) << "four nodes take more than 20 calls each";
      break;
    }
    EXPECT_EQ(status, kChosenFailure) << "call " << failing << ", " << calls.Log()[failing - 1];
    EXPECT_EQ(calls.Log().size(), failing) << "a call was made after " << calls.Log()[failing - 1];
    EXPECT_EQ(XmlOf(document), "<G><Old/></G>") << "call " << failing << ", " << calls.Log()[failing - 1];
  }
}

TEST(NodeTreeXmlFaults, TheParentIsTouchedLastAndOnce) {
  CMMCObjectSet set(LeaveToSet);
  FillTree(set);
  const CComPtr<IXMLDOMDocument> document = ParseDocument("<G/>");
  DocumentCalls calls;
  DocumentCalls parentCalls;
  EXPECT_EQ(Probe::SerializeNode(set, 1, Failing(document, calls), Failing(RootOf(document), parentCalls)), 0);
  EXPECT_EQ(parentCalls.Log(), std::vector<std::string>{"appendChild"});
}

TEST(NodeTreeXmlFaults, AFailedReadKeepsTheNodesBeforeItAndStops) {
  const CComPtr<IXMLDOMDocument> document =
      ParseDocument(R"(<P><G><Node Cookie="1" Name="" Icon="0" Type="List"><MenuScript/><Nodes>)"
                    R"(<Node Cookie="2" Name="" Icon="0" Type="List"><MenuScript/></Node></Nodes></Node></G>)"
                    R"(<G><Node Cookie="3" Name="" Icon="0" Type="List"><MenuScript/></Node></G></P>)");
  // A failure in the walk over a record's scripts is not the tree's to report.
  const auto isInScripts = [](const std::vector<std::string>& log) {
    return !log.empty() && (log.back() == "selectNodes Scripts/Script" ||
                            (log.size() >= 2 && log[log.size() - 2] == "selectNodes Scripts/Script"));
  };
  std::vector<std::string> cookies;
  DocumentCalls whole;
  {
    CMMCObjectSet set(LeaveToSet);
    ASSERT_EQ(Probe::DeserializeNodes(set, -1, Failing(Select(RootOf(document), _T("G")), whole)), 1);
  }
  for (std::size_t failing = 1; failing <= whole.Log().size(); ++failing) {
    CMMCObjectSet set(LeaveToSet);
    DocumentCalls calls(failing);
    const HRESULT status = Probe::DeserializeNodes(set, -1, Failing(Select(RootOf(document), _T("G")), calls));
    const std::vector<std::string> before(whole.Log().begin(),
                                          whole.Log().begin() + static_cast<std::ptrdiff_t>(failing));
    const std::string where = "call " + std::to_string(failing) + ", " + before.back();
    if (isInScripts(before)) {
      EXPECT_EQ(status, 1) << where;
      continue;
    }
    EXPECT_EQ(status, kChosenFailure) << where;
    EXPECT_EQ(calls.Log().size(), failing) << where;
    EXPECT_FALSE(set.IsModified());
    std::string text;
    for (const auto& [key, record] : Probe::Tables(set).nodes) {
      text += std::to_string(key.first) + ">" + std::to_string(key.second) + " ";
    }
    if (cookies.empty() || cookies.back() != text) cookies.push_back(text);
  }
  EXPECT_EQ(cookies, (std::vector<std::string>{"", "-1>1 ", "-1>1 1>2 ", "-1>1 -1>3 1>2 "}));
}

}  // namespace
}  // namespace ondrel::test
