// The short ways to attributes, which only this system's own documents have.
#include <gtest/gtest.h>

#include <limits>

#include "system/documents.h"

namespace ondrel::test {
namespace {

/// "12" for what FindDigits gives, "no" when it gives nothing.
std::string DigitsOf(IXMLDOMNode* element, LPCWSTR name) {
  LONGLONG number = -77;
  const HRESULT status = platform::FindDigits(AttributesOf(element), CComBSTR(name), number);
  if (status == S_OK) return std::to_string(number);
  EXPECT_EQ(Hex(status), Hex(S_FALSE));
  EXPECT_EQ(number, -77) << "nothing is given";
  return "no";
}

/// Likewise, for FindAscii.
CString AsciiOf(IXMLDOMNode* element, LPCWSTR name) {
  CString text = _T("untouched");
  const HRESULT status = platform::FindAscii(AttributesOf(element), CComBSTR(name), text);
  if (status == S_OK) return text;
  EXPECT_EQ(Hex(status), Hex(S_FALSE));
  EXPECT_EQ(text, _T("untouched")) << "nothing is given";
  return _T("no");
}

HRESULT AddTextTo(IXMLDOMNode* element, LPCWSTR name, const CString& text) {
  return platform::AddText(AttributesOf(element), CComBSTR(name), text);
}

TEST(PosixShortWays, FindNumbersThatAreDigitsAlone) {
  const CComPtr<IXMLDOMDocument> document =
      Loaded("<r a='0' b='7' c='0000000000000000012' d='9223372036854775807' e='&#49;2'/>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  EXPECT_EQ(DigitsOf(root, _T("a")), "0");
  EXPECT_EQ(DigitsOf(root, _T("b")), "7");
  EXPECT_EQ(DigitsOf(root, _T("c")), "12");
  EXPECT_EQ(DigitsOf(root, _T("d")), "9223372036854775807");
  EXPECT_EQ(DigitsOf(root, _T("e")), "12");
  EXPECT_EQ(DigitsOf(root, _T("A")), "no");
  EXPECT_EQ(DigitsOf(root, _T("")), "no");
}

TEST(PosixShortWays, FindAsciiOfAnyLength) {
  for (const int length : {0, 1, 3, 4, 5, 63, 64, 65, 100'000}) {
    const CString value('a', length);
    const CComPtr<IXMLDOMDocument> document = NewDocument();
    ASSERT_EQ(Load(document, _T("<r v='") + value + _T("' w='") + value + _T("\u00E9'/>")), S_OK);
    EXPECT_TRUE(AsciiOf(RootOf(document), _T("v")) == value) << length;
    EXPECT_EQ(AsciiOf(RootOf(document), _T("w")), _T("no")) << length;
  }
}

TEST(PosixShortWays, FindNamesBeyondAscii) {
  const CComPtr<IXMLDOMDocument> document =
      Loaded(CString(_T("<r \u00E9='1' \u00EA='2' e\u0416='3' \u0416e='4' e='5'/>")));
  EXPECT_EQ(DigitsOf(RootOf(document), _T("\u00E9")), "1");
  EXPECT_EQ(DigitsOf(RootOf(document), _T("\u00EA")), "2");
  EXPECT_EQ(DigitsOf(RootOf(document), _T("e\u0416")), "3");
  EXPECT_EQ(DigitsOf(RootOf(document), _T("\u0416e")), "4");
  EXPECT_EQ(DigitsOf(RootOf(document), _T("e")), "5");
  EXPECT_EQ(DigitsOf(RootOf(document), _T("\u00C3\u00A9")), "no");
}

TEST(PosixShortWays, FindAttributesThatWereSetTheLongWay) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r a='1' b='2'/>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  SetAttribute(document, root, _T("c"), _T("3"));
  SetAttribute(document, root, _T("a"), _T("10"));
  CComPtr<IXMLDOMNode> item;
  ASSERT_EQ(AttributesOf(root)->getNamedItem(CComBSTR(_T("b")), &item), S_OK);
  CComPtr<IXMLDOMAttribute> attribute;
  ASSERT_EQ(item.QueryInterface(&attribute), S_OK);
  ASSERT_EQ(attribute->put_value(CComVariant(_T("20"))), S_OK);
  EXPECT_EQ(DigitsOf(root, _T("a")), "10");
  EXPECT_EQ(DigitsOf(root, _T("b")), "20");
  EXPECT_EQ(DigitsOf(root, _T("c")), "3");
  EXPECT_EQ(AsciiOf(root, _T("b")), _T("20"));
}

TEST(PosixShortWays, AddToElementsThatWereMadeHere) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMElement> element = NewElement(document, _T("e"));
  EXPECT_EQ(DigitsOf(element, _T("a")), "no");
  EXPECT_EQ(platform::AddNumber(AttributesOf(element), CComBSTR(_T("a")), std::numeric_limits<LONGLONG>::min()), S_OK);
  EXPECT_EQ(platform::AddNumber(AttributesOf(element), CComBSTR(_T("b")), std::numeric_limits<LONGLONG>::max()), S_OK);
  EXPECT_EQ(platform::AddNumber(AttributesOf(element), CComBSTR(_T("c")), 0), S_OK);
  EXPECT_EQ(AddTextTo(element, _T("d"), _T("\u20AC<\U0001F4BE")), S_OK);
  EXPECT_EQ(AddTextTo(element, _T("e"), CString()), S_OK);
  ASSERT_EQ(document->appendChild(element, nullptr), S_OK);
  EXPECT_EQ(DigitsOf(element, _T("a")), "no") << "has a sign";
  EXPECT_EQ(DigitsOf(element, _T("b")), "9223372036854775807");
  EXPECT_EQ(Written(document, kPlainWriter),
            "<e a=\"-9223372036854775808\" b=\"9223372036854775807\" c=\"0\" d=\"\xE2\x82\xAC&lt;\xF0\x9F\x92\xBE\" "
            "e=\"\"/>");
}

TEST(PosixShortWays, AddInPlaceOfTheFormerValue) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r a='1' b='2'/>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  for (const bool hasNodes : {false, true}) {
    if (hasNodes) {
      EXPECT_EQ(AttributeOf(root, _T("a")), _T("other, which is longer")) << "makes nodes of the attributes";
    }
    EXPECT_EQ(AddTextTo(root, _T("c"), _T("3")), S_OK);
    EXPECT_EQ(AddTextTo(root, _T("a"), _T("first")), S_OK);
    EXPECT_EQ(AddTextTo(root, _T("d"), _T("4")), S_OK);
    EXPECT_EQ(platform::AddNumber(AttributesOf(root), CComBSTR(_T("b")), 22), S_OK);
    EXPECT_EQ(AddTextTo(root, _T("a"), _T("other, which is longer")), S_OK);
    EXPECT_EQ(Written(document, kPlainWriter), "<r a=\"other, which is longer\" b=\"22\" c=\"3\" d=\"4\"/>");
  }
}

TEST(PosixShortWays, AddBehindAttributesOfBothKinds) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r a='1'/>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  EXPECT_EQ(AddTextTo(root, _T("b"), _T("2")), S_OK);
  SetAttribute(document, root, _T("c"), _T("3"));
  EXPECT_EQ(AddTextTo(root, _T("d"), _T("4")), S_OK);
  SetAttribute(document, root, _T("b"), _T("5"));
  EXPECT_EQ(AddTextTo(root, _T("c"), _T("6")), S_OK);
  EXPECT_EQ(Written(document, kPlainWriter), "<r a=\"1\" b=\"5\" c=\"6\" d=\"4\"/>");
}

