// A file that an icon is made from: its bytes, and the images among them.
#pragma once

#include <vector>

#include <ondrel/platform/graphics.h>

#include "icons/icon_entry.h"

namespace ondrel::platform {

/// What happened to the file, and what to the icon in it, which is not looked for in a file that cannot be read.
struct IconStatus {
  bool IsSuccess() const { return file == ERROR_SUCCESS && icon == ERROR_SUCCESS; }

  DWORD file = ERROR_SUCCESS;
  DWORD icon = ERROR_SUCCESS;
};

struct IconSource {
  std::vector<BYTE> bytes;
  std::vector<IconEntry> entries;  ///< They point into the bytes.
};

/// Reads an icon file and its directory. The icon's status is ERROR_RESOURCE_DATA_NOT_FOUND for a file that is none or
/// lists no image, ERROR_INVALID_DATA for a damaged one. Raises std::bad_alloc.
IconStatus ReadIconSource(LPCWSTR path, IconSource& source);

}  // namespace ondrel::platform
