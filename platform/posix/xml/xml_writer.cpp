// The writer: makes indented UTF-8 text of what is reported to it.

#include <algorithm>
#include <string>
#include <string_view>
#include <type_traits>

#include <ondrel/platform/xml.h>

#include "xml/classes.h"
#include "xml/dom_node.h"
#include "xml/text_output.h"

namespace ondrel::platform {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::u16string_view kUtf8Name = u"utf-8";

// A chain of a million elements would take a million tabs for its innermost ones, and so more room than any disk has.
// Beyond this depth no one reads the indentation; the lines stay.
constexpr std::size_t kMostTabs = 64;
constexpr std::string_view kTabs =
    "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t"
    "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";
static_assert(kTabs.size() == kMostTabs);

bool IsUtf8Name(std::u16string_view encoding) {
  return std::equal(encoding.begin(), encoding.end(), kUtf8Name.begin(), kUtf8Name.end(),
                    [](char16_t given, char16_t expected) {
                      return given == expected || (given >= 'A' && given <= 'Z' && given - 'A' + 'a' == expected);
                    });
}

std::u16string_view Text(const WCHAR* text, int length) {
  return text == nullptr || length <= 0 ? std::u16string_view()
                                        : std::u16string_view(text, static_cast<unsigned>(length));
}

class XmlWriter final : public IMXWriter, public ISAXContentHandler {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    return FindInterface<IMXWriter, IDispatch, ISAXContentHandler>(*this, id, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return m_references.Increment(); }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG count = m_references.Decrement();
    if (count == 0) delete this;
    return count;
  }

  HRESULT STDMETHODCALLTYPE put_omitXMLDeclaration(VARIANT_BOOL value) override {
    m_omitDeclaration = value != VARIANT_FALSE;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE put_standalone(VARIANT_BOOL value) override {
    m_standalone = value != VARIANT_FALSE;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE put_indent(VARIANT_BOOL value) override {
    m_indent = value != VARIANT_FALSE;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE put_encoding(BSTR encoding) override {
    return IsUtf8Name(TextOf(encoding)) ? S_OK : E_INVALIDARG;
  }
  HRESULT STDMETHODCALLTYPE put_output(VARIANT destination) override {
    if (destination.vt == VT_EMPTY) {
      m_output.SetStream(nullptr);
      return S_OK;
    }
    if (destination.vt != VT_UNKNOWN || destination.punkVal == nullptr) return E_INVALIDARG;
    void* stream = nullptr;
    if (FAILED(destination.punkVal->QueryInterface(IStream::kId, &stream))) return E_INVALIDARG;
    m_output.SetStream(static_cast<IStream*>(stream));
    static_cast<IStream*>(stream)->Release();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE startDocument() override {
    return Write([&] {
      m_output.Start();
      m_depth = 0;
      m_isTagOpen = false;
      if (m_omitDeclaration) return;
      m_output.PutAscii("<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"");
      m_output.PutAscii(m_standalone ? "yes\"?>" : "no\"?>");
      EndLine();
    });
  }

  HRESULT STDMETHODCALLTYPE endDocument() override {
    return WithStatus([&] { return m_output.Flush(); });
  }

  HRESULT STDMETHODCALLTYPE startElement(const WCHAR*, int, const WCHAR*, int, const WCHAR* name, int nameLength,
                                         ISAXAttributes* attributes) override {
    return Write([&] {
      CloseStartTag();
      Indent();
      m_output.PutAscii("<");
      m_output.PutText(Text(name, nameLength));
      if (const HRESULT status = PutAttributes(attributes); FAILED(status)) return status;
      m_isTagOpen = true;
      ++m_depth;
      return S_OK;
    });
  }

  HRESULT STDMETHODCALLTYPE endElement(const WCHAR*, int, const WCHAR*, int, const WCHAR* name,
                                       int nameLength) override {
    return Write([&] {
      if (m_depth > 0) --m_depth;
      if (m_isTagOpen) {
        m_output.PutAscii("/>");
        m_isTagOpen = false;
      } else {
        Indent();
        m_output.PutAscii("</");
        m_output.PutText(Text(name, nameLength));
        m_output.PutAscii(">");
      }
      EndLine();
    });
  }

  HRESULT STDMETHODCALLTYPE processingInstruction(const WCHAR* target, int targetLength, const WCHAR* data,
                                                  int dataLength) override {
    if (Text(data, dataLength).find(kEndOfInstruction) != std::u16string_view::npos) return kInvalidInstruction;
    return Write([&] {
      CloseStartTag();
      Indent();
      m_output.PutAscii("<?");
      m_output.PutText(Text(target, targetLength));
      if (dataLength > 0) m_output.PutAscii(" ");
      m_output.PutText(Text(data, dataLength));
      m_output.PutAscii("?>");
      EndLine();
    });
  }

 private:
  ~XmlWriter() = default;

  // Does one event's writing; the result is the first failure so far.
  template <class Writing>
  HRESULT Write(Writing&& writing) {
    return WithStatus([&]() -> HRESULT {
      if constexpr (std::is_void_v<decltype(writing())>) {
        writing();
      } else if (const HRESULT status = writing(); FAILED(status)) {
        return status;
      }
      return m_output.Status();
    });
  }

  HRESULT PutAttributes(ISAXAttributes* attributes) {
    int count = 0;
    if (attributes == nullptr) return S_OK;
    HRESULT status = attributes->getLength(&count);
    for (int index = 0; SUCCEEDED(status) && index < count; ++index) {
      const WCHAR* name = nullptr;
      const WCHAR* value = nullptr;
      int nameLength = 0;
      int valueLength = 0;
      status = attributes->getQName(index, &name, &nameLength);
      if (SUCCEEDED(status)) status = attributes->getValue(index, &value, &valueLength);
      if (FAILED(status)) break;
      m_output.PutAscii(" ");
      m_output.PutText(Text(name, nameLength));
      m_output.PutAscii("=\"");
      m_output.PutAttributeText(Text(value, valueLength));
      m_output.PutAscii("\"");
    }
    return status;
  }

  // An element's tag stays open until it is known whether anything stands in it.
  void CloseStartTag() {
    if (!m_isTagOpen) return;
    m_isTagOpen = false;
    m_output.PutAscii(">");
    EndLine();
  }

  void Indent() {
    if (m_indent) m_output.PutAscii(kTabs.substr(0, m_depth));
  }

  void EndLine() {
    if (m_indent) m_output.PutAscii(kLineEnd);
  }

  ReferenceCount m_references;
  TextOutput m_output;
  std::size_t m_depth = 0;
  bool m_isTagOpen = false;
  bool m_omitDeclaration = false;
  bool m_standalone = false;
  bool m_indent = false;
};

}  // namespace

HRESULT CreateXmlWriter(REFIID id, void** object) {
  return WithStatus([&] { return GiveNew(new XmlWriter, id, object); });
}

HRESULT GetContentHandler(IMXWriter* writer, ISAXContentHandler** handler) {
  if (writer == nullptr || handler == nullptr) return E_POINTER;
  return writer->QueryInterface(ISAXContentHandler::kId, reinterpret_cast<void**>(handler));
}

}  // namespace ondrel::platform
