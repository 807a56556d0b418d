// The pixels of an icon in one size, in the form in which icon handles give them out.
#pragma once

#include <vector>

#include <ondrel/platform/os/graphics.h>

namespace ondrel::platform {

/// The bytes of a row of a bitmap: every row starts at a multiple of 2 bytes.
constexpr std::size_t BitmapStride(std::size_t width, std::size_t bitsPerPixel) {
  constexpr std::size_t kUnitBits = 16;
  return (width * bitsPerPixel + kUnitBits - 1) / kUnitBits * (kUnitBits / 8);
}

/// Both images have `height` rows, the top one first.
struct IconImage {
  IconImage() = default;
  /// All black, alpha 0 and opaque.
  IconImage(LONG width, LONG height);

  bool IsTransparent(LONG x, LONG y) const;
  void SetTransparent(LONG x, LONG y);
  BYTE* Pixel(LONG x, LONG y);  ///< Four bytes: blue, green, red, alpha.
  const BYTE* Pixel(LONG x, LONG y) const;

  LONG width = 0;
  LONG height = 0;
  std::vector<BYTE> colour;  ///< 32 bits per pixel, rows without padding.
  std::vector<BYTE>
      mask;  ///< 1 bit per pixel, the leftmost one highest, set for a transparent pixel; rows as BitmapStride.
};

/// The image in another size, by nearest neighbour: each pixel takes the colour and the mask bit of that pixel of the
/// source in which its centre lies. So nothing is blended, and key colours and masks stay sharp.
IconImage ScaleIconImage(const IconImage& source, LONG width, LONG height);

}  // namespace ondrel::platform
