// The console tree read from XML.

#include <gtest/gtest.h>

#include <list>
#include <string>
#include <string_view>
#include <utility>

#include "support/model/documents.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

using Cookies = std::list<__int64>;

/// Reads the elements G of the document's element, as children of `parent`.
HRESULT Read(CMMCObjectSet& set, std::string_view groups, __int64 parent = CMMCObjectSet::RootNode) {
  const CComPtr<IXMLDOMDocument> document = ParseDocument("<P>" + std::string(groups) + "</P>");
  return CMMCObjectSetProbe::DeserializeNodes(set, parent, Select(RootOf(document), _T("G")));
}

/// A List node without files, with its cookie as its name.
std::string Node(int cookie, const std::string& inside = "") {
  const std::string number = std::to_string(cookie);
  return "<Node Cookie=\"" + number + "\" Name=\"n" + number + "\" Icon=\"0\" Type=\"List\"><MenuScript/>" + inside +
         "</Node>";
}

/// Each node as "parent>cookie", in the order of the tree. Every record must have its cookie and its name.
std::string TreeOf(const CMMCObjectSet& set) {
  std::string text;
  for (const auto& [key, record] : CMMCObjectSetProbe::Tables(set).nodes) {
    CString name;
    name.Format(_T("n%d"), static_cast<int>(key.second));
    EXPECT_TRUE(SameRecord(record, {.cookie = key.second, .name = name}));
    text += std::to_string(key.first) + ">" + std::to_string(key.second) + " ";
  }
  return text;
}

TEST(NodeTreeXmlRead, AddsNodesWithTheirSubtreesAndAnswersOne) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(Read(set, "<G>" + Node(1, "<Nodes>" + Node(2, "<Nodes>" + Node(3) + "</Nodes>") + Node(4) + "</Nodes>") +
                          Node(5) + "</G>"),
            1);
  EXPECT_EQ(TreeOf(set), "-1>1 -1>5 1>2 1>4 2>3 ");
  EXPECT_FALSE(set.IsModified());
}

TEST(NodeTreeXmlRead, AnswersOneForAnEmptyListAndAddsNothing) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(Read(set, ""), 1);
  EXPECT_EQ(Read(set, "<G/>"), 1);
  EXPECT_EQ(DescribeObjects(set), "");
}

TEST(NodeTreeXmlRead, AddsBelowTheGivenParentAndToWhatIsThere) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(-1, 1, MakeRecord({.cookie = 1, .name = _T("n1")})), 0);
  EXPECT_EQ(Read(set, "<G>" + Node(2) + "</G>", 1), 1);
  EXPECT_EQ(Read(set, "<G>" + Node(3) + "</G>", 99), 1);
  EXPECT_EQ(TreeOf(set), "-1>1 1>2 99>3 ");
}

TEST(NodeTreeXmlRead, ReadsEveryContainer) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(Read(set, "<G>" + Node(1) + "</G><Other>" + Node(9) + "</Other><G/><G>" + Node(2) + "</G>"), 1);
  EXPECT_EQ(TreeOf(set), "-1>1 -1>2 ");
}

TEST(NodeTreeXmlRead, ReadsSeveralContainersOfOneNode) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(
      Read(set,
           "<G>" + Node(1, "<Nodes>" + Node(2) + "</Nodes><Nodes/><Nodes>" + Node(3) + Node(4) + "</Nodes>") + "</G>"),
      1);
  EXPECT_EQ(TreeOf(set), "-1>1 1>2 1>3 1>4 ");
}

TEST(NodeTreeXmlRead, ReadsDirectChildrenOnly) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(Read(set, "<G><Other>" + Node(1) + "</Other><Nodes>" + Node(2) + "</Nodes><node/></G>"), 1);
  EXPECT_EQ(TreeOf(set), "");
  EXPECT_EQ(Read(set, "<G>" +
                          Node(3, "<Other><Nodes>" + Node(4) + "</Nodes></Other>" + Node(5) + "<Nodes><Other>" +
                                      Node(6) + "</Other></Nodes><nodes>" + Node(7) + "</nodes>") +
                          "</G>"),
            1);
  EXPECT_EQ(TreeOf(set), "-1>3 ");
}

