// CString::Format: every conversion, flag and size it knows, and its refusal of the rest.
#include <gtest/gtest.h>

#include <limits>

#include "support/print_text.h"
#include "support/raised.h"

#include <ondrel/platform/framework/exceptions.h>

namespace ondrel::test {
namespace {

template <class... Arguments>
CString Formatted(LPCWSTR format, Arguments... arguments) {
  CString text(_T("before"));
  text.Format(format, arguments...);
  return text;
}

TEST(StringFormat, TextWithoutConversionsIsTaken) {
  EXPECT_EQ(Formatted(_T("")), CString());
  EXPECT_EQ(Formatted(_T("plain \u20AC text")), _T("plain \u20AC text"));
  EXPECT_EQ(Formatted(_T("100%%")), _T("100%"));
}

TEST(StringFormat, SignedNumbers) {
  EXPECT_EQ(Formatted(_T("%d|%i"), 42, -42), _T("42|-42"));
  EXPECT_EQ(Formatted(_T("%d"), std::numeric_limits<int>::min()), _T("-2147483648"));
  EXPECT_EQ(Formatted(_T("%+d|% d|%+d"), 1, 2, -3), _T("+1| 2|-3"));
  EXPECT_EQ(Formatted(_T("%5d|%-5d|%05d|%05d"), 42, 42, 42, -42), _T("   42|42   |00042|-0042"));
}

TEST(StringFormat, PrecisionIsTheLeastNumberOfDigits) {
  EXPECT_EQ(Formatted(_T("%4.4d"), 7), _T("0007"));
  EXPECT_EQ(Formatted(_T("%4.4d"), -1), _T("-0001"));
  EXPECT_EQ(Formatted(_T("%4.4d"), 12345), _T("12345"));
  EXPECT_EQ(Formatted(_T("%8.3d|%-8.3d|"), 7, 7), _T("     007|007     |"));
  EXPECT_EQ(Formatted(_T("%08.3d"), 7), _T("     007"));
  EXPECT_EQ(Formatted(_T("[%.0d][%.d][%.0d]"), 0, 0, 1), _T("[][][1]"));
}

TEST(StringFormat, UnsignedNumbers) {
  EXPECT_EQ(Formatted(_T("%u"), 4294967295U), _T("4294967295"));
  EXPECT_EQ(Formatted(_T("%x|%X"), 0xBEEFU, 0xBEEFU), _T("beef|BEEF"));
  EXPECT_EQ(Formatted(_T("%#x|%#X|%#x"), 0xBEEFU, 0xBEEFU, 0U), _T("0xbeef|0XBEEF|0"));
  EXPECT_EQ(Formatted(_T("%08X|%#010x|%8.4x"), 0xABCU, 0xABCU, 0xABCU), _T("00000ABC|0x00000abc|    0abc"));
  EXPECT_EQ(Formatted(_T("%x"), -1), _T("ffffffff"));
}

TEST(StringFormat, SizesOfNumbers) {
  EXPECT_EQ(Formatted(_T("%ld|%lu|%lx"), LONG{-1}, DWORD{0xFFFFFFFF}, DWORD{0x80000000}), _T("-1|4294967295|80000000"));
  EXPECT_EQ(Formatted(_T("%lld|%I64d"), std::numeric_limits<LONGLONG>::min(), std::numeric_limits<LONGLONG>::max()),
            _T("-9223372036854775808|9223372036854775807"));
  EXPECT_EQ(Formatted(_T("%llu|%I64u|%I64x"), ~0ULL, 1ULL, ~0ULL), _T("18446744073709551615|1|ffffffffffffffff"));
  EXPECT_EQ(Formatted(_T("%I64d%d"), 1LL, 2), _T("12"));
}

TEST(StringFormat, UnitsAndText) {
  EXPECT_EQ(Formatted(_T("%c%c"), 'a', 0x20AC), _T("a\u20AC"));
  EXPECT_EQ(Formatted(_T("%3c|%-3c|"), 'a', 'b'), _T("  a|b  |"));
  EXPECT_EQ(Formatted(_T("%s, %s"), _T("one"), _T("two")), _T("one, two"));
  EXPECT_EQ(Formatted(_T("%ls"), _T("wide")), _T("wide"));
  EXPECT_EQ(Formatted(_T("%6s|%-6s|%.2s|%5.1s"), _T("abc"), _T("abc"), _T("abc"), _T("abc")),
            _T("   abc|abc   |ab|    a"));
  EXPECT_EQ(Formatted(_T("%s"), static_cast<LPCWSTR>(nullptr)), _T("(null)"));
  EXPECT_EQ(Formatted(_T("%c"), 0).GetLength(), 1);
}

TEST(StringFormat, ThePrecisionOfTextBoundsWhatIsRead) {
  const WCHAR unended[] = {'a', 'b'};
  EXPECT_EQ(Formatted(_T("%.2s"), static_cast<LPCWSTR>(unended)), _T("ab"));
}

TEST(StringFormat, WidthAndPrecisionMayBeArguments) {
  EXPECT_EQ(Formatted(_T("%*d|%*d|%.*d|%.*d"), 4, 7, -4, 7, 3, 7, -3, 7), _T("   7|7   |007|7"));
}

TEST(StringFormat, TakesItsOwnTextAsAnArgument) {
  CString text(_T("abc"));
  text.Format(_T("<%s>"), text.GetString());
  EXPECT_EQ(text, _T("<abc>"));
}

TEST(StringFormat, RefusesWhatItDoesNotKnowAndKeepsTheText) {
  for (const LPCWSTR format : {_T("%"),    _T("%f"),    _T("%n"),    _T("%p"), _T("%o"),  _T("%S"), _T("%hd"),
                               _T("%lls"), _T("%I64c"), _T("%I32d"), _T("%5"), _T("%5%"), _T("%-"), _T("%05s"),
                               _T("%+c"),  _T("%#d"),   _T("%#u"),   _T("%l"), _T("%zu"), _T("%D")}) {
    CString text(_T("before"));
    EXPECT_TRUE(Raised<CInvalidArgException>([&] { text.Format(format, 1, 2); })) << platform::ToUtf8(format);
    EXPECT_EQ(text, _T("before"));
  }
  CString text;
  EXPECT_TRUE(Raised<CInvalidArgException>([&] { text.Format(nullptr); }));
}

TEST(StringFormat, RefusesLengthsBeyondTheLargestInt) {
  for (const LPCWSTR format :
       {_T("%2147483648d"), _T("%.2147483648d"), _T("%99999999999999999999d"), _T("x%2147483647d")}) {
    CString text;
    EXPECT_TRUE(Raised<CInvalidArgException>([&] { text.Format(format, 1); })) << platform::ToUtf8(format);
  }
}

}  // namespace
}  // namespace ondrel::test
