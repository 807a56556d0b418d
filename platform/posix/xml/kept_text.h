// Text as a document keeps it: UTF-8 in which a lone surrogate is encoded like any other character. So text takes half
// the room of UTF-16, and every unit that was put in comes out again.
#pragma once

#include <string>
#include <string_view>

#include <ondrel/platform/os/com.h>

namespace ondrel::platform {

/// All units of a BSTR; null is empty text.
inline std::u16string_view TextOf(BSTR text) {
  return text == nullptr ? std::u16string_view() : std::u16string_view(text, SysStringLen(text));
}

/// The kept form of `text`. Raises std::bad_alloc.
std::string KeptText(std::u16string_view text);

/// Puts the units of `kept` in place of what `text` holds. Raises std::bad_alloc.
void ReadKeptText(std::string_view kept, std::u16string& text);

/// Gives the units of `kept` to the caller as a BSTR of its own, or E_OUTOFMEMORY.
HRESULT GiveKeptText(std::string_view kept, BSTR& text);

}  // namespace ondrel::platform
