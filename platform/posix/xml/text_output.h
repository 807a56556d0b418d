// The bytes of an XML text on their way into a stream: UTF-8, escaped, in blocks.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

#include <ondrel/platform/os/com.h>

namespace ondrel::platform {

/// Collects text and writes it to a stream block by block. The first failure stays: everything after it does nothing,
/// and Flush tells it. Raises std::bad_alloc.
class TextOutput {
 public:
  TextOutput() = default;
  ~TextOutput() { SetStream(nullptr); }
  TextOutput(const TextOutput&) = delete;
  TextOutput& operator=(const TextOutput&) = delete;

  /// Holds a reference to `stream`, which may be null.
  void SetStream(IStream* stream);

  /// Forgets what was not written and the failure.
  void Start();

  /// Bytes as they are.
  void Put(std::string_view bytes) {
    if (static_cast<std::size_t>(m_end - m_next) < bytes.size()) return PutInParts(bytes);
    m_next = std::copy(bytes.begin(), bytes.end(), m_next);
  }
  /// Kept text (see kept_text.h) in which nothing needs to be escaped. Characters that no XML 1.0 document has fail
  /// with kInvalidCharacter.
  void PutText(std::string_view kept) { PutChecked<false>(kept); }
  /// The same, with & < > " and tabs and line ends as references, so that an attribute's text comes back as it was.
  void PutAttributeText(std::string_view kept) { PutChecked<true>(kept); }
  /// Fails as PutText does; puts nothing.
  void Check(std::string_view kept);

  HRESULT Status() const { return m_status; }
  /// Writes what is left.
  HRESULT Flush();

 private:
  void PutInParts(std::string_view bytes);
  template <bool Escaped>
  void PutChecked(std::string_view kept);
  void Fail(HRESULT status);

  IStream* m_stream = nullptr;
  std::unique_ptr<char[]> m_block;
  // The room that is left in the block; none before the first byte and after a failure.
  char* m_next = nullptr;
  char* m_end = nullptr;
  HRESULT m_status = S_OK;
};

}  // namespace ondrel::platform
