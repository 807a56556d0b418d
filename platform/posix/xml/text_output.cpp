// The bytes of an XML text on their way into a stream.

#include "xml/text_output.h"

#include <utility>

#include "text/unicode.h"
#include "xml/statuses.h"

namespace ondrel::platform {

namespace {

// Large enough that the stream is rarely called, small enough that a large document is not held twice.
constexpr std::size_t kBlockSize = std::size_t{64} * 1024;

std::string_view ReferenceFor(char32_t character) {
  switch (character) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\t':
      return "&#9;";
    case '\n':
      return "&#10;";
    case '\r':
      return "&#13;";
    default:
      return {};
  }
}

}  // namespace

void TextOutput::SetStream(IStream* stream) {
  if (stream != nullptr) stream->AddRef();
  if (IStream* const old = std::exchange(m_stream, stream); old != nullptr) old->Release();
}

void TextOutput::Start() {
  m_block.clear();
  m_status = m_stream == nullptr ? kNoOutput : S_OK;
}

void TextOutput::PutAscii(std::string_view text) {
  if (FAILED(m_status)) return;
  m_block += text;
  WriteFullBlock();
}

void TextOutput::PutText(std::u16string_view text) { Put<false>(text); }

void TextOutput::PutAttributeText(std::u16string_view text) { Put<true>(text); }

template <bool Escaped>
void TextOutput::Put(std::u16string_view text) {
  const char16_t* unit = text.data();
  const char16_t* const end = unit + text.size();
  while (unit != end && SUCCEEDED(m_status)) {
    const char32_t character = TakeUtf16(unit, end);
    if (!IsXmlCharacter(character)) {
      m_status = kInvalidCharacter;
      return;
    }
    if (Escaped) {
      if (const std::string_view reference = ReferenceFor(character); !reference.empty()) {
        m_block += reference;
        continue;
      }
    }
    char bytes[4];
    m_block.append(bytes, PutUtf8(character, bytes));
    WriteFullBlock();
  }
}

void TextOutput::WriteFullBlock() {
  if (m_block.size() >= kBlockSize) Flush();
}

HRESULT TextOutput::Flush() {
  if (FAILED(m_status) || m_block.empty()) return m_status;
  ULONG written = 0;
  m_status = m_stream->Write(m_block.data(), static_cast<ULONG>(m_block.size()), &written);
  if (SUCCEEDED(m_status) && written != m_block.size()) m_status = STG_E_MEDIUMFULL;
  m_block.clear();
  return m_status;
}

}  // namespace ondrel::platform
