// Cookies taken out of variants: plain reads of the 64-bit member.

#include <gtest/gtest.h>

#include <initializer_list>

#include "support/model/sets.h"

namespace ondrel::test {
namespace {

TEST(VariantCookie, IsTheSixtyFourBitMember) {
  for (const __int64 cookie : std::initializer_list<__int64>{0, 5, -2, 0x7FFFFFFFFFFFFFFF}) {
    CComVariant variant(cookie);
    EXPECT_EQ(CMMCObjectParams::V_OBJECT_COOKIE(&variant), cookie);
    EXPECT_EQ(CMMCObjectParams::V_FILE_COOKIE(&variant), cookie);
    EXPECT_EQ(variant.vt, VT_I8);
    EXPECT_EQ(variant.llVal, cookie);
  }
}

TEST(VariantCookie, IsReadWhateverTheVariantsType) {
  // A 32-bit number 5 with other bits in the upper half of the member.
  CComVariant variant;
  variant.llVal = 0x1234567800000005;
  variant.vt = VT_I4;
  EXPECT_EQ(CMMCObjectParams::V_OBJECT_COOKIE(&variant), 0x1234567800000005);
  EXPECT_EQ(CMMCObjectParams::V_FILE_COOKIE(&variant), 0x1234567800000005);
  EXPECT_EQ(variant.vt, VT_I4);
  EXPECT_EQ(variant.llVal, 0x1234567800000005);
}

TEST(VariantCookie, IsReadFromAnEmptyVariantToo) {
  CComVariant variant;
  variant.llVal = 9;
  EXPECT_EQ(CMMCObjectParams::V_OBJECT_COOKIE(&variant), 9);
  EXPECT_EQ(CMMCObjectParams::V_FILE_COOKIE(&variant), 9);
  EXPECT_EQ(variant.vt, VT_EMPTY);
}

}  // namespace
}  // namespace ondrel::test