TEST(NodeTreeXmlRead, KeepsCookiesAndOrdersSiblingsByThem) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(Read(set, "<G>" + Node(30) + Node(10) + Node(20, "<Nodes>" + Node(5) + "</Nodes>") + Node(-4) + "</G>"), 1);
  EXPECT_EQ(set.GetChildNodes(-1), (Cookies{10, 20, 30}));
  EXPECT_EQ(set.GetChildNodes(20), Cookies{5});
  EXPECT_EQ(TreeOf(set), "-1>-4 -1>10 -1>20 -1>30 20>5 ");
}

TEST(NodeTreeXmlRead, ReadsWholeRecords) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(
      Read(set, R"(<G><Node Cookie="12" Name="Status" Icon="31" Type="HTML"><ChildQueries>)"
                R"(<Query Tag="Disks" File="40"/><Query Tag="Fans" File="41"/></ChildQueries><MenuScript File="43"/>)"
                R"(<Scripts><Script File="44"/><Script File="45"/><Script File="46"/></Scripts>)"
                R"(<StyleSheet File="42"/><RenderQueries><Query Tag="Summary" File="47"/>)"
                R"(<Query Tag="Detail" File="48"/></RenderQueries></Node></G>)"),
      1);
  EXPECT_TRUE(HasRecord(set, 12, FullRecord(CMMCObjectParams::eHTML)));
}

TEST(NodeTreeXmlRead, ANodeThatDoesNotReadStopsTheWalkAfterThoseBeforeIt) {
  const std::pair<std::string, HRESULT> nodes[] = {
      {R"(<Node Cookie="9" Name="" Type="List"><MenuScript/><Nodes>)" + Node(10) + "</Nodes></Node>", kInvalidData},
      {R"(<Node Cookie="9" Name="" Icon="0" Type="List"/>)", kInvalidData},
      {R"(<Node Cookie="nine" Name="" Icon="0" Type="List"><MenuScript/></Node>)", kTypeMismatch},
  };
  for (const auto& [bad, status] : nodes) {
    CMMCObjectSet set(LeaveToSet);
    EXPECT_EQ(
        Read(set, "<G>" + Node(1, "<Nodes>" + Node(2) + "</Nodes>") + bad + Node(3) + "</G><G>" + Node(4) + "</G>"),
        status)
        << bad;
    EXPECT_EQ(TreeOf(set), "-1>1 1>2 ") << bad;
    EXPECT_FALSE(set.IsModified()) << bad;
  }
}

TEST(NodeTreeXmlRead, ANodeThatDoesNotReadStopsTheWalkFarBelowToo) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(
      Read(set, "<G>" + Node(1, "<Nodes>" + Node(2, "<Nodes>" + Node(3) + "<Node/></Nodes>") + Node(4) + "</Nodes>") +
                    Node(5) + "</G>"),
      kInvalidData);
  EXPECT_EQ(TreeOf(set), "-1>1 1>2 2>3 ");
}

TEST(NodeTreeXmlRead, ACookieThatIsTakenStopsTheWalk) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(Read(set, "<G>" + Node(1, "<Nodes>" + Node(2) + Node(1, "<Nodes>" + Node(3) + "</Nodes>") + "</Nodes>") +
                          Node(4) + "</G>"),
            kAlreadyExists);
  EXPECT_EQ(TreeOf(set), "-1>1 1>2 ");

  CMMCObjectSet withDialog(LeaveToSet);
  ASSERT_EQ(withDialog.AddDialog(2, MakeRecord({.cookie = 2, .name = _T("d")})), 0);
  EXPECT_EQ(Read(withDialog, "<G>" + Node(1) + Node(2) + Node(3) + "</G>"), kAlreadyExists);
  EXPECT_EQ(TreeOf(withDialog), "-1>1 ");
}

TEST(NodeTreeXmlRead, ANodeIsAddedBeforeItsChildren) {
  // The child has its parent's cookie, so the parent is the one that stays.
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(Read(set, "<G>" + Node(1, "<Nodes>" + Node(1) + "</Nodes>") + "</G>"), kAlreadyExists);
  EXPECT_EQ(TreeOf(set), "-1>1 ");
}

}  // namespace
}  // namespace ondrel::test
