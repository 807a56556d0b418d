// Attributes of this system's own document: any unit of text, their place when they are replaced, whose they are then,
// and nodes of other documents. Windows may end text at a zero unit, move attributes, and take other documents' nodes.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

TEST(PosixDomAttribute, KeepsTextUnitByUnit) {
  const WCHAR odd[] = {'a', 0, 0xD800, 0x20AC, 0xDC00, 0xD83D, 0xDCBE, 0xFFFF, 1, 'z'};
  const CString text(odd, 10);
  EXPECT_EQ(Kept(CComVariant(text)), text);
  EXPECT_EQ(Kept(CComVariant(CString())), CString());
  const CString longText('x', 100'000);
  EXPECT_EQ(Kept(CComVariant(longText)), longText);
}

TEST(PosixDomAttribute, IsReplacedInPlace) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  for (const LPCWSTR name : {_T("Cookie"), _T("Name"), _T("Icon")}) SetAttribute(document, root, name, _T("1"));
  EXPECT_EQ(Written(document, kPlainWriter), "<r Cookie=\"1\" Name=\"1\" Icon=\"1\"/>");
  SetAttribute(document, root, _T("Name"), _T("2"));
  EXPECT_EQ(Written(document, kPlainWriter), "<r Cookie=\"1\" Name=\"2\" Icon=\"1\"/>");
  SetAttribute(document, root, _T("Cookie"), _T("3"));
  SetAttribute(document, root, _T("Icon"), _T("4"));
  SetAttribute(document, root, _T("Last"), _T("5"));
  EXPECT_EQ(Written(document, kPlainWriter), "<r Cookie=\"3\" Name=\"2\" Icon=\"4\" Last=\"5\"/>");
}

TEST(PosixDomAttribute, IsFreeAgainWhenItIsReplaced) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMElement> first = NewElement(document, _T("a"));
  const CComPtr<IXMLDOMElement> second = NewElement(document, _T("b"));
  const CComPtr<IXMLDOMAttribute> attribute = NewAttribute(document, _T("n"), _T("1"));
  CComPtr<IXMLDOMNode> added;
  EXPECT_EQ(AttributesOf(first)->setNamedItem(attribute, &added), S_OK);
  EXPECT_EQ(added.p, static_cast<IXMLDOMNode*>(attribute.p));
  EXPECT_EQ(AttributesOf(first)->setNamedItem(attribute, nullptr), S_OK) << "where it is, it may be set again";
  EXPECT_EQ(Hex(AttributesOf(second)->setNamedItem(attribute, nullptr)), Hex(E_FAIL));
  EXPECT_EQ(AttributeOf(second, _T("n")), _T("(none)"));

  EXPECT_EQ(AttributesOf(first)->setNamedItem(NewAttribute(document, _T("n"), _T("2")), nullptr), S_OK);
  EXPECT_EQ(AttributesOf(second)->setNamedItem(attribute, nullptr), S_OK) << "replaced, it is free again";
  EXPECT_EQ(AttributeOf(first, _T("n")), _T("2"));
  EXPECT_EQ(AttributeOf(second, _T("n")), _T("1"));
}

TEST(PosixDomAttribute, NodesOfOtherDocumentsAndDocumentsAreInvalid) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMElement> element = NewElement(document, _T("a"));
  const CComPtr<IXMLDOMNamedNodeMap> attributes = AttributesOf(element);
  EXPECT_EQ(Hex(attributes->setNamedItem(document, nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(attributes->setNamedItem(NewAttribute(NewDocument(), _T("c"), _T("")), nullptr)), Hex(E_INVALIDARG));
}

}  // namespace
}  // namespace ondrel::test
