// Documents for tests: made from text, looked into, written again.

#include "system/documents.h"

#include <cstdio>
#include <stdexcept>

namespace ondrel::test {

namespace {

void Require(HRESULT status, const char* what) {
  if (FAILED(status)) throw std::runtime_error(std::string(what) + " failed with " + Hex(status));
}

}  // namespace

std::string Hex(HRESULT status) {
  char digits[16];
  std::snprintf(digits, sizeof digits, "0x%08X", static_cast<unsigned>(status));
  return digits;
}

CComPtr<IXMLDOMDocument> NewDocument() {
  CComPtr<IXMLDOMDocument> document;
  Require(platform::CreateDocument(&document), "CreateDocument");
  return document;
}

HRESULT Load(IXMLDOMDocument* document, const CString& text) {
  VARIANT_BOOL loaded = VARIANT_FALSE;
  const HRESULT status = platform::LoadDocument(document, CComBSTR(text), &loaded);
  if ((status == S_OK) != (loaded == VARIANT_TRUE)) throw std::runtime_error("the status and the flag disagree");
  return status;
}

HRESULT Load(IXMLDOMDocument* document, const std::string& text) { return Load(document, CString(text.c_str())); }

CComPtr<IXMLDOMDocument> Loaded(const CString& text) {
  constexpr int kShownUnits = 200;
  CComPtr<IXMLDOMDocument> document = NewDocument();
  if (Load(document, text) != S_OK) throw std::runtime_error("refused: " + platform::ToUtf8(text.Left(kShownUnits)));
  return document;
}

CComPtr<IXMLDOMDocument> Loaded(const std::string& text) { return Loaded(CString(text.c_str())); }

bool IsAccepted(const CString& text) { return Load(NewDocument(), text) == S_OK; }

bool IsAccepted(const std::string& text) { return IsAccepted(CString(text.c_str())); }

CComPtr<IXMLDOMElement> RootOf(IXMLDOMDocument* document) {
  CComPtr<IXMLDOMElement> root;
  if (document->get_documentElement(&root) != S_OK) throw std::runtime_error("the document is empty");
  return root;
}

CComPtr<IXMLDOMElement> NewElement(IXMLDOMDocument* document, LPCWSTR name) {
  CComPtr<IXMLDOMElement> element;
  Require(document->createElement(CComBSTR(name), &element), "createElement");
  return element;
}

CComPtr<IXMLDOMAttribute> NewAttribute(IXMLDOMDocument* document, LPCWSTR name, LPCWSTR value) {
  CComPtr<IXMLDOMAttribute> attribute;
  Require(document->createAttribute(CComBSTR(name), &attribute), "createAttribute");
  Require(attribute->put_value(CComVariant(value)), "put_value");
  return attribute;
}

void SetAttribute(IXMLDOMDocument* document, IXMLDOMNode* element, LPCWSTR name, const CString& value) {
  CComPtr<IXMLDOMAttribute> attribute;
  Require(document->createAttribute(CComBSTR(name), &attribute), "createAttribute");
  Require(attribute->put_value(CComVariant(value)), "put_value");
  CComPtr<IXMLDOMNamedNodeMap> attributes;
  Require(element->get_attributes(&attributes), "get_attributes");
  Require(attributes->setNamedItem(attribute, nullptr), "setNamedItem");
}

CComPtr<IXMLDOMNamedNodeMap> AttributesOf(IXMLDOMNode* element) {
  CComPtr<IXMLDOMNamedNodeMap> attributes;
  if (element->get_attributes(&attributes) != S_OK) throw std::runtime_error("no attributes");
  return attributes;
}

CString Kept(const VARIANT& value) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CComPtr<IXMLDOMAttribute> attribute = NewAttribute(document, _T("a"), _T("before"));
  Require(attribute->put_value(value), "put_value");
  CComVariant kept;
  Require(attribute->get_nodeValue(&kept), "get_nodeValue");
  if (kept.vt != VT_BSTR) throw std::runtime_error("an attribute without text");
  return CString(kept.bstrVal, static_cast<int>(SysStringLen(kept.bstrVal)));
}

