// Nodes of a document: how they are made, where they can stand, what they tell of themselves.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

template <class Wanted, class Node>
HRESULT Ask(const CComPtr<Node>& node) {
  CComPtr<Wanted> answer;
  return node.QueryInterface(&answer);
}

CComPtr<IXMLDOMProcessingInstruction> NewInstruction(IXMLDOMDocument* document) {
  CComPtr<IXMLDOMProcessingInstruction> instruction;
  EXPECT_EQ(document->createProcessingInstruction(CComBSTR(_T("xml")), CComBSTR(_T("version='1.0'")), &instruction),
            S_OK);
  return instruction;
}

TEST(DomNode, TellsItsNameAndValue) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  EXPECT_EQ(NameOf(document), _T("#document"));
  const CComPtr<IXMLDOMElement> element = NewElement(document, _T("Node"));
  EXPECT_EQ(NameOf(element), _T("Node"));
  const CComPtr<IXMLDOMAttribute> attribute = NewAttribute(document, _T("Cookie"), _T("12"));
  EXPECT_EQ(NameOf(attribute), _T("Cookie"));
  const CComPtr<IXMLDOMProcessingInstruction> instruction = NewInstruction(document);
  EXPECT_EQ(NameOf(instruction), _T("xml"));

  CComVariant value;
  EXPECT_EQ(attribute->get_nodeValue(&value), S_OK);
  EXPECT_EQ(CString(value.bstrVal), _T("12"));
  value.Clear();
  EXPECT_EQ(instruction->get_nodeValue(&value), S_OK);
  EXPECT_EQ(CString(value.bstrVal), _T("version='1.0'"));
  value.Clear();
  EXPECT_EQ(element->get_nodeValue(&value), S_FALSE);
  EXPECT_EQ(value.vt, VT_NULL);
  EXPECT_EQ(document->get_nodeValue(&value), S_FALSE);
  EXPECT_EQ(value.vt, VT_NULL);
}

TEST(DomNode, AnswersForItsInterfaces) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMElement> element = NewElement(document, _T("e"));
  const CComPtr<IXMLDOMAttribute> attribute = NewAttribute(document, _T("a"), _T(""));
  const CComPtr<IXMLDOMProcessingInstruction> instruction = NewInstruction(document);
  EXPECT_EQ(Ask<IXMLDOMNode>(document), S_OK);
  EXPECT_EQ(Ask<IXMLDOMNode>(element), S_OK);
  EXPECT_EQ(Ask<IXMLDOMNode>(attribute), S_OK);
  EXPECT_EQ(Ask<IXMLDOMNode>(instruction), S_OK);
  EXPECT_EQ(Ask<IDispatch>(element), S_OK);
  EXPECT_EQ(Ask<IUnknown>(element), S_OK);
  EXPECT_EQ(Ask<IXMLDOMElement>(element), S_OK);
  EXPECT_EQ(Ask<IXMLDOMAttribute>(attribute), S_OK);
  EXPECT_EQ(Ask<IXMLDOMProcessingInstruction>(instruction), S_OK);
  EXPECT_EQ(Hex(Ask<IXMLDOMAttribute>(element)), Hex(E_NOINTERFACE));
  EXPECT_EQ(Hex(Ask<IXMLDOMElement>(attribute)), Hex(E_NOINTERFACE));
  EXPECT_EQ(Hex(Ask<IXMLDOMElement>(instruction)), Hex(E_NOINTERFACE));
  EXPECT_EQ(Hex(Ask<IXMLDOMElement>(document)), Hex(E_NOINTERFACE));
}

TEST(DomNode, IsNotMadeWithANameThatXmlRefuses) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  for (const LPCWSTR name : {_T("1a"), _T("a b"), _T("-a"), _T(".a"), _T("a<"), _T("a/b")}) {
    CComPtr<IXMLDOMElement> element;
    CComPtr<IXMLDOMAttribute> attribute;
    EXPECT_TRUE(FAILED(document->createElement(CComBSTR(name), &element))) << platform::ToUtf8(name);
    EXPECT_TRUE(FAILED(document->createAttribute(CComBSTR(name), &attribute))) << platform::ToUtf8(name);
    EXPECT_EQ(element.p, nullptr);
  }
}

TEST(DomNode, IsNotMadeWithoutAName) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  CComPtr<IXMLDOMElement> element;
  CComPtr<IXMLDOMAttribute> attribute;
  CComPtr<IXMLDOMProcessingInstruction> instruction;
  EXPECT_EQ(Hex(document->createElement(CComBSTR(_T("")), &element)), Hex(E_FAIL));
  EXPECT_TRUE(FAILED(document->createElement(nullptr, &element)));
  EXPECT_EQ(Hex(document->createAttribute(CComBSTR(_T("")), &attribute)), Hex(E_FAIL));
  EXPECT_EQ(Hex(document->createProcessingInstruction(CComBSTR(_T("")), nullptr, &instruction)), Hex(E_FAIL));
  EXPECT_EQ(Hex(document->createElement(CComBSTR(_T("a")), nullptr)), Hex(E_INVALIDARG));
}

