// Uncompressed images inside icon files.
//
// Such an image is a header, a palette, the colour rows and the mask rows. The header states twice the image's height,
// for colour and mask together. Rows stand bottom first, or top first when that height is negative, and each is padded
// to 4 bytes. A colour of the palette is 4 bytes: blue, green, red and an unused one. The oldest images have a header
// of 12 bytes (the platform's BITMAPCOREHEADER, all others its BITMAPINFOHEADER or one that begins like it) and a
// palette without the unused bytes.
#pragma once

#include "icons/icon_image.h"
#include "icons/little_endian.h"

namespace ondrel::platform {

struct DibHeader {
  LONG width;
  LONG height;  ///< Of the image: half of what the header states, without its sign.
  WORD bitsPerPixel;
  bool topDown;
  DWORD compression;
  DWORD paletteColours;
  std::size_t paletteEntryBytes;
  std::size_t size;  ///< The header's own bytes; the palette follows.
};

/// Reads the header of an image. False for bytes that are too few for one or that state no possible size; nothing else
/// in it has been checked then.
bool ReadDibHeader(Bytes image, DibHeader& header);

/// Whether an image is of a possible size and long enough for its header, palette and colours, of whatever form they
/// are.
bool IsWholeDibImage(Bytes image);

/// Decodes an image of 1, 4, 8, 16 (5 each of red, green and blue), 24 or 32 bits per pixel. ERROR_SUCCESS, or
/// ERROR_INVALID_DATA for a damaged image and for one of another form. Alpha bytes of a 32-bit image are kept, those of
/// the others are 0. A mask that is missing or short reads as opaque. Raises std::bad_alloc.
DWORD DecodeDibImage(Bytes image, IconImage& decoded);

}  // namespace ondrel::platform
