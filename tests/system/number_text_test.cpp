// Numbers as people write them, converted to integers. The table holds on every system.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

struct NumberRow {
  LPCWSTR text;
  HRESULT status;
  LONGLONG value = 0;
};

constexpr LONGLONG kLargest = 9223372036854775807LL;
constexpr LONGLONG kSmallest = -kLargest - 1;

const NumberRow kRows[] = {
    // Fractions are rounded, halves to the even number.
    {_T("1.5"), S_OK, 2},
    {_T("2.5"), S_OK, 2},
    {_T("0.5"), S_OK, 0},
    {_T("-0.5"), S_OK, 0},
    {_T("-1.5"), S_OK, -2},
    {_T("-2.5"), S_OK, -2},
    {_T("1.4999"), S_OK, 1},
    {_T("2.500001"), S_OK, 3},
    {_T("2.5000"), S_OK, 2},
    {_T("2.50000000000000000000000000000000001"), S_OK, 3},
    {_T("2.49999999999999999999999999999999999"), S_OK, 2},
    {_T("12345678901234567.89012345678901234567890"), S_OK, 12345678901234568},
    {_T("1."), S_OK, 1},
    {_T(".5"), S_OK, 0},
    {_T(".6"), S_OK, 1},
    {_T("."), DISP_E_TYPEMISMATCH},
    {_T("1.2.3"), DISP_E_TYPEMISMATCH},
    {_T("9223372036854775807.4"), S_OK, kLargest},
    {_T("9223372036854775807.5"), DISP_E_OVERFLOW},
    {_T("-9223372036854775808.5"), S_OK, kSmallest},
    {_T("-9223372036854775808.6"), DISP_E_OVERFLOW},
    // Exponents.
    {_T("1e3"), S_OK, 1000},
    {_T("1E+3"), S_OK, 1000},
    {_T("1.e3"), S_OK, 1000},
    {_T("15e-1"), S_OK, 2},
    {_T("25e-1"), S_OK, 2},
    {_T("1e-3"), S_OK, 0},
    {_T("1e-0"), S_OK, 1},
    {_T("0e400"), S_OK, 0},
    {_T("1e18"), S_OK, 1000000000000000000},
    {_T("9.2233720368547758e18"), S_OK, 9223372036854775800},
    {_T("92233720368547758070e-1"), S_OK, kLargest},
    {_T("1e19"), DISP_E_OVERFLOW},
    {_T("1e400"), DISP_E_OVERFLOW},
    {_T("1e3 "), S_OK, 1000},
    {_T("1e3-"), S_OK, -1000},
    {_T("1e"), DISP_E_TYPEMISMATCH},
    {_T("1e+"), DISP_E_TYPEMISMATCH},
    {_T("e3"), DISP_E_TYPEMISMATCH},
    {_T("1 e3"), DISP_E_TYPEMISMATCH},
    {_T("1e 3"), DISP_E_TYPEMISMATCH},
    {_T("1e3.5"), DISP_E_TYPEMISMATCH},
    {_T("1d3"), DISP_E_TYPEMISMATCH},
    // Separators of thousands, wherever they stand among the digits.
    {_T("1,000"), S_OK, 1000},
    {_T("12,345,678"), S_OK, 12345678},
    {_T("1,0,0"), S_OK, 100},
    {_T("1,,0"), S_OK, 10},
    {_T("1,"), S_OK, 1},
    {_T("1,000.5"), S_OK, 1000},
    {_T("0,5"), S_OK, 5},
    {_T(",1"), DISP_E_TYPEMISMATCH},
    // Signs.
    {_T("+-1"), S_OK, -1},
    {_T("-+1"), S_OK, -1},
    {_T("- 1"), S_OK, -1},
    {_T("1  -"), S_OK, -1},
    {_T("1.5-"), S_OK, -2},
    {_T("--1"), DISP_E_TYPEMISMATCH},
    {_T("++1"), DISP_E_TYPEMISMATCH},
    {_T("-1-"), DISP_E_TYPEMISMATCH},
    {_T("1-2"), DISP_E_TYPEMISMATCH},
    {_T("- -1"), DISP_E_TYPEMISMATCH},
    // Parentheses stand for a minus sign.
    {_T("(5)"), S_OK, -5},
    {_T("( 5 )"), S_OK, -5},
    {_T("(-5)"), S_OK, -5},
    {_T("-(1)"), S_OK, -1},
    {_T("(5"), DISP_E_TYPEMISMATCH},
    {_T("5)"), DISP_E_TYPEMISMATCH},
    {_T("()"), DISP_E_TYPEMISMATCH},
    // The sign of the currency.
    {_T("$5"), S_OK, 5},
    {_T("$ 5"), S_OK, 5},
    {_T("5$"), S_OK, 5},
    {_T("-$5"), S_OK, -5},
    {_T("$-5"), S_OK, -5},
    {_T("($5)"), S_OK, -5},
    {_T("$4e1"), DISP_E_TYPEMISMATCH},
    {_T("\u20AC5"), DISP_E_TYPEMISMATCH},
    {_T("5%"), DISP_E_TYPEMISMATCH},
    // Other bases. A sign says nothing there.
    {_T("&H10"), S_OK, 16},
    {_T("&hff"), S_OK, 255},
    {_T("&HFFFFFFFF"), S_OK, 4294967295},
    {_T("&H7FFFFFFFFFFFFFFF"), S_OK, kLargest},
    {_T("&H1FFFFFFFFFFFFFFFF"), DISP_E_OVERFLOW},
    {_T("&O17"), S_OK, 15},
    {_T("-&H10"), S_OK, 16},
    {_T("&H"), DISP_E_TYPEMISMATCH},
    {_T("&HG"), DISP_E_TYPEMISMATCH},
    {_T("&O18"), DISP_E_TYPEMISMATCH},
    {_T("&17"), DISP_E_TYPEMISMATCH},
    {_T("&H8."), DISP_E_TYPEMISMATCH},
    {_T("0x10"), DISP_E_TYPEMISMATCH},
    // Blanks of every kind around the number, none inside; no digits but the ASCII ones.
    {_T("\u00A01\u3000"), S_OK, 1},
    {_T("\u00851\u2028"), S_OK, 1},
    {_T("1 2"), DISP_E_TYPEMISMATCH},
    {_T("1\u00A02"), DISP_E_TYPEMISMATCH},
    {_T("1\u200B"), DISP_E_TYPEMISMATCH},
    {_T("\u0661"), DISP_E_TYPEMISMATCH},
    {_T("\uFF11"), DISP_E_TYPEMISMATCH},
    {_T("NaN"), DISP_E_TYPEMISMATCH},
    {_T("true"), DISP_E_TYPEMISMATCH},
};

