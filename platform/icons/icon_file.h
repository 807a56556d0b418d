// The directory of an icon file.
//
// A file starts with three words: 0, its type (1 for icons, 2 for cursors) and the count of images. For each image
// follow 16 bytes: width, height and colours (a byte each; a size of 0 means 256), an unused byte, planes and bits per
// pixel (words), and the length and the offset of the image in the file (32 bits each).
#pragma once

#include <vector>

#include "icons/icon_entry.h"

namespace ondrel::platform {

/// The bytes in front that tell an icon file from others.
inline constexpr std::size_t kIconFileHeaderBytes = 6;

/// Whether a file that starts so holds an icon.
bool IsIconFile(Bytes start);

/// The images of an icon file, in its order, at least one. They point into `file`; one that reaches beyond its end has
/// the bytes that are there. ERROR_SUCCESS, ERROR_RESOURCE_DATA_NOT_FOUND when the file is no icon file or lists no
/// image, or ERROR_INVALID_DATA when its directory is cut short or too long to be real. Raises std::bad_alloc.
DWORD ReadIconDirectory(Bytes file, std::vector<IconEntry>& entries);

}  // namespace ondrel::platform
