// Pixels of icons and their scaling.
#include "icons/icon_image.h"

#include <cstddef>
#include <cstring>

namespace ondrel::platform {
namespace {

constexpr WORD kColourBits = 32;
constexpr WORD kMaskBits = 1;
constexpr std::size_t kPixelBytes = kColourBits / 8;

std::size_t ImageBytes(LONG width, LONG height, WORD bitsPerPixel) {
  return BitmapStride(static_cast<std::size_t>(width), bitsPerPixel) * static_cast<std::size_t>(height);
}

std::size_t PixelOffset(const IconImage& image, LONG x, LONG y) {
  return (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) + static_cast<std::size_t>(x)) *
         kPixelBytes;
}

std::size_t MaskOffset(const IconImage& image, LONG x, LONG y) {
  return static_cast<std::size_t>(y) * BitmapStride(static_cast<std::size_t>(image.width), kMaskBits) +
         static_cast<std::size_t>(x) / 8;
}

constexpr BYTE MaskBit(LONG x) { return static_cast<BYTE>(0x80 >> (x % 8)); }

// The pixel of `sourceSize` in which the centre of pixel `position` of `size` lies.
LONG SourcePosition(LONG position, LONG size, LONG sourceSize) {
  return static_cast<LONG>((2LL * position + 1) * sourceSize / (2LL * size));
}

}  // namespace

IconImage::IconImage(LONG imageWidth, LONG imageHeight)
    : width(imageWidth),
      height(imageHeight),
      colour(ImageBytes(width, height, kColourBits)),
      mask(ImageBytes(width, height, kMaskBits)) {}

bool IconImage::IsTransparent(LONG x, LONG y) const { return (mask[MaskOffset(*this, x, y)] & MaskBit(x)) != 0; }

void IconImage::SetTransparent(LONG x, LONG y) { mask[MaskOffset(*this, x, y)] |= MaskBit(x); }

BYTE* IconImage::Pixel(LONG x, LONG y) { return colour.data() + PixelOffset(*this, x, y); }

const BYTE* IconImage::Pixel(LONG x, LONG y) const { return colour.data() + PixelOffset(*this, x, y); }

IconImage ScaleIconImage(const IconImage& source, LONG width, LONG height) {
  if (source.width == width && source.height == height) return source;
  IconImage scaled(width, height);
  for (LONG y = 0; y < height; ++y) {
    const LONG sourceY = SourcePosition(y, height, source.height);
    for (LONG x = 0; x < width; ++x) {
      const LONG sourceX = SourcePosition(x, width, source.width);
      std::memcpy(scaled.Pixel(x, y), source.Pixel(sourceX, sourceY), kPixelBytes);
      if (source.IsTransparent(sourceX, sourceY)) scaled.SetTransparent(x, y);
    }
  }
  return scaled;
}

}  // namespace ondrel::platform