TEST(NumberText, BecomesA64BitIntegerAsTheTableSays) {
  for (const NumberRow& row : kRows) {
    CComVariant variant(row.text);
    EXPECT_EQ(Hex(variant.ChangeType(VT_I8)), Hex(row.status)) << '"' << platform::ToUtf8(row.text) << '"';
    if (SUCCEEDED(row.status)) {
      EXPECT_EQ(variant.vt, VT_I8);
      EXPECT_EQ(variant.llVal, row.value) << '"' << platform::ToUtf8(row.text) << '"';
    } else {
      EXPECT_EQ(variant.vt, VT_BSTR);
      EXPECT_EQ(CString(variant.bstrVal), row.text);
    }
  }
}

TEST(NumberText, In32BitsHexadecimalDigitsAreTheBits) {
  CComVariant bits(_T("&HFFFFFFFF"));
  ASSERT_EQ(Hex(bits.ChangeType(VT_I4)), Hex(S_OK));
  EXPECT_EQ(bits.lVal, -1);
  CComVariant tooMany(_T("&H100000000"));
  EXPECT_EQ(Hex(tooMany.ChangeType(VT_I4)), Hex(DISP_E_OVERFLOW));
}

TEST(NumberText, IsTrueUnlessItIsZero) {
  struct TruthRow {
    LPCWSTR text;
    VARIANT_BOOL value;
  };
  for (const TruthRow& row : {TruthRow{_T("0.4"), VARIANT_TRUE}, TruthRow{_T("0.00"), VARIANT_FALSE},
                              TruthRow{_T("-2"), VARIANT_TRUE}, TruthRow{_T("0e9"), VARIANT_FALSE}}) {
    CComVariant variant(row.text);
    ASSERT_EQ(Hex(variant.ChangeType(VT_BOOL)), Hex(S_OK)) << platform::ToUtf8(row.text);
    EXPECT_EQ(variant.boolVal, row.value) << platform::ToUtf8(row.text);
  }
}

}  // namespace
}  // namespace ondrel::test
