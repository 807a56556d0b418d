// The attributes of a tag, by the few rules that every document keeps.
#include "start_tag.h"

#include <algorithm>

namespace ondrel::command {
namespace {

constexpr std::string_view kTagBlanks = " \t\r\n";
constexpr std::string_view kEndsOfName = " \t\r\n=/<>\"'";  // what ends a name in a tag

void SkipTagBlanks(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(kTagBlanks), rest.size()));
}

bool SkipUnit(std::string_view& rest, char expected) {
  SkipTagBlanks(rest);
  if (!rest.starts_with(expected)) return false;
  rest.remove_prefix(1);
  return true;
}

}  // namespace

bool EndsTagName(std::string_view rest) {
  return kEndsOfName.find(rest.empty() ? '>' : rest.front()) != std::string_view::npos;
}

std::optional<TagAttribute> TakeAttribute(std::string_view& rest) {
  SkipTagBlanks(rest);
  TagAttribute attribute;
  attribute.name = rest.substr(0, rest.find_first_of(kEndsOfName));
  if (attribute.name.empty()) return std::nullopt;  // the end of the tag
  rest.remove_prefix(attribute.name.size());
  if (!SkipUnit(rest, '=')) return std::nullopt;
  SkipTagBlanks(rest);
  const char quote = rest.empty() ? '\0' : rest.front();
  if (quote != '"' && quote != '\'') return std::nullopt;
  // No value has a "<". So the look at one tag never runs into the next, and no text is looked at again and again.
  const std::size_t end = rest.find_first_of(quote == '"' ? "\"<" : "'<", 1);
  if (end == std::string_view::npos || rest[end] == '<') return std::nullopt;
  attribute.value = rest.substr(1, end - 1);
  rest.remove_prefix(end + 1);
  return attribute;
}

}  // namespace ondrel::command
