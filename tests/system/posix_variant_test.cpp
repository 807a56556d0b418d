// Variants of this system's own: null arguments, and the statuses of objects that do not convert. Windows may crash on
// null, and passes a null object on.
#include <gtest/gtest.h>

#include "system/counted_object.h"
#include "system/documents.h"

namespace ondrel::test {
namespace {

TEST(PosixVariant, NullArgumentsAreRefused) {
  CComVariant value;
  EXPECT_EQ(Hex(VariantClear(nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(VariantCopy(nullptr, &value)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(VariantCopy(&value, nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(VariantChangeType(nullptr, &value, 0, VT_I8)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(VariantChangeType(&value, nullptr, 0, VT_I8)), Hex(E_INVALIDARG));
}

TEST(PosixVariant, OneOfNoKnownTypeStaysAsItIs) {
  VARIANT unknown = {};
  unknown.vt = 0x7FFF;
  const CComVariant text(_T("a"));
  EXPECT_EQ(Hex(VariantCopy(&unknown, &text)), Hex(DISP_E_BADVARTYPE));
  EXPECT_EQ(unknown.vt, 0x7FFF);
  CComVariant value(_T("b"));
  EXPECT_EQ(Hex(VariantCopy(&value, &unknown)), Hex(DISP_E_BADVARTYPE));
  EXPECT_EQ(value.vt, VT_BSTR);
}

TEST(PosixVariant, NumbersOtherThanZeroAreTrue) {
  for (const auto& [number, expected] : {std::pair{0LL, VARIANT_FALSE}, {1LL, VARIANT_TRUE}, {-7LL, VARIANT_TRUE}}) {
    CComVariant value(static_cast<__int64>(number));
    EXPECT_EQ(value.ChangeType(VT_BOOL), S_OK) << number;
    EXPECT_EQ(value.boolVal, expected) << number;
  }
}

TEST(PosixVariant, ACopyOfADispatchHoldsItToo) {
  CountedObject object;
  const CComVariant variant(static_cast<IDispatch*>(&object));
  EXPECT_EQ(object.references, 1U);
  {
    VARIANT copy = {};
    EXPECT_EQ(VariantCopy(&copy, &variant), S_OK);
    EXPECT_EQ(copy.vt, VT_DISPATCH);
    EXPECT_EQ(object.references, 2U);
    EXPECT_EQ(VariantClear(&copy), S_OK);
  }
  EXPECT_EQ(object.references, 1U);
}

TEST(PosixVariant, ObjectsThatRefuseOrAreNullAreAMismatch) {
  CountedObject object(false);
  CComVariant variant(static_cast<IUnknown*>(&object));
  EXPECT_EQ(Hex(variant.ChangeType(VT_DISPATCH)), Hex(DISP_E_TYPEMISMATCH));
  EXPECT_EQ(variant.vt, VT_UNKNOWN);
  CComVariant null(static_cast<IDispatch*>(nullptr));
  EXPECT_EQ(Hex(null.ChangeType(VT_UNKNOWN)), Hex(DISP_E_TYPEMISMATCH));
}

}  // namespace
}  // namespace ondrel::test
