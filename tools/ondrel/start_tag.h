// The attributes of a start tag, taken off the text of a document one by one.
#pragma once

#include <optional>
#include <string_view>

namespace ondrel::command {

struct TagAttribute {
  std::string_view name;
  std::string_view value;  ///< As it stands between its quotation marks.
};

/// Whether an element's name ends where `rest` begins.
bool EndsTagName(std::string_view rest);

/// Takes the next attribute off `rest`, which begins behind the element's name or an attribute. None at the end of the
/// tag, and where it is not as simple as programs write it.
std::optional<TagAttribute> TakeAttribute(std::string_view& rest);

}  // namespace ondrel::command
