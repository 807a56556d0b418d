// The XML interfaces for a system without them: the subset of ondrel/platform/xml.h.
#pragma once

#include <ondrel/platform/os/com.h>

struct IXMLDOMNamedNodeMap;
struct IXMLDOMNodeList;
struct IXMLDOMElement;
struct IXMLDOMAttribute;
struct IXMLDOMProcessingInstruction;

struct IXMLDOMNode : IDispatch {
  static constexpr IID kId{0x2933BF80, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

  virtual HRESULT STDMETHODCALLTYPE get_nodeName(BSTR* name) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_nodeValue(VARIANT* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_attributes(IXMLDOMNamedNodeMap** attributes) = 0;
  virtual HRESULT STDMETHODCALLTYPE appendChild(IXMLDOMNode* child, IXMLDOMNode** appended) = 0;
  virtual HRESULT STDMETHODCALLTYPE selectNodes(BSTR path, IXMLDOMNodeList** nodes) = 0;
  virtual HRESULT STDMETHODCALLTYPE selectSingleNode(BSTR path, IXMLDOMNode** node) = 0;

 protected:
  ~IXMLDOMNode() = default;
};

struct IXMLDOMElement : IXMLDOMNode {
  static constexpr IID kId{0x2933BF86, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

  virtual HRESULT STDMETHODCALLTYPE getElementsByTagName(BSTR name, IXMLDOMNodeList** nodes) = 0;

 protected:
  ~IXMLDOMElement() = default;
};

struct IXMLDOMAttribute : IXMLDOMNode {
  static constexpr IID kId{0x2933BF85, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

  virtual HRESULT STDMETHODCALLTYPE put_value(VARIANT value) = 0;

 protected:
  ~IXMLDOMAttribute() = default;
};

struct IXMLDOMProcessingInstruction : IXMLDOMNode {
  static constexpr IID kId{0x2933BF89, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

 protected:
  ~IXMLDOMProcessingInstruction() = default;
};

struct IXMLDOMNamedNodeMap : IDispatch {
  static constexpr IID kId{0x2933BF83, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

  virtual HRESULT STDMETHODCALLTYPE getNamedItem(BSTR name, IXMLDOMNode** item) = 0;
  virtual HRESULT STDMETHODCALLTYPE setNamedItem(IXMLDOMNode* item, IXMLDOMNode** added) = 0;

 protected:
  ~IXMLDOMNamedNodeMap() = default;
};

struct IXMLDOMNodeList : IDispatch {
  static constexpr IID kId{0x2933BF82, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

  virtual HRESULT STDMETHODCALLTYPE nextNode(IXMLDOMNode** node) = 0;

 protected:
  ~IXMLDOMNodeList() = default;
};

struct IXMLDOMDocument : IXMLDOMNode {
  static constexpr IID kId{0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

  virtual HRESULT STDMETHODCALLTYPE get_documentElement(IXMLDOMElement** element) = 0;
  virtual HRESULT STDMETHODCALLTYPE createElement(BSTR name, IXMLDOMElement** element) = 0;
  virtual HRESULT STDMETHODCALLTYPE createAttribute(BSTR name, IXMLDOMAttribute** attribute) = 0;
  virtual HRESULT STDMETHODCALLTYPE createProcessingInstruction(BSTR target, BSTR data,
                                                                IXMLDOMProcessingInstruction** instruction) = 0;
  virtual HRESULT STDMETHODCALLTYPE loadXML(BSTR text, VARIANT_BOOL* loaded) = 0;

 protected:
  ~IXMLDOMDocument() = default;
};

struct ISAXAttributes : IUnknown {
  static constexpr IID kId{0xF078ABE1, 0x45D2, 0x4832, {0x91, 0xEA, 0x44, 0x66, 0xCE, 0x2F, 0x25, 0xC9}};

  virtual HRESULT STDMETHODCALLTYPE getLength(int* length) = 0;
  virtual HRESULT STDMETHODCALLTYPE getQName(int index, const WCHAR** name, int* nameLength) = 0;
  virtual HRESULT STDMETHODCALLTYPE getValue(int index, const WCHAR** value, int* valueLength) = 0;

 protected:
  ~ISAXAttributes() = default;
};

struct ISAXContentHandler : IUnknown {
  static constexpr IID kId{0x1545CDFA, 0x9E4E, 0x4497, {0xA8, 0xA4, 0x2B, 0xF7, 0xD0, 0x11, 0x2C, 0x44}};

  virtual HRESULT STDMETHODCALLTYPE startDocument() = 0;
  virtual HRESULT STDMETHODCALLTYPE endDocument() = 0;
  virtual HRESULT STDMETHODCALLTYPE startElement(const WCHAR* namespaceUri, int namespaceUriLength,
                                                 const WCHAR* localName, int localNameLength, const WCHAR* qName,
                                                 int qNameLength, ISAXAttributes* attributes) = 0;
  virtual HRESULT STDMETHODCALLTYPE endElement(const WCHAR* namespaceUri, int namespaceUriLength,
                                               const WCHAR* localName, int localNameLength, const WCHAR* qName,
                                               int qNameLength) = 0;
  virtual HRESULT STDMETHODCALLTYPE processingInstruction(const WCHAR* target, int targetLength, const WCHAR* data,
                                                          int dataLength) = 0;

 protected:
  ~ISAXContentHandler() = default;
};

struct ISAXXMLReader : IUnknown {
  static constexpr IID kId{0xA4F96ED0, 0xF829, 0x476E, {0x81, 0xC0, 0xCD, 0xC7, 0xBD, 0x2A, 0x08, 0x02}};

  virtual HRESULT STDMETHODCALLTYPE putContentHandler(ISAXContentHandler* handler) = 0;
  virtual HRESULT STDMETHODCALLTYPE parse(VARIANT input) = 0;

 protected:
  ~ISAXXMLReader() = default;
};

struct IMXWriter : IDispatch {
  static constexpr IID kId{0x4D7FF4BA, 0x1565, 0x4EA8, {0x94, 0xE1, 0x6E, 0x72, 0x4A, 0x46, 0xF9, 0x8D}};

  virtual HRESULT STDMETHODCALLTYPE put_omitXMLDeclaration(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_standalone(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_indent(VARIANT_BOOL value) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_encoding(BSTR encoding) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_output(VARIANT destination) = 0;

 protected:
  ~IMXWriter() = default;
};

inline constexpr CLSID CLSID_DOMDocument{0xF6D90F11, 0x9C73, 0x11D3, {0xB3, 0x2E, 0x00, 0xC0, 0x4F, 0x99, 0x0B, 0xB4}};
inline constexpr CLSID CLSID_MXXMLWriter60{
    0x88D96A0F, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};
inline constexpr CLSID CLSID_SAXXMLReader60{
    0x88D96A0C, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};

namespace ondrel::platform {

ONDREL_OS_EXPORT HRESULT CreateDocument(IXMLDOMDocument** document);
ONDREL_OS_EXPORT HRESULT LoadDocument(IXMLDOMDocument* document, BSTR text, VARIANT_BOOL* loaded);
ONDREL_OS_EXPORT HRESULT GetContentHandler(IMXWriter* writer, ISAXContentHandler** handler);

}  // namespace ondrel::platform
