// Contract: the values of XML text in ASCII alone, for tools that hand text to readers of another code page.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ondrel::platform {

/// UTF-8 text of an XML document in which every character beyond ASCII in a value (of an attribute or of an entity) is
/// written as a character reference: a reader gets the same values, whatever code page it reads the text with.
/// Everything else stays as it is, byte by byte: names, comments, other text, and bytes that are no UTF-8; so do lines.
/// None when the text is ASCII alone, and so may stay as it is.
std::optional<std::string> ReferenceValues(std::string_view text);

/// The bytes of a text that are no UTF-8.
struct StrayBytes {
  std::size_t count = 0;
  std::size_t first = 0;  ///< The offset of the first; nothing where there is none.
};
StrayBytes FindStrayBytes(std::string_view text);

}  // namespace ondrel::platform
