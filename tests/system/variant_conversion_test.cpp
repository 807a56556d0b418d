// Conversions between numbers, texts and truth values.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

struct Accepted {
  LPCWSTR text;
  LONGLONG value;
};

const Accepted kAccepted[] = {
    {_T("0"), 0},
    {_T("42"), 42},
    {_T("-1"), -1},
    {_T("+7"), 7},
    {_T("  42  "), 42},
    {_T("\t\r\n\v\f42\t"), 42},
    {_T("- 5"), -5},
    {_T("+\t5"), 5},
    {_T(" -5 "), -5},
    {_T("5-"), -5},
    {_T("5 -"), -5},
    {_T("5+"), 5},
    {_T("-0"), 0},
    {_T("000000000000000000000000000000000000000000000012"), 12},
    {_T("-00000000000000000000009223372036854775808"), -9223372036854775807LL - 1},
    {_T("9223372036854775807"), 9223372036854775807LL},
    {_T("-9223372036854775808"), -9223372036854775807LL - 1},
    {_T("4294967296"), 4294967296LL},
};

TEST(VariantConversion, DecimalTextBecomesANumber) {
  for (const Accepted& row : kAccepted) {
    CComVariant variant(row.text);
    EXPECT_EQ(Hex(variant.ChangeType(VT_I8)), Hex(S_OK)) << platform::ToUtf8(row.text);
    EXPECT_EQ(variant.vt, VT_I8) << platform::ToUtf8(row.text);
    EXPECT_EQ(variant.llVal, row.value) << platform::ToUtf8(row.text);
  }
}

TEST(VariantConversion, TextThatIsNoNumberIsAMismatchAndStays) {
  for (const LPCWSTR text : {_T(""), _T(" "), _T("\t"), _T("abc"), _T("12a"), _T("a12"), _T("-"), _T("+"), _T("- "),
                             _T("--1"), _T("-1-"), _T("1 2"), _T("12 -3"), _T("0x10"), _T("99999999999999999999x")}) {
    CComVariant variant(text);
    EXPECT_EQ(Hex(variant.ChangeType(VT_I8)), Hex(DISP_E_TYPEMISMATCH)) << '"' << platform::ToUtf8(text) << '"';
    EXPECT_EQ(variant.vt, VT_BSTR);
    EXPECT_EQ(CString(variant.bstrVal), text);
  }
}

TEST(VariantConversion, NullTextIsAMismatch) {
  VARIANT null{};
  null.vt = VT_BSTR;
  CComVariant destination(LONGLONG{3});
  EXPECT_EQ(Hex(VariantChangeType(&destination, &null, 0, VT_I8)), Hex(DISP_E_TYPEMISMATCH));
  EXPECT_EQ(destination.llVal, 3);
}

TEST(VariantConversion, ANumberOutOfRangeOverflowsAndTheDestinationStays) {
  for (const LPCWSTR text : {_T("9223372036854775808"), _T("-9223372036854775809"), _T("18446744073709551616"),
                             _T("100000000000000000000000000000")}) {
    CComVariant source(text);
    CComVariant destination(_T("kept"));

    EXPECT_EQ(Hex(VariantChangeType(&destination, &source, 0, VT_I8)), Hex(DISP_E_OVERFLOW)) << platform::ToUtf8(text);
    EXPECT_EQ(CString(destination.bstrVal), _T("kept"));
  }
}

TEST(VariantConversion, ThirtyTwoBitsHaveARangeOfTheirOwn) {
  CComVariant largest(_T("2147483647"));
  ASSERT_EQ(largest.ChangeType(VT_I4), S_OK);
  EXPECT_EQ(largest.lVal, 2147483647);
  CComVariant smallest(LONGLONG{-2147483648LL});
  ASSERT_EQ(smallest.ChangeType(VT_I4), S_OK);
  EXPECT_EQ(smallest.lVal, -2147483647 - 1);
  CComVariant above(_T("2147483648"));
  EXPECT_EQ(Hex(above.ChangeType(VT_I4)), Hex(DISP_E_OVERFLOW));
  CComVariant below(LONGLONG{-2147483649LL});
  EXPECT_EQ(Hex(below.ChangeType(VT_I4)), Hex(DISP_E_OVERFLOW));
  EXPECT_EQ(below.llVal, -2147483649LL);
}

