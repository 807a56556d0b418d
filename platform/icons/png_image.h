// PNG images inside icon files. They are recognised and measured, and their decoding is refused: see DecodePngImage.
#pragma once

#include "icons/icon_image.h"
#include "icons/little_endian.h"

namespace ondrel::platform {

bool IsPngImage(Bytes image);

/// The size that a PNG image states for itself. False for one that is too short or states no possible size.
bool ReadPngSize(Bytes image, LONG& width, LONG& height);

/// The one place where PNG images become pixels. There is no decoder: always ERROR_INVALID_DATA.
DWORD DecodePngImage(Bytes image, IconImage& decoded);

}  // namespace ondrel::platform
