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
  LONG statedWidth;  ///< What the directory says, whatever the image does.
  LONG statedHeight;
  bool isCut = false;  ///< Whether the file ends before the image does, as its directory has it.
};

/// The size, in pixels, that a byte of a directory states.
constexpr LONG StatedIconSize(BYTE size) { return size == 0 ? 256 : size; }

/// Makes an entry from the size and depth that a directory states and from the image itself. The image's own header
/// decides; the directory is believed only where the image is too damaged to say, and serves the choice then.
IconEntry DescribeIconEntry(LONG width, LONG height, WORD bitsPerPixel, Bytes image);

/// Whether the image is all there and of a possible size, as far as its header tells: it need not be one that can be
/// decoded.
bool IsWholeIconEntry(const IconEntry& entry);

/// The entry to show at size x size pixels. Requires at least one entry.
///
/// The nearest in size, by the differences of width and height together; of two at the same distance the larger; of
/// the same size the one whose depth is nearest to the screen's 32 bits; of equals the first.
const IconEntry& ChooseIconEntry(const std::vector<IconEntry>& entries, LONG size);

/// The icon in both sizes, either of which may be left out with a null pointer: the images of the entries to show
/// there, scaled when they have another size. ERROR_SUCCESS, or ERROR_INVALID_DATA when one of them is damaged or of an
/// unknown form. Requires at least one entry. Raises std::bad_alloc.
DWORD DecodeIcon(const std::vector<IconEntry>& entries, IconImage* large, IconImage* smallIcon);

}  // namespace ondrel::platform
