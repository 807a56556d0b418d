// PNG images inside icon files.
#pragma once

#include "icons/icon_image.h"
#include "icons/little_endian.h"

namespace ondrel::platform {

bool IsPngImage(Bytes image);

/// The size that a PNG image states for itself. False for one that is too short or states no possible size.
bool ReadPngSize(Bytes image, LONG& width, LONG& height);

/// Whether a PNG image states a size that an icon's image may have.
bool IsPossiblePngImage(Bytes image);

/// Decodes a PNG image of any colour type and depth. ERROR_SUCCESS, or ERROR_INVALID_DATA for one that is damaged,
/// incomplete up to its last chunk, or larger than an icon's image may be. Alpha bytes are those of the image, 255
/// where it has none; colours beside a full or half transparent alpha stay as they are stored. The mask has the pixels
/// whose alpha is 0. Channels of 16 bits are rounded to 8; what an image says about gamma and colour profiles is not
/// applied. Raises std::bad_alloc.
DWORD DecodePngImage(Bytes image, IconImage& decoded);

}  // namespace ondrel::platform
