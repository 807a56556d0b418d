// Attributes: their values, their order, and to whom they belong.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

TEST(DomAttribute, KeepsText) {
  const CString text = _T("a\u00E9\u20AC\U0001F4BE z");
  EXPECT_EQ(Kept(CComVariant(text)), text);
  EXPECT_EQ(Kept(CComVariant(CString())), CString());
  const CString longText('x', 100'000);
  EXPECT_EQ(Kept(CComVariant(longText)), longText);
}

TEST(DomAttribute, KeepsNumbersAsDecimalDigits) {
  EXPECT_EQ(Kept(CComVariant(LONGLONG{-9223372036854775807LL - 1})), _T("-9223372036854775808"));
  EXPECT_EQ(Kept(CComVariant(LONGLONG{0})), _T("0"));
  CComVariant narrow;
  narrow.vt = VT_I4;
  narrow.lVal = -7;
  EXPECT_EQ(Kept(narrow), _T("-7"));
}

TEST(DomAttribute, NullTextIsEmpty) {
  VARIANT null{};
  null.vt = VT_BSTR;
  EXPECT_EQ(Kept(null), CString());
}

TEST(DomAttribute, RefusesWhatIsNoText) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMAttribute> attribute = NewAttribute(document, _T("a"), _T("kept"));
  CComVariant null;
  null.vt = VT_NULL;
  EXPECT_EQ(Hex(attribute->put_value(null)), Hex(DISP_E_TYPEMISMATCH));
  CComVariant value;
  EXPECT_EQ(attribute->get_nodeValue(&value), S_OK);
  EXPECT_EQ(CString(value.bstrVal), _T("kept"));
}

TEST(DomAttribute, TakesShorterAndLongerValuesOneAfterTheOther) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMAttribute> attribute = NewAttribute(document, _T("a"), _T("start"));
  for (const LPCWSTR text : {_T("longer than before"), _T("s"), _T(""), _T("\u20AC"), _T("and long again, longer")}) {
    EXPECT_EQ(attribute->put_value(CComVariant(text)), S_OK);
    CComVariant value;
    EXPECT_EQ(attribute->get_nodeValue(&value), S_OK);
    EXPECT_EQ(CString(value.bstrVal), text);
  }
}

TEST(DomAttribute, StandsInTheOrderOfItsSetting) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  for (const LPCWSTR name : {_T("Cookie"), _T("Name"), _T("Icon")}) SetAttribute(document, root, name, _T("1"));
  EXPECT_EQ(Written(document, kPlainWriter), "<r Cookie=\"1\" Name=\"1\" Icon=\"1\"/>");
}

TEST(DomAttribute, IsReplacedByAnotherOfItsName) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r a='1' b='2'/>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  SetAttribute(document, root, _T("a"), _T("3"));
  EXPECT_EQ(AttributeOf(root, _T("a")), _T("3"));
  EXPECT_EQ(AttributeOf(root, _T("b")), _T("2"));
}

TEST(DomAttribute, IsFoundByItsExactName) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r Name='n' File='f'/>");
  const CComPtr<IXMLDOMNamedNodeMap> attributes = AttributesOf(RootOf(document));
  EXPECT_EQ(AttributeOf(RootOf(document), _T("File")), _T("f"));
  for (const LPCWSTR name : {_T("file"), _T("r"), _T("Missing"), _T("")}) {
    CComPtr<IXMLDOMNode> item;
    EXPECT_EQ(attributes->getNamedItem(CComBSTR(name), &item), S_FALSE) << platform::ToUtf8(name);
    EXPECT_EQ(item.p, nullptr);
  }
  CComPtr<IXMLDOMNode> item;
  EXPECT_EQ(Hex(attributes->getNamedItem(nullptr, &item)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(attributes->getNamedItem(CComBSTR(_T("Name")), nullptr)), Hex(E_INVALIDARG));
}

TEST(DomAttribute, BelongsToOneElement) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMElement> first = NewElement(document, _T("a"));
  const CComPtr<IXMLDOMElement> second = NewElement(document, _T("b"));
  const CComPtr<IXMLDOMAttribute> attribute = NewAttribute(document, _T("n"), _T("1"));
  EXPECT_EQ(AttributesOf(first)->setNamedItem(attribute, nullptr), S_OK);
  EXPECT_EQ(Hex(AttributesOf(second)->setNamedItem(attribute, nullptr)), Hex(E_FAIL));
  EXPECT_EQ(AttributeOf(second, _T("n")), _T("(none)"));
}

TEST(DomAttribute, WhatIsNoAttributeIsRefused) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMElement> element = NewElement(document, _T("a"));
  const CComPtr<IXMLDOMNamedNodeMap> attributes = AttributesOf(element);
  EXPECT_EQ(Hex(attributes->setNamedItem(nullptr, nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(attributes->setNamedItem(NewElement(document, _T("b")), nullptr)), Hex(E_FAIL));
  EXPECT_TRUE(FAILED(attributes->setNamedItem(document, nullptr)));
}

TEST(DomAttribute, OnlyElementsHaveThem) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
  CComPtr<IXMLDOMNamedNodeMap> attributes;
  EXPECT_EQ(document->get_attributes(&attributes), S_FALSE);
  EXPECT_EQ(attributes.p, nullptr);
  EXPECT_EQ(NewAttribute(document, _T("a"), _T(""))->get_attributes(&attributes), S_FALSE);
  EXPECT_EQ(attributes.p, nullptr);
}

}  // namespace
}  // namespace ondrel::test