CString NameOf(IXMLDOMNode* node) {
  CComBSTR name;
  Require(node->get_nodeName(&name), "get_nodeName");
  return CString(name, static_cast<int>(name.Length()));
}

CString AttributeOf(IXMLDOMNode* element, LPCWSTR name) {
  CComPtr<IXMLDOMNamedNodeMap> attributes;
  Require(element->get_attributes(&attributes), "get_attributes");
  CComPtr<IXMLDOMNode> attribute;
  if (attributes->getNamedItem(CComBSTR(name), &attribute) != S_OK) return _T("(none)");
  CComVariant value;
  Require(attribute->get_nodeValue(&value), "get_nodeValue");
  return CString(value.bstrVal, static_cast<int>(SysStringLen(value.bstrVal)));
}

std::string Listing(IXMLDOMNodeList* list) {
  std::string listing;
  for (;;) {
    CComPtr<IXMLDOMNode> node;
    const HRESULT status = list->nextNode(&node);
    Require(status, "nextNode");
    if (status == S_FALSE) return listing;
    listing += platform::ToUtf8(NameOf(node)) + "(" + platform::ToUtf8(AttributeOf(node, _T("N"))) + ") ";
  }
}

std::string Selected(IXMLDOMNode* node, LPCWSTR path) {
  CComPtr<IXMLDOMNodeList> list;
  Require(node->selectNodes(CComBSTR(path), &list), "selectNodes");
  return Listing(list);
}

std::string Tagged(IXMLDOMElement* element, LPCWSTR name) {
  CComPtr<IXMLDOMNodeList> list;
  Require(element->getElementsByTagName(CComBSTR(name), &list), "getElementsByTagName");
  return Listing(list);
}

HRESULT Write(IXMLDOMDocument* document, IStream* stream, const WriterSettings& settings) {
  CComPtr<IMXWriter> writer;
  Require(writer.CoCreateInstance(CLSID_MXXMLWriter60, nullptr, CLSCTX_ALL), "the writer's creation");
  Require(writer->put_omitXMLDeclaration(settings.omitDeclaration), "put_omitXMLDeclaration");
  Require(writer->put_standalone(settings.standalone), "put_standalone");
  Require(writer->put_indent(settings.indent), "put_indent");
  Require(writer->put_encoding(CComBSTR(_T("utf-8"))), "put_encoding");
  if (stream != nullptr) Require(writer->put_output(CComVariant(static_cast<IUnknown*>(stream))), "put_output");
  CComPtr<ISAXContentHandler> handler;
  Require(platform::GetContentHandler(writer, &handler), "GetContentHandler");
  CComPtr<ISAXXMLReader> reader;
  Require(reader.CoCreateInstance(CLSID_SAXXMLReader60, nullptr, CLSCTX_ALL), "the reader's creation");
  Require(reader->putContentHandler(handler), "putContentHandler");
  return reader->parse(CComVariant(static_cast<IDispatch*>(document)));
}

std::string Written(IXMLDOMDocument* document, const WriterSettings& settings) {
  CComPtr<IStream> stream;
  Require(CreateStreamOnHGlobal(nullptr, TRUE, &stream), "CreateStreamOnHGlobal");
  Require(Write(document, stream, settings), "writing");
  return BytesOf(stream);
}

std::string BytesOf(IStream* stream) {
  LARGE_INTEGER start;
  start.QuadPart = 0;
  ULARGE_INTEGER size;
  Require(stream->Seek(start, STREAM_SEEK_END, &size), "Seek");
  HGLOBAL block = nullptr;
  Require(GetHGlobalFromStream(stream, &block), "GetHGlobalFromStream");
  std::string bytes(static_cast<const char*>(GlobalLock(block)), static_cast<std::size_t>(size.QuadPart));
  GlobalUnlock(block);
  return bytes;
}

}  // namespace ondrel::test
