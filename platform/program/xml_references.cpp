// A scan of XML markup that goes no deeper than to know where values stand.
#include <ondrel/platform/xml_references.h>

#include <algorithm>
#include <utility>

#include "text/unicode.h"

namespace ondrel::platform {
namespace {

/// Markup that ends with a string of its own and holds no values.
struct Passage {
  std::string_view start;
  std::string_view end;
};
constexpr Passage kPassages[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};

class ReferenceWriter {
 public:
  explicit ReferenceWriter(std::string_view text) : m_rest(text) { m_out.reserve(text.size() + text.size() / 8); }

  std::string Text() && {
    while (!m_rest.empty()) {
      Copy(m_rest.find('<'));
      CopyMarkup();
    }
    return std::move(m_out);
  }

 private:
  void Copy(std::size_t length) {
    m_out += m_rest.substr(0, length);
    m_rest.remove_prefix(std::min(length, m_rest.size()));
  }

  /// The markup that begins here, up to its end or that of the text. A document type ends where its declarations begin:
  /// each of them is markup like any other.
  void CopyMarkup() {
    for (const Passage& passage : kPassages) {
      if (!m_rest.starts_with(passage.start)) continue;
      const std::size_t end = m_rest.find(passage.end, passage.start.size());
      return Copy(end == std::string_view::npos ? end : end + passage.end.size());
    }
    while (!m_rest.empty()) {
      Copy(m_rest.find_first_of("\"'>["));
      if (m_rest.empty()) return;
      const char unit = m_rest.front();
      Copy(1);
      if (unit == '>' || unit == '[') return;
      CopyValue(m_rest.substr(0, m_rest.find(unit)));
      Copy(1);
    }
  }

  void CopyValue(std::string_view value) {
    m_rest.remove_prefix(value.size());
    const char* next = value.data();
    const char* const end = next + value.size();
    while (next != end) {
      const char* const start = next;
      const Utf8Character taken = TakeUtf8(next, end);
      if (taken.valid && taken.character >= 0x80) {
        m_out += "&#" + std::to_string(static_cast<unsigned long>(taken.character)) + ';';
      } else {
        m_out.append(start, next);
      }
    }
  }

  std::string_view m_rest;
  std::string m_out;
};

}  // namespace

std::optional<std::string> ReferenceValues(std::string_view text) {
  const auto isBeyondAscii = [](char byte) { return (byte & 0x80) != 0; };
  if (std::none_of(text.begin(), text.end(), isBeyondAscii)) return std::nullopt;
  return ReferenceWriter(text).Text();
}

StrayBytes FindStrayBytes(std::string_view text) {
  StrayBytes stray;
  const char* next = text.data();
  const char* const end = next + text.size();
  while (next != end) {
    const char* const start = next;
    if (TakeUtf8(next, end).valid) continue;
    if (stray.count == 0) stray.first = static_cast<std::size_t>(start - text.data());
    stray.count += static_cast<std::size_t>(next - start);
  }
  return stray;
}

}  // namespace ondrel::platform
