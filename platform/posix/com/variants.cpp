// Variants: what they own, how they are copied, and the conversions between their types.

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <ondrel/platform/os/com.h>

#include "com/number_text.h"

namespace {

using ondrel::platform::InterfaceId;
using ondrel::platform::NumberText;
using ondrel::platform::ParseNumber;
using ondrel::platform::RoundToInteger;
using ondrel::platform::TruthOf;

bool IsKnownType(VARTYPE type) {
  switch (type) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_I4:
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_ERROR:
    case VT_BOOL:
    case VT_UNKNOWN:
    case VT_I8:
      return true;
    default:
      return false;
  }
}

bool IsObjectType(VARTYPE type) { return type == VT_DISPATCH || type == VT_UNKNOWN; }

VARIANT MakeVariant(VARTYPE type) {
  VARIANT variant{};
  variant.vt = type;
  return variant;
}

// A text ends at its first zero unit, whatever its length says.
HRESULT ParseText(LPCWSTR text, NumberText& number) {
  return text == nullptr ? DISP_E_TYPEMISMATCH : ParseNumber(text, number);
}

bool EqualsLetters(BSTR text, std::u16string_view lowerCase) {
  if (text == nullptr) return false;
  std::u16string_view view(text);
  if (view.size() != lowerCase.size()) return false;
  for (std::size_t i = 0; i < view.size(); ++i) {
    const WCHAR unit = view[i] >= 'A' && view[i] <= 'Z' ? static_cast<WCHAR>(view[i] - 'A' + 'a') : view[i];
    if (unit != lowerCase[i]) return false;
  }
  return true;
}

HRESULT ToInteger(const VARIANT& source, LONGLONG lowest, LONGLONG highest, LONGLONG& value) {
  switch (source.vt) {
    case VT_EMPTY:
      value = 0;
      break;
    case VT_I4:
      value = source.lVal;
      break;
    case VT_I8:
      value = source.llVal;
      break;
    case VT_BOOL:
      value = source.boolVal;
      break;
    case VT_BSTR: {
      NumberText number;
      const HRESULT status = ParseText(source.bstrVal, number);
      return FAILED(status) ? status : RoundToInteger(number, lowest, highest, value);
    }
    default:
      return DISP_E_TYPEMISMATCH;
  }
  return value < lowest || value > highest ? DISP_E_OVERFLOW : S_OK;
}

template <class Integer>
HRESULT ToInteger(const VARIANT& source, Integer& value) {
  LONGLONG number = 0;
  const HRESULT status =
      ToInteger(source, std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max(), number);
  if (SUCCEEDED(status)) value = static_cast<Integer>(number);
  return status;
}

HRESULT ToBool(const VARIANT& source, VARIANT_BOOL& value) {
  bool isTrue = false;
  if (source.vt == VT_BSTR) {
    isTrue = EqualsLetters(source.bstrVal, u"true") || EqualsLetters(source.bstrVal, u"#true#");
    if (!isTrue && !EqualsLetters(source.bstrVal, u"false") && !EqualsLetters(source.bstrVal, u"#false#")) {
      NumberText number;
      HRESULT status = ParseText(source.bstrVal, number);
      if (SUCCEEDED(status)) status = TruthOf(number, isTrue);
      if (FAILED(status)) return status;
    }
  } else {
    LONGLONG number = 0;
    if (const HRESULT status = ToInteger(source, number); FAILED(status)) return status;
    isTrue = number != 0;
  }
  value = isTrue ? VARIANT_TRUE : VARIANT_FALSE;
  return S_OK;
}

HRESULT ToText(const VARIANT& source, BSTR& text) {
  if (source.vt == VT_EMPTY) {
    text = SysAllocString(u"");
    return text == nullptr ? E_OUTOFMEMORY : S_OK;
  }
  LONGLONG number = 0;
  const HRESULT status = ToInteger(source, number);
  if (FAILED(status)) return status;
  char digits[std::numeric_limits<LONGLONG>::digits10 + 3];  // one more digit, the sign, and room behind
  const char* const end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
  text = SysAllocStringLen(nullptr, static_cast<UINT>(end - digits));
  if (text == nullptr) return E_OUTOFMEMORY;
  std::copy(static_cast<const char*>(digits), end, text);
  return S_OK;
}

