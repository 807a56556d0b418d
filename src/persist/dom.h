// Attributes of the document, as all XML forms write and read them.
#pragma once

#include <ondrel/platform/xml.h>

namespace ondrel {

inline constexpr BstrLiteral kCookieAttribute(_T("Cookie"));
inline constexpr BstrLiteral kNameAttribute(_T("Name"));

/// An element's attributes; 0x8007000D for a node that has none because it is no element.
HRESULT GetAttributes(IXMLDOMNode* node, CComPtr<IXMLDOMNamedNodeMap>& attributes);

/// Adds an attribute with the text of `value` to an element's attributes. 0 or the first failing status.
HRESULT WriteAttribute(IXMLDOMDocument* document, IXMLDOMNamedNodeMap* attributes, BSTR name, const VARIANT& value);

/// Looks an attribute up. S_OK with its text, converted to `type`, in `value`; S_FALSE when there is none; or the
/// failing status.
HRESULT FindAttribute(IXMLDOMNamedNodeMap* attributes, BSTR name, VARTYPE type, CComVariant& value);

/// As FindAttribute, for an attribute that must be there: 0x8007000D when it is not.
HRESULT ReadAttribute(IXMLDOMNamedNodeMap* attributes, BSTR name, VARTYPE type, CComVariant& value);

/// The text of a VT_BSTR variant.
inline CString TextOf(const CComVariant& value) {
  return CString(value.bstrVal, static_cast<int>(SysStringLen(value.bstrVal)));
}

}  // namespace ondrel