TEST(VariantConversion, NumbersBecomeDecimalDigits) {
  const Accepted rows[] = {{_T("0"), 0},
                           {_T("-1"), -1},
                           {_T("9223372036854775807"), 9223372036854775807LL},
                           {_T("-9223372036854775808"), -9223372036854775807LL - 1}};
  for (const Accepted& row : rows) {
    CComVariant variant(row.value);
    ASSERT_EQ(variant.ChangeType(VT_BSTR), S_OK);
    EXPECT_EQ(CString(variant.bstrVal), row.text);
  }
  CComVariant narrow;
  narrow.vt = VT_I4;
  narrow.lVal = -40;
  ASSERT_EQ(narrow.ChangeType(VT_BSTR), S_OK);
  EXPECT_EQ(CString(narrow.bstrVal), _T("-40"));
}

TEST(VariantConversion, EmptyIsZeroAndEmptyText) {
  CComVariant number;
  EXPECT_EQ(number.ChangeType(VT_I8), S_OK);
  EXPECT_EQ(number.llVal, 0);
  CComVariant text;
  EXPECT_EQ(text.ChangeType(VT_BSTR), S_OK);
  ASSERT_NE(text.bstrVal, nullptr);
  EXPECT_EQ(SysStringLen(text.bstrVal), 0U);
}

TEST(VariantConversion, NullConvertsIntoNothing) {
  for (const VARTYPE type : {VT_I8, VT_I4, VT_BSTR, VT_BOOL, VT_UNKNOWN, VT_EMPTY}) {
    CComVariant null;
    null.vt = VT_NULL;
    EXPECT_EQ(Hex(null.ChangeType(type)), Hex(DISP_E_TYPEMISMATCH)) << "type " << type;
    EXPECT_EQ(null.vt, VT_NULL);
  }
}

TEST(VariantConversion, TruthIsMinusOne) {
  CComVariant truth;
  truth.vt = VT_BOOL;
  truth.boolVal = VARIANT_TRUE;
  CComVariant number;
  ASSERT_EQ(VariantChangeType(&number, &truth, 0, VT_I8), S_OK);
  EXPECT_EQ(number.llVal, -1);
  ASSERT_EQ(truth.ChangeType(VT_BSTR), S_OK);
  EXPECT_EQ(CString(truth.bstrVal), _T("-1"));

  for (const LPCWSTR text : {_T("True"), _T("TRUE"), _T("3"), _T("-1")}) {
    CComVariant variant(text);
    EXPECT_EQ(variant.ChangeType(VT_BOOL), S_OK) << platform::ToUtf8(text);
    EXPECT_EQ(variant.boolVal, VARIANT_TRUE) << platform::ToUtf8(text);
  }
  for (const LPCWSTR text : {_T("false"), _T("0")}) {
    CComVariant variant(text);
    EXPECT_EQ(variant.ChangeType(VT_BOOL), S_OK) << platform::ToUtf8(text);
    EXPECT_EQ(variant.boolVal, VARIANT_FALSE) << platform::ToUtf8(text);
  }
  CComVariant neither(_T("yes"));
  EXPECT_EQ(Hex(neither.ChangeType(VT_BOOL)), Hex(DISP_E_TYPEMISMATCH));
}

TEST(VariantConversion, ToItsOwnTypeIsACopy) {
  CComVariant source(_T("not a number"));
  CComVariant copy;
  ASSERT_EQ(VariantChangeType(&copy, &source, 0, VT_BSTR), S_OK);
  EXPECT_NE(copy.bstrVal, source.bstrVal);
  EXPECT_EQ(CString(copy.bstrVal), _T("not a number"));
}

}  // namespace
}  // namespace ondrel::test