TEST(PosixShortWays, AddManyAttributesInTheirOrder) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
  std::string expected = "<r";
  for (int number = 0; number < 100; ++number) {
    const std::string name = "a" + std::to_string(number);
    ASSERT_EQ(platform::AddNumber(AttributesOf(RootOf(document)), CComBSTR(CString(name.c_str())), number), S_OK);
    expected += " " + name + "=\"" + std::to_string(number) + "\"";
  }
  EXPECT_EQ(Written(document, kPlainWriter), expected + "/>");
}

TEST(PosixShortWays, AnAttributeThatWasReplacedIsFreeAgain) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r a='1'><s/></r>");
  CComPtr<IXMLDOMNode> former;
  ASSERT_EQ(AttributesOf(RootOf(document))->getNamedItem(CComBSTR(_T("a")), &former), S_OK);
  ASSERT_EQ(AddTextTo(RootOf(document), _T("a"), _T("2")), S_OK);
  CComPtr<IXMLDOMNode> inner;
  ASSERT_EQ(RootOf(document)->selectSingleNode(CComBSTR(_T("s")), &inner), S_OK);
  EXPECT_EQ(Hex(AttributesOf(inner)->setNamedItem(former, nullptr)), Hex(S_OK));
  EXPECT_EQ(Written(document, kPlainWriter), "<r a=\"2\"><s a=\"1\"/></r>");
}

TEST(PosixShortWays, AddNothingUnderWhatIsNoName) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r xmlns:p='u' p:a='1'/>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  for (const WCHAR* const name : {_T(""), _T("1"), _T("a b"), _T("p:a"), _T("p:b"), _T("-"), _T("\uFFFE")}) {
    EXPECT_EQ(Hex(AddTextTo(root, name, _T("x"))), Hex(S_FALSE)) << platform::ToUtf8(name);
    EXPECT_EQ(Hex(platform::AddNumber(AttributesOf(root), CComBSTR(name), 1)), Hex(S_FALSE)) << platform::ToUtf8(name);
  }
  EXPECT_EQ(Written(document, kPlainWriter), "<r xmlns:p=\"u\" p:a=\"1\"/>");
  EXPECT_EQ(DigitsOf(root, _T("p:a")), "1");
}

TEST(PosixShortWays, NeedNoMap) {
  LONGLONG number = 0;
  CString text;
  EXPECT_EQ(platform::FindDigits(nullptr, CComBSTR(_T("a")), number), S_FALSE);
  EXPECT_EQ(platform::FindAscii(nullptr, CComBSTR(_T("a")), text), S_FALSE);
  EXPECT_EQ(platform::AddNumber(nullptr, CComBSTR(_T("a")), 1), S_FALSE);
  EXPECT_EQ(platform::AddText(nullptr, CComBSTR(_T("a")), text), S_FALSE);
}

TEST(PosixShortWays, WhatTheyAddAndNoDocumentCarriesIsRefusedByTheWriter) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
  ASSERT_EQ(AddTextTo(RootOf(document), _T("a"), CString(static_cast<WCHAR>(0xD83D), 1)), S_OK);
  EXPECT_EQ(AttributeOf(RootOf(document), _T("a")), CString(static_cast<WCHAR>(0xD83D), 1));
  EXPECT_ANY_THROW(Written(document));
}

}  // namespace
}  // namespace ondrel::test
