// Text of an input.
#pragma once

#include <string>
#include <string_view>

#include <ondrel/platform/com.h>

namespace ondrel::fuzz {

/// Bytes as text of a code page.
inline CString Widen(std::string_view bytes, UINT codePage) {
  const int count = static_cast<int>(bytes.size());
  if (count == 0) return {};
  const int length = MultiByteToWideChar(codePage, 0, bytes.data(), count, nullptr, 0);
  std::basic_string<WCHAR> text(static_cast<std::size_t>(length), WCHAR{});
  MultiByteToWideChar(codePage, 0, bytes.data(), count, text.data(), length);
  return CString(std::move(text));
}

}  // namespace ondrel::fuzz
