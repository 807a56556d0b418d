// The look at each start tag of that name. Whatever is not as simple as programs write it counts as a doubt.
#include "nameless_script.h"

#include "start_tag.h"

namespace ondrel::command {
namespace {

constexpr std::string_view kScriptTag = "<Script";
constexpr std::string_view kFileAttribute = "File";

/// `rest` begins behind the element's name.
bool HasFile(std::string_view rest) {
  while (const auto attribute = TakeAttribute(rest)) {
    if (attribute->name == kFileAttribute) return true;
  }
  return false;
}

}  // namespace

bool NamesFileOfEveryScript(std::string_view text) {
  // A document type may declare entities, and elements in them stand in the text in another form.
  if (text.find("<!DOCTYPE") != std::string_view::npos) return false;
  for (std::size_t tag = text.find(kScriptTag); tag != std::string_view::npos;
       tag = text.find(kScriptTag, tag + kScriptTag.size())) {
    const std::string_view rest = text.substr(tag + kScriptTag.size());
    if (EndsTagName(rest) && !HasFile(rest)) return false;
  }
  return true;
}

}  // namespace ondrel::command
