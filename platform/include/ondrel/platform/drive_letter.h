// Paths that begin with a drive letter.
#pragma once

#include <string_view>

#include <ondrel/platform/types.h>

namespace ondrel::platform {

/// Whether a path begins with a letter from A to Z, in either case, and a colon.
constexpr bool HasDriveLetter(std::basic_string_view<WCHAR> path) noexcept {
  if (path.size() < 2 || path[1] != ':') return false;
  const int letter = path[0] | 0x20;
  return letter >= 'a' && letter <= 'z';
}

}  // namespace ondrel::platform
