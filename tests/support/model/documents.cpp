#include "support/model/documents.h"

#include <stdexcept>

#include <ondrel/platform/framework.h>

#include "os/whole_interfaces.h"

namespace ondrel::test {
namespace {

CString FromUtf8(std::string_view text) {
  const int size = static_cast<int>(text.size());
  if (size == 0) return {};
  std::basic_string<WCHAR> wide(text.size(), WCHAR{});
  const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size);
  if (length == 0) throw std::invalid_argument("no UTF-8: " + std::string(text));
  wide.resize(static_cast<std::size_t>(length));
  return CString(std::move(wide));
}

/// Writes what a reader reports.
class Teller final : public Whole<ISAXContentHandler> {
 public:
  std::string text;

  // It lives on the stack of its user, longer than the reader.
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == platform::InterfaceId<ISAXContentHandler>() || id == platform::InterfaceId<IUnknown>();
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }

  HRESULT STDMETHODCALLTYPE startDocument() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE endDocument() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE processingInstruction(const WCHAR*, int, const WCHAR*, int) override { return S_OK; }

  HRESULT STDMETHODCALLTYPE startElement(const WCHAR*, int, const WCHAR*, int, const WCHAR* name, int nameLength,
                                         ISAXAttributes* attributes) override {
    EndStartTag();
    text += "<" + platform::ToUtf8(CString(name, nameLength));
    int count = 0;
    HRESULT status = attributes->getLength(&count);
    for (int index = 0; SUCCEEDED(status) && index < count; ++index) {
      const WCHAR* part = nullptr;
      int length = 0;
      status = attributes->getQName(index, &part, &length);
      if (FAILED(status)) break;
      text += " " + platform::ToUtf8(CString(part, length)) + "=\"";
      status = attributes->getValue(index, &part, &length);
      if (FAILED(status)) break;
      AppendValue(platform::ToUtf8(CString(part, length)));
      text += '"';
    }
    m_inStartTag = true;
    return status;
  }

  HRESULT STDMETHODCALLTYPE endElement(const WCHAR*, int, const WCHAR*, int, const WCHAR* name,
                                       int nameLength) override {
    if (m_inStartTag) {
      text += "/>";
      m_inStartTag = false;
    } else {
      text += "</" + platform::ToUtf8(CString(name, nameLength)) + ">";
    }
    return S_OK;
  }

 private:
  void EndStartTag() {
    if (m_inStartTag) text += ">";
    m_inStartTag = false;
  }
  void AppendValue(std::string_view value) {
    for (const char unit : value) {
      switch (unit) {
        case '&':
          text += "&amp;";
          break;
        case '<':
          text += "&lt;";
          break;
        case '"':
          text += "&quot;";
          break;
        default:
          text += unit;
      }
    }
  }

  bool m_inStartTag = false;
};

}  // namespace

CComPtr<IXMLDOMDocument> NewDocument() {
  CComPtr<IXMLDOMDocument> document;
  AtlThrowIfFailed(document.CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_INPROC_SERVER));
  return document;
}

CComPtr<IXMLDOMDocument> ParseDocument(std::string_view text) {
  CComPtr<IXMLDOMDocument> document = NewDocument();
  VARIANT_BOOL loaded = VARIANT_FALSE;
  const HRESULT status = document->loadXML(CComBSTR(FromUtf8(text)), &loaded);
  if (status != S_OK || loaded != VARIANT_TRUE) throw std::invalid_argument("not well-formed: " + std::string(text));
  return document;
}

CComPtr<IXMLDOMElement> RootOf(IXMLDOMDocument* document) {
  CComPtr<IXMLDOMElement> root;
  if (document->get_documentElement(&root) != S_OK) throw std::logic_error("the document has no element");
  return root;
}

CComPtr<IXMLDOMElement> AddRoot(IXMLDOMDocument* document, LPCWSTR name) {
  CComPtr<IXMLDOMElement> root;
  AtlThrowIfFailed(document->createElement(CComBSTR(name), &root));
  AtlThrowIfFailed(document->appendChild(root, nullptr));
  return root;
}

CComPtr<IXMLDOMNodeList> Select(IXMLDOMNode* node, LPCWSTR path) {
  CComPtr<IXMLDOMNodeList> nodes;
  AtlThrowIfFailed(node->selectNodes(CComBSTR(path), &nodes));
  return nodes;
}

std::string XmlOf(IXMLDOMDocument* document) {
  Teller teller;
  CComPtr<ISAXXMLReader> reader;
  AtlThrowIfFailed(reader.CoCreateInstance(CLSID_SAXXMLReader60, nullptr, CLSCTX_ALL));
  AtlThrowIfFailed(reader->putContentHandler(&teller));
  AtlThrowIfFailed(reader->parse(CComVariant(static_cast<IDispatch*>(document))));
  return teller.text;
}

}  // namespace ondrel::test
