// Allocated wide text: its layout, its length, and how two are compared.
#include <gtest/gtest.h>

#include <cstring>

#include <ondrel/platform/com.h>

#include "support/print_text.h"
#include "system/documents.h"

namespace ondrel::test {
namespace {

std::uint32_t StoredByteCount(BSTR text) {
  std::uint32_t count = 0;
  std::memcpy(&count, reinterpret_cast<const char*>(text) - sizeof count, sizeof count);
  return count;
}

TEST(WideText, CarriesItsLengthInBytesBeforeItAndAZeroUnitBehindIt) {
  const CComBSTR text(_T("abc"));
  EXPECT_EQ(StoredByteCount(text), 6U);
  EXPECT_EQ(text.Length(), 3U);
  EXPECT_EQ(text.m_str[3], 0);
}

TEST(WideText, IsCopiedToTheFirstZeroUnitOrToAGivenLength) {
  const WCHAR source[] = _T("ab\0cd");
  const CComBSTR upToZero(source);
  EXPECT_EQ(upToZero.Length(), 2U);
  BSTR whole = SysAllocStringLen(source, 5);
  EXPECT_EQ(SysStringLen(whole), 5U);
  EXPECT_EQ(whole[4], 'd');
  EXPECT_EQ(whole[5], 0);
  SysFreeString(whole);
}

TEST(WideText, WithoutASourceIsRoomToFill) {
  BSTR room = SysAllocStringLen(nullptr, 2);
  ASSERT_NE(room, nullptr);
  room[0] = 'x';
  room[1] = 'y';
  EXPECT_EQ(room[2], 0);
  EXPECT_EQ(SysStringLen(room), 2U);
  SysFreeString(room);
}

TEST(WideText, OfNothingIsNull) {
  EXPECT_EQ(SysAllocString(nullptr), nullptr);
  EXPECT_EQ(SysStringLen(nullptr), 0U);
  SysFreeString(nullptr);
}

TEST(WideText, LongerThanItsLengthFieldCanTellIsRefused) {
  EXPECT_EQ(SysAllocStringLen(nullptr, 0x7FFFFFFF), nullptr);
  EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFF), nullptr);
}

TEST(WideText, ComparesUnitByUnitWithCase) {
  const auto compare = [](const CString& left, const CString& right) {
    return VarBstrCmp(CComBSTR(left), CComBSTR(right), LOCALE_USER_DEFAULT, 0);
  };
  EXPECT_EQ(compare(_T("Project"), _T("Project")), VARCMP_EQ);
  EXPECT_EQ(compare(_T("Projects"), _T("Project")), VARCMP_GT);
  EXPECT_EQ(compare(_T("Proj"), _T("Project")), VARCMP_LT);
  EXPECT_NE(compare(_T("project"), _T("Project")), VARCMP_EQ);
  EXPECT_NE(compare(CString(_T("a\0b"), 3), _T("a")), VARCMP_EQ) << "units behind a zero unit count";
}

TEST(WideText, ThatIsNullIsEmpty) {
  EXPECT_EQ(VarBstrCmp(nullptr, nullptr, LOCALE_USER_DEFAULT, 0), VARCMP_EQ);
  EXPECT_EQ(VarBstrCmp(nullptr, CComBSTR(_T("")), LOCALE_USER_DEFAULT, 0), VARCMP_EQ);
  EXPECT_EQ(VarBstrCmp(nullptr, CComBSTR(_T("a")), LOCALE_USER_DEFAULT, 0), VARCMP_LT);
}

TEST(WideText, OwnerMovesAndGivesAway) {
  CComBSTR first(_T("one"));
  BSTR const text = first;
  CComBSTR second(std::move(first));
  EXPECT_EQ(static_cast<BSTR>(second), text);
  EXPECT_EQ(static_cast<BSTR>(first), nullptr);  // NOLINT(bugprone-use-after-move): what is left is the point
  BSTR given = second.Detach();
  EXPECT_EQ(given, text);
  SysFreeString(given);
}

}  // namespace
}  // namespace ondrel::test
