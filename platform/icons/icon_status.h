// What reading an icon comes to.
#pragma once

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

/// What happened to the file, and what to the icon in it, which is not looked for in a file that cannot be read.
struct IconStatus {
  bool IsSuccess() const { return file == ERROR_SUCCESS && icon == ERROR_SUCCESS; }

  DWORD file = ERROR_SUCCESS;
  DWORD icon = ERROR_SUCCESS;
};

inline constexpr IconStatus kIconRead = {};
inline constexpr IconStatus kNoIconThere = {.icon = ERROR_RESOURCE_DATA_NOT_FOUND};
inline constexpr IconStatus kIconDamaged = {.icon = ERROR_INVALID_DATA};

}  // namespace ondrel::platform
