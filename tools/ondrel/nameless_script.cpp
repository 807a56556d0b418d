// The look at each start tag of that name. Whatever is not as simple as programs write it counts as a doubt.
#include "nameless_script.h"

#include <algorithm>

namespace ondrel::command {
namespace {

constexpr std::string_view kScriptTag = "<Script";
constexpr std::string_view kFileAttribute = "File";
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

/// `rest` begins behind the element's name.
bool HasFile(std::string_view rest) {
  for (;;) {
    SkipTagBlanks(rest);
    const std::string_view name = rest.substr(0, rest.find_first_of(kEndsOfName));
    if (name.empty()) return false;  // the end of the tag
    rest.remove_prefix(name.size());
    if (!SkipUnit(rest, '=')) return false;
    SkipTagBlanks(rest);
    const char quote = rest.empty() ? '\0' : rest.front();
    if (quote != '"' && quote != '\'') return false;
    // No value has a "<". So the look at one tag never runs into the next, and no text is looked at again and again.
    const std::size_t end = rest.find_first_of(quote == '"' ? "\"<" : "'<", 1);
    if (end == std::string_view::npos || rest[end] == '<') return false;
    if (name == kFileAttribute) return true;
    rest.remove_prefix(end + 1);
  }
}

}  // namespace

bool NamesFileOfEveryScript(std::string_view text) {
  // A document type may declare entities, and elements in them stand in the text in another form.
  if (text.find("<!DOCTYPE") != std::string_view::npos) return false;
  for (std::size_t tag = text.find(kScriptTag); tag != std::string_view::npos;
       tag = text.find(kScriptTag, tag + kScriptTag.size())) {
    const std::string_view rest = text.substr(tag + kScriptTag.size());
    const bool isWholeName = kEndsOfName.find(rest.empty() ? '>' : rest.front()) != std::string_view::npos;
    if (isWholeName && !HasFile(rest)) return false;
  }
  return true;
}

}  // namespace ondrel::command
