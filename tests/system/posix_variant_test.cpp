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
