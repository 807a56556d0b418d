// The interfaces of the document object model with all their operations.
#pragma once

#include <ondrel/platform/xml.h>

#include "os/whole_dispatch.h"

namespace ondrel::test {

template <class Interface>
class WholeNode : public WholeDispatch<Interface> {
 public:
  HRESULT STDMETHODCALLTYPE put_nodeValue(VARIANT) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_nodeType(DOMNodeType*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_parentNode(IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_childNodes(IXMLDOMNodeList**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_firstChild(IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_lastChild(IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_previousSibling(IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_nextSibling(IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE insertBefore(IXMLDOMNode*, VARIANT, IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE replaceChild(IXMLDOMNode*, IXMLDOMNode*, IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE removeChild(IXMLDOMNode*, IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE hasChildNodes(VARIANT_BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_ownerDocument(IXMLDOMDocument**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE cloneNode(VARIANT_BOOL, IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_nodeTypeString(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_text(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_text(BSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_specified(VARIANT_BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_definition(IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_nodeTypedValue(VARIANT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_nodeTypedValue(VARIANT) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_dataType(VARIANT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_dataType(BSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_xml(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE transformNode(IXMLDOMNode*, BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_parsed(VARIANT_BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_namespaceURI(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_prefix(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_baseName(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE transformNodeToObject(IXMLDOMNode*, VARIANT) override { return E_NOTIMPL; }
};

template <>
class Whole<IXMLDOMNode> : public WholeNode<IXMLDOMNode> {};

template <>
class Whole<IXMLDOMElement> : public WholeNode<IXMLDOMElement> {
 public:
  HRESULT STDMETHODCALLTYPE get_tagName(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE getAttribute(BSTR, VARIANT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE setAttribute(BSTR, VARIANT) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE removeAttribute(BSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE getAttributeNode(BSTR, IXMLDOMAttribute**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE setAttributeNode(IXMLDOMAttribute*, IXMLDOMAttribute**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE removeAttributeNode(IXMLDOMAttribute*, IXMLDOMAttribute**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE normalize() override { return E_NOTIMPL; }
};

template <>
class Whole<IXMLDOMAttribute> : public WholeNode<IXMLDOMAttribute> {
 public:
  HRESULT STDMETHODCALLTYPE get_name(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_value(VARIANT*) override { return E_NOTIMPL; }
};

template <>
class Whole<IXMLDOMProcessingInstruction> : public WholeNode<IXMLDOMProcessingInstruction> {
 public:
  HRESULT STDMETHODCALLTYPE get_target(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_data(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_data(BSTR) override { return E_NOTIMPL; }
};

template <>
class Whole<IXMLDOMDocument> : public WholeNode<IXMLDOMDocument> {
 public:
  HRESULT STDMETHODCALLTYPE get_doctype(IXMLDOMDocumentType**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_implementation(IXMLDOMImplementation**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE putref_documentElement(IXMLDOMElement*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE createDocumentFragment(IXMLDOMDocumentFragment**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE createTextNode(BSTR, IXMLDOMText**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE createComment(BSTR, IXMLDOMComment**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE createCDATASection(BSTR, IXMLDOMCDATASection**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE createEntityReference(BSTR, IXMLDOMEntityReference**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE getElementsByTagName(BSTR, IXMLDOMNodeList**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE createNode(VARIANT, BSTR, BSTR, IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE nodeFromID(BSTR, IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE load(VARIANT, VARIANT_BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_readyState(LONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_parseError(IXMLDOMParseError**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_url(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_async(VARIANT_BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_async(VARIANT_BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE abort() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE save(VARIANT) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_validateOnParse(VARIANT_BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_validateOnParse(VARIANT_BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_resolveExternals(VARIANT_BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_resolveExternals(VARIANT_BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_preserveWhiteSpace(VARIANT_BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_preserveWhiteSpace(VARIANT_BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_onreadystatechange(VARIANT) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_ondataavailable(VARIANT) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_ontransformnode(VARIANT) override { return E_NOTIMPL; }
};

template <>
class Whole<IXMLDOMNamedNodeMap> : public WholeDispatch<IXMLDOMNamedNodeMap> {
 public:
  HRESULT STDMETHODCALLTYPE removeNamedItem(BSTR, IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_item(LONG, IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_length(LONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE getQualifiedItem(BSTR, BSTR, IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE removeQualifiedItem(BSTR, BSTR, IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE nextNode(IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE reset() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get__newEnum(IUnknown**) override { return E_NOTIMPL; }
};

template <>
class Whole<IXMLDOMNodeList> : public WholeDispatch<IXMLDOMNodeList> {
 public:
  HRESULT STDMETHODCALLTYPE get_item(LONG, IXMLDOMNode**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_length(LONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE reset() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get__newEnum(IUnknown**) override { return E_NOTIMPL; }
};

}  // namespace ondrel::test
