// The content handler of a writer, as a reader can drive it.
//
// A writer may answer "not implemented" when a reader tells it where the document's lines are, and the reader then
// stops. The handler here passes every call on and answers that one itself: a writer has no use for lines.
#include <atomic>
#include <new>

#include <ondrel/platform/com.h>
#include <ondrel/platform/xml.h>

namespace ondrel::platform {
namespace {

class ForwardingHandler final : public ISAXContentHandler {
 public:
  explicit ForwardingHandler(ISAXContentHandler* target) : m_target(target) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool known = id == InterfaceId<ISAXContentHandler>() || id == InterfaceId<IUnknown>();
    *object = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --m_references;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE putDocumentLocator(ISAXLocator*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE startDocument() override { return m_target->startDocument(); }
  HRESULT STDMETHODCALLTYPE endDocument() override { return m_target->endDocument(); }
  HRESULT STDMETHODCALLTYPE startPrefixMapping(const WCHAR* prefix, int prefixLength, const WCHAR* uri,
                                               int uriLength) override {
    return m_target->startPrefixMapping(prefix, prefixLength, uri, uriLength);
  }
  HRESULT STDMETHODCALLTYPE endPrefixMapping(const WCHAR* prefix, int prefixLength) override {
    return m_target->endPrefixMapping(prefix, prefixLength);
  }
  HRESULT STDMETHODCALLTYPE startElement(const WCHAR* uri, int uriLength, const WCHAR* localName, int localNameLength,
                                         const WCHAR* name, int nameLength, ISAXAttributes* attributes) override {
    return m_target->startElement(uri, uriLength, localName, localNameLength, name, nameLength, attributes);
  }
  HRESULT STDMETHODCALLTYPE endElement(const WCHAR* uri, int uriLength, const WCHAR* localName, int localNameLength,
                                       const WCHAR* name, int nameLength) override {
    return m_target->endElement(uri, uriLength, localName, localNameLength, name, nameLength);
  }
  HRESULT STDMETHODCALLTYPE characters(const WCHAR* text, int length) override {
    return m_target->characters(text, length);
  }
  HRESULT STDMETHODCALLTYPE ignorableWhitespace(const WCHAR* text, int length) override {
    return m_target->ignorableWhitespace(text, length);
  }
  HRESULT STDMETHODCALLTYPE processingInstruction(const WCHAR* target, int targetLength, const WCHAR* data,
                                                  int dataLength) override {
    return m_target->processingInstruction(target, targetLength, data, dataLength);
  }
  HRESULT STDMETHODCALLTYPE skippedEntity(const WCHAR* name, int nameLength) override {
    return m_target->skippedEntity(name, nameLength);
  }

 private:
  ~ForwardingHandler() = default;

  CComPtr<ISAXContentHandler> m_target;
  std::atomic<ULONG> m_references = 1;
};

}  // namespace

HRESULT GetContentHandler(IMXWriter* writer, ISAXContentHandler** handler) {
  if (writer == nullptr || handler == nullptr) return E_POINTER;
  CComPtr<ISAXContentHandler> target;
  const HRESULT status = writer->QueryInterface(InterfaceId<ISAXContentHandler>(), reinterpret_cast<void**>(&target));
  if (FAILED(status)) return status;
  *handler = new (std::nothrow) ForwardingHandler(target);
  return *handler != nullptr ? S_OK : E_OUTOFMEMORY;
}

}  // namespace ondrel::platform
