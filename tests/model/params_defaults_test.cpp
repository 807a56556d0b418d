// What a record holds when it is made, and its accessors.

#include <gtest/gtest.h>

#include <type_traits>

#include "support/model/sets.h"

namespace ondrel::test {
namespace {

TEST(Params, AreEmptyByDefault) {
  const CMMCObjectParams record;
  EXPECT_EQ(record.GetCookie(), 0);
  EXPECT_EQ(record.GetName(), CString());
  EXPECT_EQ(record.GetIcon(), 0);
  EXPECT_EQ(record.GetNodeType(), 0);
  EXPECT_TRUE(record.GetChildQueries().empty());
  EXPECT_EQ(record.GetStyleSheet(), 0);
  EXPECT_EQ(record.GetMenuScript(), 0);
  EXPECT_TRUE(record.GetScripts().empty());
  EXPECT_TRUE(record.GetRenderQueries().empty());
  EXPECT_EQ(record.GetIdentity(), CString(_T("0000")));
}

TEST(Params, TakeCookieNameAndTypeAndLeaveTheRestEmpty) {
  const CMMCObjectParams record(-7, _T("Status"), CMMCObjectParams::eHTML);
  EXPECT_TRUE(SameRecord(record, {.cookie = -7, .name = _T("Status"), .type = CMMCObjectParams::eHTML}));
}

TEST(Params, HoldEachFieldOfItsOwn) {
  CMMCObjectParams record(5, _T("before"), CMMCObjectParams::eList);
  record.SetName(_T("after"));
  EXPECT_TRUE(SameRecord(record, {.cookie = 5, .name = _T("after")}));
  record.SetIcon(11);
  EXPECT_TRUE(SameRecord(record, {.cookie = 5, .name = _T("after"), .icon = 11}));
  record.SetMenuScript(12);
  EXPECT_TRUE(SameRecord(record, {.cookie = 5, .name = _T("after"), .icon = 11, .menuScript = 12}));
  record.SetStyleSheet(13);
  EXPECT_TRUE(SameRecord(record, {.cookie = 5, .name = _T("after"), .icon = 11, .styleSheet = 13, .menuScript = 12}));
  record.SetChildQueries({{_T("Disks"), 1}});
  record.SetScripts({2, 3});
  record.SetRenderQueries({{_T("Summary"), 4}});
  record.SetNodeType(CMMCObjectParams::eDialog);
  EXPECT_TRUE(SameRecord(record, {.cookie = 5,
                                  .name = _T("after"),
                                  .icon = 11,
                                  .type = CMMCObjectParams::eDialog,
                                  .childQueries = {{_T("Disks"), 1}},
                                  .styleSheet = 13,
                                  .menuScript = 12,
                                  .scripts = {2, 3},
                                  .renderQueries = {{_T("Summary"), 4}}}));
}

TEST(Params, KeepCookiesOfFullWidth) {
  constexpr __int64 kLargest = 0x7FFFFFFFFFFFFFFF;
  CMMCObjectParams record(-kLargest - 1, _T(""), CMMCObjectParams::eList);
  record.SetIcon(kLargest);
  record.SetMenuScript(-kLargest - 1);
  record.SetStyleSheet(0x123456789ABCDEF0);
  EXPECT_TRUE(SameRecord(
      record,
      {.cookie = -kLargest - 1, .icon = kLargest, .styleSheet = 0x123456789ABCDEF0, .menuScript = -kLargest - 1}));
}

TEST(Params, KeepAnyNodeTypeWithoutACheck) {
  CMMCObjectParams record;
  for (const int type : {3, 4, 77}) {
    record.SetNodeType(static_cast<CMMCObjectParams::_eTypeNode>(type));
    EXPECT_EQ(record.GetNodeType(), type);
  }
  EXPECT_EQ(CMMCObjectParams(1, _T(""), static_cast<CMMCObjectParams::_eTypeNode>(3)).GetNodeType(), 3);
}

TEST(Params, NumberTheNodeTypesInThirtyTwoBits) {
  static_assert(sizeof(CMMCObjectParams::_eTypeNode) == 4);
  EXPECT_EQ(CMMCObjectParams::eList, 0);
  EXPECT_EQ(CMMCObjectParams::eHTML, 1);
  EXPECT_EQ(CMMCObjectParams::eDialog, 2);
  EXPECT_EQ(CMMCObjectParams::eUnknown, 3);
}

TEST(Params, AreVersionOneAndTheirCookiesTravelInSixtyFourBitVariants) {
  EXPECT_EQ(CMMCObjectParams::n_nCurrentVersion, 1U);
  EXPECT_EQ(CMMCObjectParams::VT_OBJECT_COOKIE, 20);
  EXPECT_EQ(CMMCObjectParams::VT_FILE_COOKIE, 20);
}

}  // namespace
}  // namespace ondrel::test
