// What a bitmap handle names.
#pragma once

#include <cstddef>
#include <vector>

#include <ondrel/platform/os/graphics.h>

#include "graphics/live_handle.h"

namespace ondrel::platform {

/// The bytes of a row of a bitmap: every row starts at a multiple of 2 bytes.
constexpr std::size_t BitmapStride(std::size_t width, std::size_t bitsPerPixel) {
  constexpr std::size_t kUnitBits = 16;
  return (width * bitsPerPixel + kUnitBits - 1) / kUnitBits * (kUnitBits / 8);
}

/// A bitmap of one plane. Its rows stand in memory from the top one down.
struct BitmapObject {
  LONG width;
  LONG height;
  WORD bitsPerPixel;
  std::vector<BYTE> bits;  ///< `height` rows of BitmapStride(width, bitsPerPixel) bytes.
  LiveHandle<BitmapObject> live = {};
};

}  // namespace ondrel::platform
