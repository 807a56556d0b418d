// Nodes of this system's own document: one object for each, the names that it refuses and how, and nodes of other
// documents. Windows may make several objects for a node, knows names with prefixes, and takes other documents' nodes.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

TEST(PosixDomNode, IsTheSameObjectWhoeverAsks) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><c a='1'/></r>");
  CComPtr<IXMLDOMNode> first;
  CComPtr<IXMLDOMNode> second;
  ASSERT_EQ(RootOf(document)->selectSingleNode(CComBSTR(_T("c")), &first), S_OK);
  ASSERT_EQ(RootOf(document)->selectSingleNode(CComBSTR(_T("c")), &second), S_OK);
  EXPECT_EQ(first.p, second.p);
}

TEST(PosixDomNode, IsNotMadeWithANameThatXmlRefuses) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  for (const LPCWSTR name :
       {_T(""), _T("1a"), _T("a b"), _T("-a"), _T(".a"), _T("a<"), _T("a:b"), _T("a/b"), _T("\u00D7"), _T("a\uFFFE")}) {
    CComPtr<IXMLDOMElement> element;
    CComPtr<IXMLDOMAttribute> attribute;
    CComPtr<IXMLDOMProcessingInstruction> instruction;
    EXPECT_EQ(Hex(document->createElement(CComBSTR(name), &element)), Hex(E_FAIL)) << platform::ToUtf8(name);
    EXPECT_EQ(Hex(document->createAttribute(CComBSTR(name), &attribute)), Hex(E_FAIL)) << platform::ToUtf8(name);
    EXPECT_EQ(Hex(document->createProcessingInstruction(CComBSTR(name), nullptr, &instruction)), Hex(E_FAIL));
    EXPECT_EQ(element.p, nullptr);
  }
  CComPtr<IXMLDOMElement> element;
  EXPECT_EQ(Hex(document->createElement(nullptr, &element)), Hex(E_FAIL));
  EXPECT_EQ(Hex(document->createElement(CComBSTR(_T("a")), nullptr)), Hex(E_INVALIDARG));
}

TEST(PosixDomNode, InstructionsCannotHoldTheirOwnEnd) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  CComPtr<IXMLDOMProcessingInstruction> instruction;
  EXPECT_EQ(Hex(document->createProcessingInstruction(CComBSTR(_T("p")), CComBSTR(_T("a?>b")), &instruction)),
            Hex(E_FAIL));
}

TEST(PosixDomNode, NodesOfOtherDocumentsAndDocumentsAreInvalid) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMDocument> other = NewDocument();
  const CComPtr<IXMLDOMElement> element = NewElement(document, _T("e"));
  EXPECT_EQ(Hex(element->appendChild(document, nullptr)), Hex(E_INVALIDARG));
  CComPtr<IXMLDOMNode> appended;
  EXPECT_EQ(Hex(element->appendChild(NewElement(other, _T("f")), &appended)), Hex(E_INVALIDARG));
  EXPECT_EQ(appended.p, nullptr);
}

TEST(PosixDomNode, AttributesNeedAPlace) {
  EXPECT_EQ(Hex(RootOf(Loaded("<r/>"))->get_attributes(nullptr)), Hex(E_INVALIDARG));
}

TEST(PosixDomNode, AnInstructionIsGivenBackWhenItIsAppended) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
  CComPtr<IXMLDOMProcessingInstruction> instruction;
  ASSERT_EQ(document->createProcessingInstruction(CComBSTR(_T("p")), CComBSTR(_T("q")), &instruction), S_OK);
  CComPtr<IXMLDOMNode> appended;
  ASSERT_EQ(RootOf(document)->appendChild(instruction, &appended), S_OK);
  EXPECT_EQ(appended.p, static_cast<IXMLDOMNode*>(instruction.p));
}

TEST(PosixDomNode, AttributesAndListsOfferTheirInterfacesAndNoOthers) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r><a/></r>");
  CComPtr<IXMLDOMNamedNodeMap> attributes;
  ASSERT_EQ(RootOf(document)->get_attributes(&attributes), S_OK);
  CComPtr<IXMLDOMNamedNodeMap> same;
  EXPECT_EQ(attributes->QueryInterface(platform::InterfaceId<IXMLDOMNamedNodeMap>(), reinterpret_cast<void**>(&same)),
            S_OK);
  EXPECT_EQ(same.p, attributes.p);
  CComPtr<IXMLDOMNodeList> list;
  ASSERT_EQ(document->selectNodes(CComBSTR(_T("r/a")), &list), S_OK);
  CComPtr<IXMLDOMNodeList> again;
  EXPECT_EQ(list->QueryInterface(platform::InterfaceId<IXMLDOMNodeList>(), reinterpret_cast<void**>(&again)), S_OK);
  EXPECT_EQ(again.p, list.p);
  CComPtr<IStream> stream;
  EXPECT_EQ(Hex(list->QueryInterface(platform::InterfaceId<IStream>(), reinterpret_cast<void**>(&stream))),
            Hex(E_NOINTERFACE));
  EXPECT_EQ(stream.p, nullptr);
}

}  // namespace
}  // namespace ondrel::test
