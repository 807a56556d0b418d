// The characters that XML text cannot carry, not even as references.
#include "edit/written_text.h"

#include <cstdio>
#include <string_view>

#include <ondrel/platform/program.h>
#include <ondrel/platform/utf16.h>

#include "printable.h"

namespace ondrel::command {
void RequireCarried(const Location& where, const std::string& what, const CString& text) {
  const std::basic_string_view<WCHAR> units = text.View();
  for (const WCHAR *unit = units.data(), *const end = unit + units.size(); unit != end;) {
    const char32_t character = platform::TakeUtf16(unit, end);
    if (platform::IsXmlCharacter(character)) continue;
    if (platform::IsLowSurrogate(character)) {  // as a byte of an argument that is no UTF-8
      throw Failure(where, what + ' ' + Quoted(text) + " is no UTF-8; write it in UTF-8", StatusText(E_INVALIDARG));
    }
    char name[16];
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(character));
    throw Failure(
        where,
        what + ' ' + Quoted(text) + " has the character " + name + ", which a project file cannot hold; leave it out",
        StatusText(E_INVALIDARG));
  }
}

CString TextToWrite(const Location& where, const std::string& what, const std::string& argument) {
  CString text = platform::PathFromUtf8(argument);
  RequireCarried(where, what, text);
  return text;
}

CString NameToWrite(const Location& where, const std::string& argument) {
  if (argument.empty()) throw Failure(where, "the new name is empty; give one", StatusText(E_INVALIDARG));
  return TextToWrite(where, "the name", argument);
}

}  // namespace ondrel::command
