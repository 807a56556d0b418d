// One of the images that an icon offers: what it is, how one is chosen, and how it becomes pixels. The same for icons
// of whatever kind of file.
#pragma once

#include <vector>

#include "icons/icon_image.h"
#include "icons/little_endian.h"

namespace ondrel::platform {

/// Sizes are in pixels. `image` points into the bytes that the entry was made from.
struct IconEntry {
  LONG width;
  LONG height;
  WORD bitsPerPixel;
  Bytes image;
};

/// The size, in pixels, that a byte of a directory states.
constexpr LONG StatedIconSize(BYTE size) { return size == 0 ? 256 : size; }

/// Makes an entry from the size and depth that a directory states and from the image itself. The image's own header
/// decides; the directory is believed only where the image is too damaged to say, and serves the choice then.
IconEntry DescribeIconEntry(LONG width, LONG height, WORD bitsPerPixel, Bytes image);

/// The entry to show at size x size pixels. Requires at least one entry.
///
/// The nearest in size, by the differences of width and height together; of two at the same distance the larger; of
/// the same size the one whose depth is nearest to the screen's 32 bits; of equals the first.
const IconEntry& ChooseIconEntry(const std::vector<IconEntry>& entries, LONG size);

/// The image of an entry, scaled to size x size pixels when it has another size. ERROR_SUCCESS, or ERROR_INVALID_DATA
/// for a damaged image or one of an unknown form. Raises std::bad_alloc.
DWORD DecodeIconEntry(const IconEntry& entry, LONG size, IconImage& decoded);

}  // namespace ondrel::platform
