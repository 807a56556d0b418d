// A file that an icon is made from: its bytes, and the images among them.
#pragma once

#include <optional>
#include <vector>

#include <ondrel/platform/graphics.h>

#include "icons/icon_entry.h"
#include "icons/icon_status.h"

namespace ondrel::platform {

struct IconSource {
  bool isProgram = false;  ///< A program or a library, even one without an icon.
  /// Of a program: whether it has groups of icons. Unset when it has no resources at all, or damaged ones.
  std::optional<bool> hasIconGroups = {};
  std::vector<BYTE> bytes = {};  ///< Of an icon file the whole, of a program the images, of any other file its start.
  std::vector<IconEntry> entries = {};  ///< They point into the bytes.
};

/// Reads the first icon of a file, which tells by its content whether it is an icon file or a program. The icon's
/// status is ERROR_RESOURCE_DATA_NOT_FOUND for a file without one or whose icon lists no image, ERROR_INVALID_DATA for
/// a damaged one. Raises std::bad_alloc.
IconStatus ReadIconSource(LPCWSTR path, IconSource& source);

}  // namespace ondrel::platform
