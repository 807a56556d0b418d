// Attributes of the document, as all XML forms write and read them.

#include "persist/dom.h"

#include "statuses.h"

namespace ondrel {

namespace {

/// S_OK with the attribute's text, converted to `type`, in `value`; S_FALSE when there is none; or the failing status.
HRESULT FindValue(IXMLDOMNamedNodeMap* attributes, BSTR name, VARTYPE type, CComVariant& value) {
  CComPtr<IXMLDOMNode> attribute;
  HRESULT status = attributes->getNamedItem(name, &attribute);
  if (status != S_OK) return status;
  status = attribute->get_nodeValue(&value);
  if (SUCCEEDED(status)) status = value.ChangeType(type);
  return status;
}

/// Adds an attribute with the text of `value`.
HRESULT WriteValue(IXMLDOMDocument* document, IXMLDOMNamedNodeMap* attributes, BSTR name, const VARIANT& value) {
  CComPtr<IXMLDOMAttribute> attribute;
  HRESULT status = document->createAttribute(name, &attribute);
  if (SUCCEEDED(status)) status = attribute->put_value(value);
  if (SUCCEEDED(status)) status = attributes->setNamedItem(attribute, nullptr);
  return status;
}

}  // namespace

HRESULT GetAttributes(IXMLDOMNode* node, CComPtr<IXMLDOMNamedNodeMap>& attributes) {
  const HRESULT status = node->get_attributes(&attributes);
  return status == S_FALSE ? kInvalidData : status;
}

HRESULT WriteText(IXMLDOMDocument* document, IXMLDOMNamedNodeMap* attributes, BSTR name, const CString& text) {
  const HRESULT status = platform::AddText(attributes, name, text);
  return status == S_FALSE ? WriteValue(document, attributes, name, CComVariant(text)) : status;
}

HRESULT WriteCookie(IXMLDOMDocument* document, IXMLDOMNamedNodeMap* attributes, BSTR name, __int64 cookie) {
  const HRESULT status = platform::AddNumber(attributes, name, cookie);
  return status == S_FALSE ? WriteValue(document, attributes, name, CComVariant(cookie)) : status;
}

HRESULT FindText(IXMLDOMNamedNodeMap* attributes, BSTR name, CString& text) {
  HRESULT status = platform::FindAscii(attributes, name, text);
  if (status != S_FALSE) return status;
  CComVariant value;
  status = FindValue(attributes, name, VT_BSTR, value);
  if (status == S_OK) text = CString(value.bstrVal, static_cast<int>(SysStringLen(value.bstrVal)));
  return status;
}

HRESULT ReadText(IXMLDOMNamedNodeMap* attributes, BSTR name, CString& text) {
  const HRESULT status = FindText(attributes, name, text);
  return status == S_FALSE ? kInvalidData : status;
}

HRESULT FindCookie(IXMLDOMNamedNodeMap* attributes, BSTR name, __int64& cookie) {
  HRESULT status = platform::FindDigits(attributes, name, cookie);
  if (status != S_FALSE) return status;
  CComVariant value;
  status = FindValue(attributes, name, VT_I8, value);
  if (status == S_OK) cookie = value.llVal;
  return status;
}

HRESULT ReadCookie(IXMLDOMNamedNodeMap* attributes, BSTR name, __int64& cookie) {
  const HRESULT status = FindCookie(attributes, name, cookie);
  return status == S_FALSE ? kInvalidData : status;
}

}  // namespace ondrel
