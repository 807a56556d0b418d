// The bytes of an XML text on their way into a stream.

#include "xml/text_output.h"

#include <algorithm>
#include <array>
#include <cstring>
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

/// Whether a byte of kept text is a character that stands for itself, in attributes too.
constexpr std::array<bool, 256> kIsPlain = [] {
  std::array<bool, 256> plain{};
  for (int byte = ' '; byte < 0x80; ++byte) plain[static_cast<std::size_t>(byte)] = true;
  for (const unsigned char escaped : {'&', '<', '>', '"'}) plain[escaped] = false;
  return plain;
}();

}  // namespace

void TextOutput::SetStream(IStream* stream) {
  if (stream != nullptr) stream->AddRef();
  if (IStream* const old = std::exchange(m_stream, stream); old != nullptr) old->Release();
}

void TextOutput::Start() {
  m_next = m_end = nullptr;
  m_status = m_stream == nullptr ? kNoOutput : S_OK;
}

void TextOutput::Fail(HRESULT status) {
  m_status = status;
  m_next = m_end = nullptr;
}

void TextOutput::PutInParts(std::string_view bytes) {
  while (SUCCEEDED(m_status) && !bytes.empty()) {
    if (m_next == m_end && FAILED(Flush())) return;
    if (m_block == nullptr) m_block = std::make_unique_for_overwrite<char[]>(kBlockSize);
    if (m_next == nullptr) {
      m_next = m_block.get();
      m_end = m_next + kBlockSize;
    }
    const std::size_t count = std::min(bytes.size(), static_cast<std::size_t>(m_end - m_next));
    std::memcpy(m_next, bytes.data(), count);
    m_next += count;
    bytes.remove_prefix(count);
  }
}

template <bool Escaped>
void TextOutput::PutChecked(std::string_view kept) {
  const char* byte = kept.data();
  const char* const end = byte + kept.size();
  while (SUCCEEDED(m_status)) {
    const char* const start = byte;
    while (byte != end && kIsPlain[static_cast<unsigned char>(*byte)]) ++byte;
    Put({start, byte});
    if (byte == end) return;
    const char* const special = byte;
    const char32_t character = TakeUtf8(byte, end, true).character;
    if (!IsXmlCharacter(character)) {
      if (SUCCEEDED(m_status)) Fail(kInvalidCharacter);
      return;
    }
    const std::string_view reference = Escaped ? ReferenceFor(character) : std::string_view();
    Put(reference.empty() ? std::string_view(special, byte) : reference);
  }
}

template void TextOutput::PutChecked<false>(std::string_view kept);
template void TextOutput::PutChecked<true>(std::string_view kept);

void TextOutput::Check(std::string_view kept) {
  const char* byte = kept.data();
  const char* const end = byte + kept.size();
  while (byte != end && SUCCEEDED(m_status)) {
    if (!IsXmlCharacter(TakeUtf8(byte, end, true).character)) Fail(kInvalidCharacter);
  }
}

HRESULT TextOutput::Flush() {
  if (SUCCEEDED(m_status) && m_stream == nullptr) Fail(kNoOutput);
  if (FAILED(m_status) || m_next == nullptr) return m_status;
  ULONG written = 0;
  const auto count = static_cast<ULONG>(m_next - m_block.get());
  m_next = m_end = nullptr;
  const HRESULT status = m_stream->Write(m_block.get(), count, &written);
  if (FAILED(status)) {
    Fail(status);
  } else if (written != count) {
    Fail(STG_E_MEDIUMFULL);
  }
  return m_status;
}

}  // namespace ondrel::platform
