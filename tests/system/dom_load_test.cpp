// Reading text into a document.
#include <gtest/gtest.h>

#include <string>

#include "system/documents.h"
#include "system/xml_texts.h"

namespace ondrel::test {
namespace {

TEST(DomLoad, AcceptsWellFormedText) {
  for (const NamedText& text : AcceptedTexts()) EXPECT_TRUE(IsAccepted(text.text)) << text.name;
}

TEST(DomLoad, RefusesEverythingElseWithAFlagAndNoFailure) {
  for (const NamedText& text : RefusedTexts()) {
    const CComPtr<IXMLDOMDocument> document = NewDocument();
    EXPECT_EQ(Hex(Load(document, text.text)), Hex(S_FALSE)) << text.name;
    CComPtr<IXMLDOMElement> root;
    EXPECT_EQ(document->get_documentElement(&root), S_FALSE) << text.name;
  }
}

TEST(DomLoad, NullTextIsRefused) {
  VARIANT_BOOL loaded = VARIANT_TRUE;
  EXPECT_EQ(platform::LoadDocument(NewDocument(), nullptr, &loaded), S_FALSE);
  EXPECT_EQ(loaded, VARIANT_FALSE);
  EXPECT_EQ(Hex(platform::LoadDocument(nullptr, CComBSTR(_T("<a/>")), &loaded)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(platform::LoadDocument(NewDocument(), CComBSTR(_T("<a/>")), nullptr)), Hex(E_INVALIDARG));
}

TEST(DomLoad, ReplacesTheContentsOnlyWhenItSucceeds) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<first/>");
  EXPECT_EQ(Load(document, CString(_T("<second>"))), S_FALSE);
  EXPECT_EQ(NameOf(RootOf(document)), _T("first"));
  EXPECT_EQ(Load(document, CString(_T("<second/>"))), S_OK);
  EXPECT_EQ(NameOf(RootOf(document)), _T("second"));
}

TEST(DomLoad, KeepsElementsAndAttributesInDocumentOrder) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r z='1' a='2'><b><c/></b><d m='&lt;3'/></r>");
  EXPECT_EQ(Written(document, {VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE}),
            "<r z=\"1\" a=\"2\"><b><c/></b><d m=\"&lt;3\"/></r>");
}

TEST(DomLoad, AttributeValuesAreNormalisedAsXmlSays) {
  const CComPtr<IXMLDOMDocument> document =
      Loaded("<r a=' x\ty\nz\r\nw ' b='&#9;&#10;&#13;' c='&quot;&apos;&#x20AC;'/>");
  EXPECT_EQ(AttributeOf(RootOf(document), _T("a")), _T(" x y z w "));
  EXPECT_EQ(AttributeOf(RootOf(document), _T("b")), _T("\t\n\r"));
  EXPECT_EQ(AttributeOf(RootOf(document), _T("c")), _T("\"'\u20AC"));
}

TEST(DomLoad, EntitiesAreExpandedInAttributes) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<!DOCTYPE r [<!ENTITY a 'x'><!ENTITY b '&a;&a;'>]><r v='&b;&a;'/>");
  EXPECT_EQ(AttributeOf(RootOf(document), _T("v")), _T("xxx"));
}

TEST(DomLoad, DeclaredDefaultsAreAttributes) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<!DOCTYPE r [<!ATTLIST r v CDATA 'd'>]><r/>");
  EXPECT_EQ(AttributeOf(RootOf(document), _T("v")), _T("d"));
}

TEST(DomLoad, TextOfAllPlanesSurvives) {
  const CString value = _T("A\u00E9\u20AC\U0001F4BE");
  CComPtr<IXMLDOMDocument> document = NewDocument();
  ASSERT_EQ(Load(document, _T("<r v='") + value + _T("'/>")), S_OK);
  EXPECT_EQ(AttributeOf(RootOf(document), _T("v")), value);
}

// Text is handed to the parser in blocks: pairs of surrogates and tokens at every place must survive their ends.
TEST(DomLoad, TextLongerThanABlockIsReadAsOne) {
  for (int shift = 0; shift < 4; ++shift) {
    std::basic_string<WCHAR> value(static_cast<std::size_t>(shift), 'x');
    for (int count = 0; count < 100'000; ++count) value += _T("\U0001F4BE");
    const CString text = _T("<r v='") + CString(value) + _T("'><c/></r>");
    const CComPtr<IXMLDOMDocument> document = NewDocument();
    ASSERT_EQ(Load(document, text), S_OK);
    EXPECT_EQ(AttributeOf(RootOf(document), _T("v")), CString(value));
    EXPECT_EQ(Selected(RootOf(document), _T("c")), "c((none)) ");
  }
}

TEST(DomLoad, ALoneSurrogateBehindMuchTextIsFound) {
  std::basic_string<WCHAR> text = _T("<r>");
  text.append(100'000, 'x');
  text += static_cast<WCHAR>(0xD800);
  text += _T("</r>");
  EXPECT_FALSE(IsAccepted(CString(text)));
  text.back() = static_cast<WCHAR>(0xD800);
  EXPECT_FALSE(IsAccepted(CString(text))) << "at the very end";
}

TEST(DomLoad, ManyDifferentNamesAreKeptApart) {
  std::string text = "<r>";
  for (int number = 0; number < 20'000; ++number) {
    text += "<e" + std::to_string(number) + " N='" + std::to_string(number) + "'/>";
  }
  const CComPtr<IXMLDOMDocument> document = Loaded(text + "</r>");
  EXPECT_EQ(Selected(RootOf(document), _T("e0")), "e0(0) ");
  EXPECT_EQ(Selected(RootOf(document), _T("e12345")), "e12345(12345) ");
  EXPECT_EQ(Selected(RootOf(document), _T("e20000")), "");
}

}  // namespace
}  // namespace ondrel::test
