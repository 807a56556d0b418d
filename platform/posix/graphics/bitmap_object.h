// What a bitmap handle names.
#pragma once

#include <cstddef>
#include <vector>

#include <ondrel/platform/os/graphics.h>

#include "graphics/live_handle.h"
#include "icons/icon_image.h"

namespace ondrel::platform {

/// A bitmap of one plane. Its rows stand in memory from the top one down.
struct BitmapObject {
  LONG width;
  LONG height;
  WORD bitsPerPixel;
  std::vector<BYTE> bits;  ///< `height` rows of BitmapStride(width, bitsPerPixel) bytes.
  LiveHandle<BitmapObject> live = {};
};

}  // namespace ondrel::platform
