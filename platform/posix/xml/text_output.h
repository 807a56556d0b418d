// The bytes of an XML text on their way into a stream: UTF-8, escaped, in blocks.
#pragma once

#include <string>
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

  void PutAscii(std::string_view text);
  /// Text in which nothing needs to be escaped. Characters that no XML 1.0 document has fail with kInvalidCharacter.
  void PutText(std::u16string_view text);
  /// The same, with & < > " and tabs and line ends as references, so that an attribute's text comes back as it was.
  void PutAttributeText(std::u16string_view text);

  HRESULT Status() const { return m_status; }
  /// Writes what is left.
  HRESULT Flush();

 private:
  template <bool Escaped>
  void Put(std::u16string_view text);
  void WriteFullBlock();

  IStream* m_stream = nullptr;
  std::string m_block;
  HRESULT m_status = S_OK;
};

}  // namespace ondrel::platform
