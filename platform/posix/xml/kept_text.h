// Text as a document keeps it: UTF-8 in which a lone surrogate is encoded like any other character. So text takes half
// the room of UTF-16, and every unit that was put in comes out again.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include <ondrel/platform/os/com.h>

#include "text/unicode.h"

namespace ondrel::platform {

/// All units of a BSTR; null is empty text.
inline std::u16string_view TextOf(BSTR text) {
  return text == nullptr ? std::u16string_view() : std::u16string_view(text, SysStringLen(text));
}

/// The kept form of `text`. Raises std::bad_alloc.
std::string KeptText(std::u16string_view text);

/// Writes the kept form of `text` to `kept`, which has kMaximumUtf8PerUnit bytes for each unit; how many it takes.
std::size_t Keep(std::u16string_view text, char* kept);

/// Calls `use` with the kept form of `text`; short text takes no memory for that. Raises std::bad_alloc.
template <class Use>
auto WithKept(std::u16string_view text, const Use& use) {
  constexpr std::size_t kShort = 64;
  if (text.size() > kShort) return use(std::string_view(KeptText(text)));
  std::array<char, kShort * kMaximumUtf8PerUnit> kept;
  return use(std::string_view(kept.data(), Keep(text, kept.data())));
}

/// Whether `kept` is the kept form of `text`.
bool IsKeptAs(std::string_view kept, std::u16string_view text);

/// Puts the units of `kept` in place of what `text` holds. Raises std::bad_alloc.
void ReadKeptText(std::string_view kept, std::u16string& text);

/// Gives the units of `kept` to the caller as a BSTR of its own, or E_OUTOFMEMORY.
HRESULT GiveKeptText(std::string_view kept, BSTR& text);

}  // namespace ondrel::platform
