// The content handler of a writer, as a reader can drive it.
//
// It passes on what a reader reports, with four exceptions:
//   - A writer may answer "not implemented" when a reader tells it where the document's lines are, and the reader then
//     stops. The handler answers that one itself: a writer has no use for lines.
//   - A reader may report white space between elements that the document does not have, and a writer that makes lines
//     of its own would then make others. It is left out.
//   - A writer may write text that no XML document can carry, and so make a file that cannot be loaded again. The
//     handler refuses it.
//   - A writer may write tabs and line ends in attributes as they are. The handler lets it write marks in their places
//     and stands a stream behind it that makes references of them: see kept_blanks.h.
#include <atomic>
#include <new>
#include <string_view>
#include <utility>

#include <ondrel/platform/com.h>
#include <ondrel/platform/xml.h>

#include "text/unicode.h"
#include "xml/kept_blanks.h"

namespace ondrel::platform {
namespace {

/// What a reader gives for an invalid character in text.
constexpr HRESULT kInvalidCharacter = static_cast<HRESULT>(0xC00CE508);

std::wstring_view Text(const WCHAR* text, int length) {
  return text == nullptr || length <= 0 ? std::wstring_view()
                                        : std::wstring_view(text, static_cast<std::size_t>(length));
}

bool IsWhiteSpace(std::wstring_view text) { return text.find_first_not_of(L" \t\r\n") == std::wstring_view::npos; }

bool IsXmlText(std::wstring_view text) {
  const WCHAR* unit = text.data();
  const WCHAR* const end = unit + text.size();
  while (unit != end) {
    if (!IsXmlCharacter(TakeUtf16(unit, end))) return false;
  }
  return true;
}

/// S_OK when every attribute has text that XML can carry.
HRESULT CheckAttributes(ISAXAttributes* attributes) {
  int count = 0;
  HRESULT status = attributes == nullptr ? S_OK : attributes->getLength(&count);
  for (int index = 0; SUCCEEDED(status) && index < count; ++index) {
    const WCHAR* value = nullptr;
    int length = 0;
    status = attributes->getValue(index, &value, &length);
    if (SUCCEEDED(status) && !IsXmlText(Text(value, length))) status = kInvalidCharacter;
  }
  return status;
}

class ForwardingHandler final : public ISAXContentHandler {
 public:
  ForwardingHandler(IMXWriter* writer, ISAXContentHandler* target) : m_writer(writer), m_target(target) {}

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
  HRESULT STDMETHODCALLTYPE startDocument() override {
    const HRESULT status = BeginMarking();
    return FAILED(status) ? status : m_target->startDocument();
  }
  HRESULT STDMETHODCALLTYPE endDocument() override {
    const HRESULT status = m_target->endDocument();
    const HRESULT ended = EndMarking();
    return FAILED(status) ? status : ended;
  }
  HRESULT STDMETHODCALLTYPE startPrefixMapping(const WCHAR* prefix, int prefixLength, const WCHAR* uri,
                                               int uriLength) override {
    return m_target->startPrefixMapping(prefix, prefixLength, uri, uriLength);
  }
  HRESULT STDMETHODCALLTYPE endPrefixMapping(const WCHAR* prefix, int prefixLength) override {
    return m_target->endPrefixMapping(prefix, prefixLength);
  }
  HRESULT STDMETHODCALLTYPE startElement(const WCHAR* uri, int uriLength, const WCHAR* localName, int localNameLength,
                                         const WCHAR* name, int nameLength, ISAXAttributes* attributes) override {
    HRESULT status = CheckAttributes(attributes);
    if (FAILED(status)) return status;
    const auto start = [&](ISAXAttributes* reported) {
      return m_target->startElement(uri, uriLength, localName, localNameLength, name, nameLength, reported);
    };
    if (m_unmarking == nullptr || attributes == nullptr) return start(attributes);
    try {
      MarkedAttributes marked(*attributes);
      status = marked.Read();
      if (FAILED(status)) return status;
      return status == S_OK ? start(&marked) : start(attributes);
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
  }
  HRESULT STDMETHODCALLTYPE endElement(const WCHAR* uri, int uriLength, const WCHAR* localName, int localNameLength,
                                       const WCHAR* name, int nameLength) override {
    return m_target->endElement(uri, uriLength, localName, localNameLength, name, nameLength);
  }
  HRESULT STDMETHODCALLTYPE characters(const WCHAR* text, int length) override {
    if (IsWhiteSpace(Text(text, length))) return S_OK;
    return IsXmlText(Text(text, length)) ? m_target->characters(text, length) : kInvalidCharacter;
  }
  HRESULT STDMETHODCALLTYPE ignorableWhitespace(const WCHAR*, int) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE processingInstruction(const WCHAR* target, int targetLength, const WCHAR* data,
                                                  int dataLength) override {
    return m_target->processingInstruction(target, targetLength, data, dataLength);
  }
  HRESULT STDMETHODCALLTYPE skippedEntity(const WCHAR* name, int nameLength) override {
    return m_target->skippedEntity(name, nameLength);
  }

 private:
  ~ForwardingHandler() = default;

  /// Stands the stream of kept_blanks.h behind a writer that writes UTF-8 to a stream.
  HRESULT BeginMarking() {
    CComBSTR encoding;
    CComVariant output;
    HRESULT status = m_writer->get_encoding(&encoding);
    if (SUCCEEDED(status)) status = m_writer->get_output(&output);
    if (FAILED(status)) return status;
    if (CompareStringOrdinal(encoding, -1, L"utf-8", -1, TRUE) != CSTR_EQUAL || output.vt != VT_UNKNOWN) return S_OK;
    CComPtr<IStream> stream;
    if (output.punkVal == nullptr ||
        FAILED(output.punkVal->QueryInterface(InterfaceId<IStream>(), reinterpret_cast<void**>(&stream)))) {
      return S_OK;
    }
    CComPtr<UnmarkingStream> unmarking;
    unmarking.Attach(new (std::nothrow) UnmarkingStream(stream));
    if (unmarking == nullptr) return E_OUTOFMEMORY;
    status = m_writer->put_output(CComVariant(static_cast<IUnknown*>(unmarking)));
    if (SUCCEEDED(status)) m_unmarking = unmarking;
    return status;
  }

  /// Gives the writer its own output back. The first failure of a write, which the writer may have passed over.
  HRESULT EndMarking() {
    if (m_unmarking == nullptr) return S_OK;
    const CComPtr<UnmarkingStream> unmarking = std::move(m_unmarking);
    const HRESULT status = m_writer->put_output(CComVariant(static_cast<IUnknown*>(unmarking->Target())));
    return FAILED(unmarking->Status()) ? unmarking->Status() : status;
  }

  CComPtr<IMXWriter> m_writer;
  CComPtr<ISAXContentHandler> m_target;
  CComPtr<UnmarkingStream> m_unmarking;  // while it is the writer's output
  std::atomic<ULONG> m_references = 1;
};

}  // namespace

HRESULT GetContentHandler(IMXWriter* writer, ISAXContentHandler** handler) {
  if (writer == nullptr || handler == nullptr) return E_POINTER;
  CComPtr<ISAXContentHandler> target;
  const HRESULT status = writer->QueryInterface(InterfaceId<ISAXContentHandler>(), reinterpret_cast<void**>(&target));
  if (FAILED(status)) return status;
  *handler = new (std::nothrow) ForwardingHandler(writer, target);
  return *handler != nullptr ? S_OK : E_OUTOFMEMORY;
}

}  // namespace ondrel::platform
