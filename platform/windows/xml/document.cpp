// Documents that open nothing outside themselves and do not grow without bound.
#include <algorithm>
#include <limits>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <ondrel/platform/com.h>
#include <ondrel/platform/xml.h>

#include "text/xml_text_parser.h"

namespace ondrel::platform {
namespace {

class NoSink final : public XmlElementSink {
 public:
  void OnStartElement(std::string_view, std::span<const Attribute>) override {}
  void OnEndElement(std::string_view) override {}
};

// What stands behind the declaration of a well-formed text, and behind what may stand before it.
std::wstring_view WithoutDeclaration(std::wstring_view text) {
  constexpr std::wstring_view kBlanks = L" \t\r\n";
  constexpr std::wstring_view kStart = L"<?xml";
  constexpr std::wstring_view kEnd = L"?>";
  if (text.starts_with(L'\xFEFF')) text.remove_prefix(1);
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  const bool isDeclared = text.starts_with(kStart) && text.find_first_of(kBlanks) == kStart.size();
  if (isDeclared) text.remove_prefix(text.find(kEnd) + kEnd.size());
  return text;
}

std::string ReadAll(const NarrowTextReader& read) {
  constexpr std::size_t kFirstBlock = std::size_t{1} << 20;
  std::string text;
  for (std::size_t missing = 0; missing == 0;) {
    const std::size_t done = text.size();
    text.resize(done + std::max(done, kFirstBlock));
    const std::size_t size = read(text.data() + done, text.size() - done);
    missing = text.size() - done - size;
    text.resize(done + size);
  }
  return text;
}

/// The text by the narrow code page; null when it cannot be had.
CComBSTR Widen(const std::string& text) {
  CComBSTR wide;
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return wide;
  const int length = static_cast<int>(text.size());
  // The system refuses to convert nothing.
  const int measured = length == 0 ? 0 : MultiByteToWideChar(CP_THREAD_ACP, 0, text.data(), length, nullptr, 0);
  if (length > 0 && measured == 0) return wide;
  wide.m_str = SysAllocStringLen(nullptr, static_cast<UINT>(measured));
  const bool isConverted = length == 0 || wide.m_str == nullptr ||
                           MultiByteToWideChar(CP_THREAD_ACP, 0, text.data(), length, wide, measured) == measured;
  return isConverted ? std::move(wide) : CComBSTR();
}

}  // namespace

HRESULT CreateDocument(IXMLDOMDocument** document) {
  CComPtr<IXMLDOMDocument> created;
  HRESULT status = created.CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_INPROC_SERVER);
  // This version of the document would fetch what the text of a stranger names.
  if (SUCCEEDED(status)) status = created->put_resolveExternals(VARIANT_FALSE);
  // And it would refuse a text that declares an entity but not its elements.
  if (SUCCEEDED(status)) status = created->put_validateOnParse(VARIANT_FALSE);
  if (SUCCEEDED(status)) *document = created.Detach();
  return status;
}

HRESULT FindDigits(IXMLDOMNamedNodeMap*, BSTR, LONGLONG&) { return S_FALSE; }
HRESULT FindAscii(IXMLDOMNamedNodeMap*, BSTR, CString&) { return S_FALSE; }
HRESULT AddNumber(IXMLDOMNamedNodeMap*, BSTR, LONGLONG) { return S_FALSE; }
HRESULT AddText(IXMLDOMNamedNodeMap*, BSTR, const CString&) { return S_FALSE; }

HRESULT LoadDocument(IXMLDOMDocument* document, BSTR text, VARIANT_BOOL* loaded) {
  if (document == nullptr || loaded == nullptr) return E_INVALIDARG;
  *loaded = VARIANT_FALSE;
  const std::wstring_view view(text == nullptr ? L"" : text, SysStringLen(text));
  // The system's parser has no bound for what entities expand to, and goes on past an entity that it may not open. So
  // the text passes the parser that loads it off Windows first.
  try {
    NoSink sink;
    XmlTextFault fault;
    if (!XmlTextParser(sink, XmlLayout::dropped).Parse(view, fault)) return S_FALSE;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  // The system's parser minds the encoding that a text declares, which wide text does not have, and blanks before the
  // declaration.
  const std::wstring_view content = WithoutDeclaration(view);
  if (content.size() == view.size()) return document->loadXML(text, loaded);
  CComBSTR copy;
  copy.m_str = SysAllocStringLen(content.data(), static_cast<UINT>(content.size()));
  return copy.m_str != nullptr ? document->loadXML(copy, loaded) : E_OUTOFMEMORY;
}

HRESULT LoadNarrowDocument(IXMLDOMDocument* document, const NarrowTextReader& read, VARIANT_BOOL* loaded) {
  if (document == nullptr || loaded == nullptr) return E_INVALIDARG;
  *loaded = VARIANT_FALSE;
  try {
    const CComBSTR text = Widen(ReadAll(read));
    return text.m_str != nullptr ? LoadDocument(document, text, loaded) : E_OUTOFMEMORY;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace ondrel::platform
