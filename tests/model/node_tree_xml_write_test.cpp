// The console tree as XML: nested elements, one for each node.

#include <gtest/gtest.h>

#include <string>

#include "support/model/documents.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

/// The document after the node was written below an element G, which must succeed with 0.
std::string Written(CMMCObjectSet& set, __int64 cookie) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  EXPECT_EQ(CMMCObjectSetProbe::SerializeNode(set, cookie, document, AddRoot(document, _T("G"))), 0);
  return XmlOf(document);
}

/// An element of a List node without files, up to its children.
std::string Head(int cookie, const std::string& name) {
  return "<Node Cookie=\"" + std::to_string(cookie) + "\" Name=\"" + name +
         "\" Icon=\"0\" Type=\"List\"><ChildQueries/><MenuScript/><Scripts/>";
}

TEST(NodeTreeXmlWrite, ALeafHasNoContainerOfChildren) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 3, _T("leaf"));
  EXPECT_EQ(Written(set, 3), "<G>" + Head(3, "leaf") + "</Node></G>");
  EXPECT_FALSE(set.IsModified());
}

TEST(NodeTreeXmlWrite, ANodeHoldsItsRecordAndThenItsChildrenInTheirOrder) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("top"));
  AddNamed(set, 1, 9, _T("third"));
  AddNamed(set, 1, 2, _T("first"));
  AddNamed(set, 1, 5, _T("second"));
  EXPECT_EQ(Written(set, 1), "<G>" + Head(1, "top") + "<Nodes>" + Head(2, "first") + "</Node>" + Head(5, "second") +
                                 "</Node>" + Head(9, "third") + "</Node></Nodes></Node></G>");
}

TEST(NodeTreeXmlWrite, SubtreesStandInTheirNodes) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("top"));
  AddNamed(set, 1, 2, _T("a"));
  AddNamed(set, 1, 3, _T("b"));
  AddNamed(set, 2, 4, _T("aa"));
  AddNamed(set, 4, 5, _T("aaa"));
  AddNamed(set, 3, 6, _T("ba"));
  EXPECT_EQ(Written(set, 1), "<G>" + Head(1, "top") + "<Nodes>" +                                         //
                                 Head(2, "a") + "<Nodes>" + Head(4, "aa") + "<Nodes>" + Head(5, "aaa") +  //
                                 "</Node></Nodes></Node></Nodes></Node>" +                                //
                                 Head(3, "b") + "<Nodes>" + Head(6, "ba") + "</Node></Nodes></Node>" +    //
                                 "</Nodes></Node></G>");
  EXPECT_EQ(Written(set, 3), "<G>" + Head(3, "b") + "<Nodes>" + Head(6, "ba") + "</Node></Nodes></Node></G>")
      << "any node can be the first";
}

TEST(NodeTreeXmlWrite, TheViewStandsBeforeTheChildren) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(-1, 1, MakeRecord({.cookie = 1, .type = CMMCObjectParams::eHTML, .styleSheet = 8})), 0);
  AddNamed(set, 1, 2, _T("child"));
  EXPECT_EQ(Written(set, 1), R"(<G><Node Cookie="1" Name="" Icon="0" Type="HTML"><ChildQueries/><MenuScript/>)"
                             R"(<Scripts/><StyleSheet File="8"/><RenderQueries/><Nodes>)" +
                                 Head(2, "child") + "</Node></Nodes></Node></G>");
}

TEST(NodeTreeXmlWrite, ChildrenThatAreNotListedAreNotWritten) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("top"));
  AddNamed(set, 1, -2, _T("not listed"));
  EXPECT_EQ(Written(set, 1), "<G>" + Head(1, "top") + "</Node></G>");
  EXPECT_EQ(Written(set, -2), "<G>" + Head(-2, "not listed") + "</Node></G>");
}

TEST(NodeTreeXmlWrite, TheRecordIsWrittenAsItIsNowUnderWhateverCookieItIsFiled) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("old"));
  const CMMCObjectParams record = MakeRecord({.cookie = 9, .name = _T("new")});
  set.SetParams(1, &record);
  EXPECT_EQ(Written(set, 1), "<G>" + Head(9, "new") + "</Node></G>");
}

TEST(NodeTreeXmlWrite, GoesBehindWhatIsThere) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("a"));
  AddNamed(set, -1, 2, _T("b"));
  const CComPtr<IXMLDOMDocument> document = ParseDocument("<G><Old/></G>");
  EXPECT_EQ(CMMCObjectSetProbe::SerializeNode(set, 1, document, RootOf(document)), 0);
  EXPECT_EQ(CMMCObjectSetProbe::SerializeNode(set, 2, document, RootOf(document)), 0);
  EXPECT_EQ(XmlOf(document), "<G><Old/>" + Head(1, "a") + "</Node>" + Head(2, "b") + "</Node></G>");
}

TEST(NodeTreeXmlWrite, AnUnknownCookieIsNotFoundAndWritesNothing) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("a"));
  const CComPtr<IXMLDOMDocument> document = ParseDocument("<G><Old/></G>");
  EXPECT_EQ(CMMCObjectSetProbe::SerializeNode(set, 2, document, RootOf(document)), kNotFound);
  EXPECT_EQ(CMMCObjectSetProbe::SerializeNode(set, CMMCObjectSet::RootNode, document, RootOf(document)), kNotFound);
  EXPECT_EQ(XmlOf(document), "<G><Old/></G>");
}

TEST(NodeTreeXmlWrite, AChildThatVanishedIsNotFoundAndNothingIsWritten) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("a"));
  AddNamed(set, 1, 2, _T("b"));
  AddNamed(set, 2, 3, _T("c"));
  AddNamed(set, 2, 4, _T("d"));
  const CComPtr<IXMLDOMDocument> document = ParseDocument("<G><Old/></G>");
  CMMCObjectSetProbe::ForgetObject(set, 4);
  EXPECT_EQ(CMMCObjectSetProbe::SerializeNode(set, 1, document, RootOf(document)), kNotFound);
  EXPECT_EQ(XmlOf(document), "<G><Old/></G>");
}

}  // namespace
}  // namespace ondrel::test
