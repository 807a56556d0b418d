// Attributes of the document, as all XML forms write and read them.

#include "persist/dom.h"

#include "statuses.h"

namespace ondrel {

HRESULT GetAttributes(IXMLDOMNode* node, CComPtr<IXMLDOMNamedNodeMap>& attributes) {
  const HRESULT status = node->get_attributes(&attributes);
  return status == S_FALSE ? kInvalidData : status;
}

HRESULT WriteAttribute(IXMLDOMDocument* document, IXMLDOMNamedNodeMap* attributes, BSTR name, const VARIANT& value) {
  CComPtr<IXMLDOMAttribute> attribute;
  HRESULT status = document->createAttribute(name, &attribute);
  if (SUCCEEDED(status)) status = attribute->put_value(value);
  if (SUCCEEDED(status)) status = attributes->setNamedItem(attribute, nullptr);
  return status;
}

HRESULT FindAttribute(IXMLDOMNamedNodeMap* attributes, BSTR name, VARTYPE type, CComVariant& value) {
  CComPtr<IXMLDOMNode> attribute;
  HRESULT status = attributes->getNamedItem(name, &attribute);
  if (status != S_OK) return status;
  value.Clear();
  status = attribute->get_nodeValue(&value);
  if (SUCCEEDED(status)) status = value.ChangeType(type);
  return status;
}

HRESULT ReadAttribute(IXMLDOMNamedNodeMap* attributes, BSTR name, VARTYPE type, CComVariant& value) {
  const HRESULT status = FindAttribute(attributes, name, type, value);
  return status == S_FALSE ? kInvalidData : status;
}

}  // namespace ondrel