HRESULT ToObject(const VARIANT& source, VARIANT& converted) {
  if (!IsObjectType(source.vt) || source.punkVal == nullptr) return DISP_E_TYPEMISMATCH;
  void* object = nullptr;
  IUnknown* const asked = source.vt == VT_DISPATCH ? source.pdispVal : source.punkVal;
  const IID& id = converted.vt == VT_DISPATCH ? InterfaceId<IDispatch>() : InterfaceId<IUnknown>();
  if (FAILED(asked->QueryInterface(id, &object))) return DISP_E_TYPEMISMATCH;
  if (converted.vt == VT_DISPATCH) {
    converted.pdispVal = static_cast<IDispatch*>(object);
  } else {
    converted.punkVal = static_cast<IUnknown*>(object);
  }
  return S_OK;
}

HRESULT Convert(const VARIANT& source, VARIANT& converted) {
  switch (converted.vt) {
    case VT_I8:
      return ToInteger(source, converted.llVal);
    case VT_I4:
      return ToInteger(source, converted.lVal);
    case VT_BOOL:
      return ToBool(source, converted.boolVal);
    case VT_BSTR:
      return ToText(source, converted.bstrVal);
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return ToObject(source, converted);
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

// A variant with what `source` holds: its own copy of a text, its own reference to an object.
HRESULT Duplicate(const VARIANT& source, VARIANT& duplicate) {
  duplicate = source;
  if (source.vt == VT_BSTR && source.bstrVal != nullptr) {
    duplicate.bstrVal = SysAllocStringLen(source.bstrVal, SysStringLen(source.bstrVal));
    if (duplicate.bstrVal == nullptr) return E_OUTOFMEMORY;
  } else if (source.vt == VT_UNKNOWN && source.punkVal != nullptr) {
    source.punkVal->AddRef();
  } else if (source.vt == VT_DISPATCH && source.pdispVal != nullptr) {
    source.pdispVal->AddRef();
  }
  return S_OK;
}

// Puts `value`, which the destination owns from now on, in place of what it holds.
HRESULT Replace(VARIANT& destination, VARIANT value) {
  const HRESULT status = VariantClear(&destination);
  if (FAILED(status)) {
    VariantClear(&value);
    return status;
  }
  destination = value;
  return S_OK;
}

}  // namespace

void VariantInit(VARIANT* variant) { *variant = MakeVariant(VT_EMPTY); }

HRESULT VariantClear(VARIANT* variant) {
  if (variant == nullptr) return E_INVALIDARG;
  if (!IsKnownType(variant->vt)) return DISP_E_BADVARTYPE;
  // The variant is empty before the object hears of it: its last reference may lead back here.
  const VARIANT old = std::exchange(*variant, MakeVariant(VT_EMPTY));
  if (old.vt == VT_BSTR) {
    SysFreeString(old.bstrVal);
  } else if (old.vt == VT_UNKNOWN && old.punkVal != nullptr) {
    old.punkVal->Release();
  } else if (old.vt == VT_DISPATCH && old.pdispVal != nullptr) {
    old.pdispVal->Release();
  }
  return S_OK;
}

HRESULT VariantCopy(VARIANT* destination, const VARIANT* source) {
  if (destination == nullptr || source == nullptr) return E_INVALIDARG;
  if (!IsKnownType(source->vt)) return DISP_E_BADVARTYPE;
  if (destination == source) return S_OK;
  VARIANT copy;
  const HRESULT status = Duplicate(*source, copy);
  return FAILED(status) ? status : Replace(*destination, copy);
}

HRESULT VariantChangeType(VARIANT* destination, const VARIANT* source, WORD flags, VARTYPE type) {
  if (destination == nullptr || source == nullptr) return E_INVALIDARG;
  if (flags != 0) return E_INVALIDARG;  // no variation of the conversions is kept here
  if (!IsKnownType(source->vt) || !IsKnownType(type)) return DISP_E_BADVARTYPE;
  if (source->vt == type) return VariantCopy(destination, source);
  VARIANT converted = MakeVariant(type);
  const HRESULT status = Convert(*source, converted);
  return FAILED(status) ? status : Replace(*destination, converted);
}
