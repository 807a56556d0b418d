// Attributes of the document, as all XML forms write and read them.
#pragma once

#include <ondrel/platform/xml.h>

namespace ondrel {

inline constexpr BstrLiteral kCookieAttribute(_T("Cookie"));
inline constexpr BstrLiteral kNameAttribute(_T("Name"));

/// An element's attributes; 0x8007000D for a node that has none because it is no element.
HRESULT GetAttributes(IXMLDOMNode* node, CComPtr<IXMLDOMNamedNodeMap>& attributes);

/// Adds an attribute to an element's attributes. 0 or the first failing status.
HRESULT WriteText(IXMLDOMDocument* document, IXMLDOMNamedNodeMap* attributes, BSTR name, const CString& text);
/// The same for a number, written in decimal digits.
HRESULT WriteCookie(IXMLDOMDocument* document, IXMLDOMNamedNodeMap* attributes, BSTR name, __int64 cookie);

/// Looks an attribute up. S_OK and its text; S_FALSE when there is none; or the failing status.
HRESULT FindText(IXMLDOMNamedNodeMap* attributes, BSTR name, CString& text);

/// The same for an attribute that must be there: 0x8007000D when it is not.
HRESULT ReadText(IXMLDOMNamedNodeMap* attributes, BSTR name, CString& text);

/// As FindText and ReadText, for a number: its text is converted as VariantChangeType does it.
HRESULT FindCookie(IXMLDOMNamedNodeMap* attributes, BSTR name, __int64& cookie);
HRESULT ReadCookie(IXMLDOMNamedNodeMap* attributes, BSTR name, __int64& cookie);

}  // namespace ondrel
