// The characters that XML text cannot carry, not even as references.
#include "edit/written_text.h"

#include <cstddef>
#include <cstdio>
#include <string_view>

#include <ondrel/platform/program.h>

#include "printable.h"

namespace ondrel::command {
namespace {

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// Of a unit that is no half of a pair.
bool IsCarried(char32_t unit) {
  if (unit < 0x20) return unit == '\t' || unit == '\n' || unit == '\r';
  return !IsHighSurrogate(unit) && !IsLowSurrogate(unit) && unit != 0xFFFE && unit != 0xFFFF;
}

}  // namespace

void RequireCarried(const Location& where, const std::string& what, const CString& text) {
  const std::basic_string_view<WCHAR> units = text.View();
  for (std::size_t index = 0; index < units.size(); ++index) {
    const char32_t unit = units[index];
    if (IsHighSurrogate(unit) && index + 1 < units.size() && IsLowSurrogate(units[index + 1])) {
      ++index;
    } else if (IsLowSurrogate(unit)) {
      throw Failure(where, what + ' ' + Quoted(text) + " is no UTF-8; write it in UTF-8", StatusText(E_INVALIDARG));
    } else if (!IsCarried(unit)) {
      char name[16];
      std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(unit));
      throw Failure(
          where,
          what + ' ' + Quoted(text) + " has the character " + name + ", which a project file cannot hold; leave it out",
          StatusText(E_INVALIDARG));
    }
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
