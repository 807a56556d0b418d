// Variants: what they own, how they are copied and cleared.
#include <gtest/gtest.h>

#include "system/counted_object.h"
#include "system/documents.h"

namespace ondrel::test {
namespace {

constexpr VARTYPE kUnknownType = 0x7FF;

TEST(Variant, ClearFreesTextAndReleasesObjects) {
  CountedObject object;
  {
    CComVariant unknown(static_cast<IUnknown*>(&object));
    CComVariant dispatch(static_cast<IDispatch*>(&object));
    CComVariant text(_T("freed with the variant: the address sanitizer would tell"));
    EXPECT_EQ(object.references, 2U);
    EXPECT_EQ(unknown.Clear(), S_OK);
    EXPECT_EQ(unknown.vt, VT_EMPTY);
    EXPECT_EQ(object.references, 1U);
  }
  EXPECT_EQ(object.references, 0U);
}

TEST(Variant, ClearOfNullObjectsAndNullTextIsHarmless) {
  for (const VARTYPE type : {VT_UNKNOWN, VT_DISPATCH, VT_BSTR, VT_NULL, VT_EMPTY}) {
    VARIANT variant{};
    variant.vt = type;
    EXPECT_EQ(VariantClear(&variant), S_OK) << "type " << type;
    EXPECT_EQ(variant.vt, VT_EMPTY) << "type " << type;
  }
}

TEST(Variant, OfAnUnknownTypeIsRefused) {
  VARIANT odd{};
  odd.vt = kUnknownType;
  CComVariant target(LONGLONG{5});
  EXPECT_EQ(Hex(VariantClear(&odd)), Hex(DISP_E_BADVARTYPE));
  EXPECT_EQ(Hex(VariantCopy(&target, &odd)), Hex(DISP_E_BADVARTYPE));
  EXPECT_EQ(Hex(VariantChangeType(&target, &odd, 0, VT_I8)), Hex(DISP_E_BADVARTYPE));
  EXPECT_EQ(Hex(VariantChangeType(&target, &target, 0, kUnknownType)), Hex(DISP_E_BADVARTYPE));
  EXPECT_EQ(target.llVal, 5);
}

TEST(Variant, CopyOfTextIsATextOfItsOwn) {
  const CComVariant source(CString(_T("a\0b"), 3));
  const CComVariant copy(source);
  EXPECT_EQ(copy.vt, VT_BSTR);
  EXPECT_NE(copy.bstrVal, source.bstrVal);
  EXPECT_EQ(VarBstrCmp(copy.bstrVal, source.bstrVal, LOCALE_USER_DEFAULT, 0), VARCMP_EQ);
}

TEST(Variant, CopyOfAnObjectIsAReference) {
  CountedObject object;
  {
    const CComVariant source(static_cast<IUnknown*>(&object));
    CComVariant copy(_T("let go of by the copy"));
    copy = source;
    EXPECT_EQ(object.references, 2U);
    EXPECT_EQ(copy.punkVal, source.punkVal);
  }
  EXPECT_EQ(object.references, 0U);
}

TEST(Variant, CopyOntoItselfChangesNothing) {
  CComVariant text(_T("same"));
  BSTR const before = text.bstrVal;
  EXPECT_EQ(VariantCopy(&text, &text), S_OK);
  EXPECT_EQ(text.bstrVal, before);
}

TEST(Variant, ObjectsConvertByAskingThem) {
  CountedObject object;
  {
    CComVariant variant(static_cast<IDispatch*>(&object));
    ASSERT_EQ(Hex(variant.ChangeType(VT_UNKNOWN)), Hex(S_OK));
    EXPECT_EQ(variant.vt, VT_UNKNOWN);
    EXPECT_EQ(object.references, 1U);
    ASSERT_EQ(Hex(variant.ChangeType(VT_DISPATCH)), Hex(S_OK));
    EXPECT_EQ(variant.vt, VT_DISPATCH);
    EXPECT_EQ(variant.pdispVal, static_cast<IDispatch*>(&object));
    EXPECT_EQ(object.references, 1U);
  }
  EXPECT_EQ(object.references, 0U);
}

TEST(Variant, ObjectsThatRefuseDoNotConvert) {
  CountedObject object(false);
  CComVariant variant(static_cast<IUnknown*>(&object));
  EXPECT_TRUE(FAILED(variant.ChangeType(VT_DISPATCH)));
  EXPECT_EQ(variant.vt, VT_UNKNOWN);
  EXPECT_EQ(Hex(variant.ChangeType(VT_I8)), Hex(DISP_E_TYPEMISMATCH));
  EXPECT_EQ(object.references, 1U);
}

TEST(Variant, NullObjectsConvertToTheirOwnType) {
  CComVariant null(static_cast<IDispatch*>(nullptr));
  EXPECT_EQ(Hex(null.ChangeType(VT_DISPATCH)), Hex(S_OK));
  EXPECT_EQ(null.pdispVal, nullptr);
}

TEST(Variant, ConversionLetsGoOfWhatTheDestinationHeld) {
  CountedObject object;
  CComVariant destination(static_cast<IUnknown*>(&object));
  CComVariant source(_T("12"));
  ASSERT_EQ(VariantChangeType(&destination, &source, 0, VT_I8), S_OK);
  EXPECT_EQ(destination.llVal, 12);
  EXPECT_EQ(object.references, 0U);
  EXPECT_EQ(source.vt, VT_BSTR);
}

}  // namespace
}  // namespace ondrel::test
