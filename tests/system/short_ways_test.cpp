// The short ways to attributes, which a system may leave untaken: what they give, when they give anything.
#include <gtest/gtest.h>

#include <limits>

#include "system/documents.h"

namespace ondrel::test {
namespace {

constexpr LONGLONG kUntouchedNumber = -77;
constexpr const WCHAR* kUntouchedText = _T("untouched");

void ExpectDigits(IXMLDOMNode* element, LPCWSTR name, LONGLONG expected) {
  LONGLONG number = kUntouchedNumber;
  const HRESULT status = platform::FindDigits(AttributesOf(element), CComBSTR(name), number);
  if (status == S_FALSE) return;
  EXPECT_EQ(Hex(status), Hex(S_OK));
  EXPECT_EQ(number, expected);
}

void ExpectAscii(IXMLDOMNode* element, LPCWSTR name, LPCWSTR expected) {
  CString text = kUntouchedText;
  const HRESULT status = platform::FindAscii(AttributesOf(element), CComBSTR(name), text);
  if (status == S_FALSE) return;
  EXPECT_EQ(Hex(status), Hex(S_OK));
  EXPECT_EQ(text, expected);
}

TEST(ShortWays, GiveWhatTheAttributeSays) {
  const CComPtr<IXMLDOMDocument> document =
      Loaded("<r a='0' b='0012' c='9223372036854775807' d='ascii &lt;&#9;&#10;' e=''/>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  ExpectDigits(root, _T("a"), 0);
  ExpectDigits(root, _T("b"), 12);
  ExpectDigits(root, _T("c"), std::numeric_limits<LONGLONG>::max());
  ExpectAscii(root, _T("b"), _T("0012"));
  ExpectAscii(root, _T("d"), _T("ascii <\t\n"));
  ExpectAscii(root, _T("e"), _T(""));
}

TEST(ShortWays, GiveNothingForWhatIsNoPlainNumber) {
  const CComPtr<IXMLDOMDocument> document = Loaded(
      "<r a='' b='-1' c='+1' d=' 1' e='1 ' f='9223372036854775808' g='00000000000000000001' h='1.5' i='0x1' j='x'/>");
  for (const WCHAR* const name :
       {_T("a"), _T("b"), _T("c"), _T("d"), _T("e"), _T("f"), _T("g"), _T("h"), _T("i"), _T("j"), _T("none")}) {
    LONGLONG number = kUntouchedNumber;
    EXPECT_EQ(Hex(platform::FindDigits(AttributesOf(RootOf(document)), CComBSTR(name), number)), Hex(S_FALSE))
        << platform::ToUtf8(name);
    EXPECT_EQ(number, kUntouchedNumber) << platform::ToUtf8(name);
  }
}

TEST(ShortWays, GiveNothingForTextBeyondAscii) {
  const CComPtr<IXMLDOMDocument> document =
      Loaded(CString(_T("<r a='\u00E9' b='plain text \u20AC' c='\U0001F4BE' d='0123456789abcdef\u0080'/>")));
  for (const WCHAR* const name : {_T("a"), _T("b"), _T("c"), _T("d"), _T("none")}) {
    CString text = kUntouchedText;
    EXPECT_EQ(Hex(platform::FindAscii(AttributesOf(RootOf(document)), CComBSTR(name), text)), Hex(S_FALSE))
        << platform::ToUtf8(name);
    EXPECT_EQ(text, kUntouchedText) << platform::ToUtf8(name);
  }
}

TEST(ShortWays, AddWhatTheLongWayFinds) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
  const CComPtr<IXMLDOMElement> root = RootOf(document);
  if (platform::AddNumber(AttributesOf(root), CComBSTR(_T("n")), 12) == S_OK) {
    EXPECT_EQ(AttributeOf(root, _T("n")), _T("12"));
  } else {
    EXPECT_EQ(AttributeOf(root, _T("n")), _T("(none)"));
  }
  if (platform::AddText(AttributesOf(root), CComBSTR(_T("t")), _T("\u20AC <")) == S_OK) {
    EXPECT_EQ(AttributeOf(root, _T("t")), _T("\u20AC <"));
  } else {
    EXPECT_EQ(AttributeOf(root, _T("t")), _T("(none)"));
  }
}

}  // namespace
}  // namespace ondrel::test
