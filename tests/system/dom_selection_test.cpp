// Selecting by path and by tag name.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

TEST(DomSelection, APathOfOneNameSelectsChildrenOnly) {
  const CComPtr<IXMLDOMDocument> document =
      Loaded("<r><Node N='1'><Node N='2'/></Node><Other N='3'><Node N='4'/></Other><Node N='5'/></r>");
  EXPECT_EQ(Selected(RootOf(document), _T("Node")), "Node(1) Node(5) ");
  EXPECT_EQ(Selected(RootOf(document), _T("node")), "");
  EXPECT_EQ(Selected(RootOf(document), _T("r")), "");
  EXPECT_EQ(Selected(document, _T("r")), "r((none)) ");
}

TEST(DomSelection, APathOfSeveralNamesGoesDownInDocumentOrder) {
  const CComPtr<IXMLDOMDocument> document = Loaded(
      "<r><S><Q N='1'/><P/><Q N='2'><Q N='x'/></Q></S><Q N='y'/><S/><T><Q N='z'/></T><S><Q N='3'/><P><Q/></P></S></r>");
  EXPECT_EQ(Selected(RootOf(document), _T("S/Q")), "Q(1) Q(2) Q(3) ");
  EXPECT_EQ(Selected(RootOf(document), _T("S/Q/Q")), "Q(x) ");
  EXPECT_EQ(Selected(document, _T("r/S/Q")), "Q(1) Q(2) Q(3) ");
  EXPECT_EQ(Selected(RootOf(document), _T("S/Q/P")), "");
}

TEST(DomSelection, StaysBelowTheNodeThatIsAsked) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><a><b><c N='1'/></b></a><a><b><c N='2'/></b></a></r>");
  CComPtr<IXMLDOMNode> first;
  ASSERT_EQ(RootOf(document)->selectSingleNode(CComBSTR(_T("a")), &first), S_OK);
  EXPECT_EQ(Selected(first, _T("b/c")), "c(1) ");
}

TEST(DomSelection, TheSingleNodeIsTheFirst) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><a N='1'/><a N='2'/></r>");
  CComPtr<IXMLDOMNode> node;
  EXPECT_EQ(RootOf(document)->selectSingleNode(CComBSTR(_T("a")), &node), S_OK);
  EXPECT_EQ(AttributeOf(node, _T("N")), _T("1"));
  EXPECT_EQ(RootOf(document)->selectSingleNode(CComBSTR(_T("b")), &node), S_FALSE);
  EXPECT_EQ(node.p, nullptr);
}

TEST(DomSelection, NeedsAnExpression) {
  CComPtr<IXMLDOMNodeList> list;
  EXPECT_EQ(Hex(RootOf(Loaded("<r><a/></r>"))->selectNodes(nullptr, &list)), Hex(E_INVALIDARG));
}

TEST(DomSelection, OfANodeWithoutChildrenIsEmpty) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r a='1'/>");
  EXPECT_EQ(Selected(RootOf(document), _T("r")), "");
  EXPECT_EQ(Selected(NewAttribute(document, _T("a"), _T("")), _T("r")), "");
  EXPECT_EQ(Tagged(RootOf(document), _T("r")), "");
}

TEST(DomSelection, TagNamesAreFoundAtAnyDepth) {
  const CComPtr<IXMLDOMDocument> document =
      Loaded("<g N='0'><g N='1'><x><g N='2'/></x><g N='3'/></g><y><g N='4'/></y><g N='5'/></g>");
  EXPECT_EQ(Tagged(RootOf(document), _T("g")), "g(1) g(2) g(3) g(4) g(5) ") << "the element itself is not below itself";
  CComPtr<IXMLDOMNode> inner;
  ASSERT_EQ(RootOf(document)->selectSingleNode(CComBSTR(_T("g")), &inner), S_OK);
  CComPtr<IXMLDOMElement> element;
  ASSERT_EQ(inner.QueryInterface(&element), S_OK);
  EXPECT_EQ(Tagged(element, _T("g")), "g(2) g(3) ");
  EXPECT_EQ(Tagged(element, _T("G")), "");
}

TEST(DomSelection, AListStaysAtItsEnd) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><a/></r>");
  for (const bool byTag : {false, true}) {
    CComPtr<IXMLDOMNodeList> list;
    const CComBSTR name(_T("a"));
    const HRESULT status =
        byTag ? RootOf(document)->getElementsByTagName(name, &list) : RootOf(document)->selectNodes(name, &list);
    ASSERT_EQ(status, S_OK);
    CComPtr<IXMLDOMNode> node;
    EXPECT_EQ(list->nextNode(&node), S_OK);
    for (int again = 0; again < 3; ++again) {
      EXPECT_EQ(list->nextNode(&node), S_FALSE);
      EXPECT_EQ(node.p, nullptr);
    }
    EXPECT_EQ(Hex(list->nextNode(nullptr)), Hex(E_INVALIDARG));
  }
}

TEST(DomSelection, AListBearsThatItsNodesMove) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><s><a N='1'/><a N='2'/><a N='3'/></s><t/></r>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  CComPtr<IXMLDOMNode> target;
  ASSERT_EQ(root->selectSingleNode(CComBSTR(_T("t")), &target), S_OK);
  CComPtr<IXMLDOMNodeList> list;
  ASSERT_EQ(root->selectNodes(CComBSTR(_T("s/a")), &list), S_OK);
  int moved = 0;
  for (CComPtr<IXMLDOMNode> node; moved < 10 && list->nextNode(&node) == S_OK; ++moved) {
    EXPECT_EQ(target->appendChild(node, nullptr), S_OK);
  }
  EXPECT_GE(moved, 1);
  EXPECT_LE(moved, 3);
}

TEST(DomSelection, OfADocumentBeginsAtItsRoot) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><a N='1'/></r>");
  CComPtr<IXMLDOMNode> node;
  EXPECT_EQ(document->selectSingleNode(CComBSTR(_T("r/a")), &node), S_OK);
  EXPECT_EQ(AttributeOf(node, _T("N")), _T("1"));
  node.Release();
  EXPECT_EQ(document->selectSingleNode(CComBSTR(_T("a")), &node), S_FALSE);
  EXPECT_EQ(node.p, nullptr);
}

TEST(DomSelection, PassesOverInstructions) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
  CComPtr<IXMLDOMProcessingInstruction> instruction;
  ASSERT_EQ(document->createProcessingInstruction(CComBSTR(_T("a")), CComBSTR(_T("q")), &instruction), S_OK);
  ASSERT_EQ(RootOf(document)->appendChild(instruction, nullptr), S_OK);
  ASSERT_EQ(RootOf(document)->appendChild(NewElement(document, _T("a")), nullptr), S_OK);
  EXPECT_EQ(Selected(RootOf(document), _T("a")), "a((none)) ");
  CComPtr<IXMLDOMNodeList> tagged;
  ASSERT_EQ(RootOf(document)->getElementsByTagName(CComBSTR(_T("a")), &tagged), S_OK);
  for (const HRESULT status : {S_OK, S_FALSE}) {
    CComPtr<IXMLDOMNode> node;
    EXPECT_EQ(tagged->nextNode(&node), status);
  }
}

}  // namespace
}  // namespace ondrel::test