TEST(DomNode, NamesMayHaveLettersOfAllScripts) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  for (const LPCWSTR name :
       {_T("_"), _T("a-b.c_d9"), _T("\u00E9t\u00E9"), _T("\u0416"), _T("\u3042"), _T("\U00010400")}) {
    EXPECT_EQ(NameOf(NewElement(document, name)), name);
  }
}

TEST(DomNode, ChildrenAreAppendedBehindTheLast) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMElement> root = NewElement(document, _T("r"));
  const CComPtr<IXMLDOMElement> first = NewElement(document, _T("a"));
  const CComPtr<IXMLDOMElement> second = NewElement(document, _T("b"));
  CComPtr<IXMLDOMNode> appended;
  EXPECT_EQ(root->appendChild(first, &appended), S_OK);
  EXPECT_EQ(appended.p, static_cast<IXMLDOMNode*>(first.p));
  EXPECT_EQ(root->appendChild(second, nullptr), S_OK);
  EXPECT_EQ(document->appendChild(root, nullptr), S_OK);
  EXPECT_EQ(Written(document, {VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE}), "<r><a/><b/></r>");
}

TEST(DomNode, AnAttachedNodeMoves) {
  const WriterSettings plain{VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE};
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><a/><b><c/></b><d/></r>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  const auto child = [&](LPCWSTR path) {
    CComPtr<IXMLDOMNode> node;
    EXPECT_EQ(root->selectSingleNode(CComBSTR(path), &node), S_OK);
    return node;
  };
  EXPECT_EQ(root->appendChild(child(_T("a")), nullptr), S_OK);
  EXPECT_EQ(Written(document, plain), "<r><b><c/></b><d/><a/></r>");
  EXPECT_EQ(child(_T("a"))->appendChild(child(_T("b")), nullptr), S_OK);
  EXPECT_EQ(Written(document, plain), "<r><d/><a><b><c/></b></a></r>");
  EXPECT_EQ(root->appendChild(child(_T("a")), nullptr), S_OK) << "the last child stays the last";
  EXPECT_EQ(Written(document, plain), "<r><d/><a><b><c/></b></a></r>");
  EXPECT_EQ(root->appendChild(child(_T("a/b/c")), nullptr), S_OK);
  EXPECT_EQ(Written(document, plain), "<r><d/><a><b/></a><c/></r>");
}

TEST(DomNode, CannotStandBelowItself) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><a><b/></a></r>");
  CComPtr<IXMLDOMNode> a;
  CComPtr<IXMLDOMNode> b;
  ASSERT_EQ(RootOf(document)->selectSingleNode(CComBSTR(_T("a")), &a), S_OK);
  ASSERT_EQ(RootOf(document)->selectSingleNode(CComBSTR(_T("a/b")), &b), S_OK);
  EXPECT_EQ(Hex(b->appendChild(a, nullptr)), Hex(E_FAIL));
  EXPECT_EQ(Hex(b->appendChild(RootOf(document), nullptr)), Hex(E_FAIL));
  EXPECT_EQ(Hex(a->appendChild(a, nullptr)), Hex(E_FAIL));
  EXPECT_EQ(Hex(b->appendChild(b, nullptr)), Hex(E_FAIL));
  EXPECT_EQ(Written(document, {VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE}), "<r><a><b/></a></r>");
}

TEST(DomNode, TheDocumentTakesAnInstructionAndAnElement) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  CComPtr<IXMLDOMElement> none;
  EXPECT_EQ(document->get_documentElement(&none), S_FALSE);
  EXPECT_EQ(none.p, nullptr);
  EXPECT_EQ(document->appendChild(NewInstruction(document), nullptr), S_OK);
  EXPECT_EQ(document->appendChild(NewElement(document, _T("one")), nullptr), S_OK);
  EXPECT_EQ(document->appendChild(RootOf(document), nullptr), S_OK) << "the element itself may be appended again";
  EXPECT_EQ(NameOf(RootOf(document)), _T("one"));
}

TEST(DomNode, TheDocumentHasOneElement) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<one/>");
  EXPECT_EQ(Hex(document->appendChild(NewElement(document, _T("two")), nullptr)), Hex(E_FAIL));
  EXPECT_EQ(NameOf(RootOf(document)), _T("one"));
}

TEST(DomNode, WhatIsNoChildIsRefused) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMElement> element = NewElement(document, _T("e"));
  const CComPtr<IXMLDOMAttribute> attribute = NewAttribute(document, _T("a"), _T(""));
  EXPECT_EQ(Hex(element->appendChild(nullptr, nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(element->appendChild(attribute, nullptr)), Hex(E_FAIL));
  EXPECT_EQ(Hex(document->appendChild(attribute, nullptr)), Hex(E_FAIL));
  EXPECT_TRUE(FAILED(element->appendChild(document, nullptr)));
  EXPECT_EQ(Hex(attribute->appendChild(element, nullptr)), Hex(E_FAIL));
}

TEST(DomNode, OutParametersMustBeThere) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  EXPECT_EQ(Hex(root->get_nodeName(nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(root->get_nodeValue(nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(root->selectNodes(CComBSTR(_T("a")), nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(root->selectSingleNode(CComBSTR(_T("a")), nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(root->getElementsByTagName(CComBSTR(_T("a")), nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(document->get_documentElement(nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(document->get_nodeName(nullptr)), Hex(E_INVALIDARG));
}

}  // namespace
}  // namespace ondrel::test
