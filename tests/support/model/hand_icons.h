// Icons that a test makes bitmap by bitmap, as records of an object image hold them, and what the strips of several
// shall be: worked out here from the icons' own data.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/icon_bytes.h"
#include "support/model/hand_bytes.h"

namespace ondrel::test {

/// A bitmap: its geometry, the bytes of a row, and the rows, the top one first. Without a size it is empty.
struct HandBitmap {
  int width = 0;
  int height = 0;
  int rowBytes = 0;
  int depth = 0;
  std::string bytes = {};

  std::string Record() const {
    // An empty bitmap has no planes either.
    if (width == 0) return std::string(24, '\0');
    return BitmapBytes(width, height, rowBytes, static_cast<unsigned>(depth), bytes);
  }
  std::uint32_t Byte(int offset) const {
    return static_cast<unsigned char>(bytes.at(static_cast<std::size_t>(offset)));
  }

  /// A pixel as a colour 0x00BBGGRR: of 32 bits its three bytes, of 1 bit white or black; black of any other depth and
  /// outside the bitmap.
  std::uint32_t Colour(int x, int y) const {
    if (x >= width || y >= height) return 0;
    if (depth == 1) return (Byte(y * rowBytes + x / 8) >> (7 - x % 8) & 1) != 0 ? 0x00FFFFFF : 0;
    if (depth != 32) return 0;
    const int offset = y * rowBytes + 4 * x;
    return Byte(offset) << 16 | Byte(offset + 1) << 8 | Byte(offset + 2);
  }
};

/// A colour image and its mask, in which white pixels are transparent.
struct HandImage {
  HandBitmap colour;
  HandBitmap mask;

  std::string Record() const { return colour.Record() + mask.Record(); }
  std::uint32_t Pixel(int x, int y, std::uint32_t key) const {
    return mask.Colour(x, y) != 0 ? key : colour.Colour(x, y);
  }
};

struct HandIcon {
  HandImage large;
  HandImage smallIcon;

  std::string Record() const { return large.Record() + smallIcon.Record(); }
};

/// A bitmap without padding whose bytes all follow from the seed.
inline HandBitmap FilledBitmap(int width, int height, int depth, std::uint32_t seed) {
  HandBitmap bitmap{.width = width, .height = height, .rowBytes = (width * depth + 15) / 16 * 2, .depth = depth};
  for (int index = 0; index < bitmap.rowBytes * height; ++index) {
    seed = seed * 1664525 + 1013904223;  // a linear congruential generator
    bitmap.bytes += static_cast<char>(seed >> 24);
  }
  return bitmap;
}

inline HandImage FilledImage(int width, int height, int depth, std::uint32_t seed) {
  return {FilledBitmap(width, height, depth, seed), FilledBitmap(width, height, 1, seed + 1)};
}

/// What a reader shall make of a picture in a file: 32 bits and a mask, whatever its own depth.
inline HandImage ImageShown(const IconPicture& picture) {
  HandBitmap colour{.width = picture.width, .height = picture.height, .rowBytes = 4 * picture.width, .depth = 32};
  HandBitmap mask{
      .width = picture.width, .height = picture.height, .rowBytes = (picture.width + 15) / 16 * 2, .depth = 1};
  mask.bytes.assign(static_cast<std::size_t>(mask.rowBytes * mask.height), '\0');
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      for (const std::uint8_t part : picture.Colour(x, y)) colour.bytes += static_cast<char>(part);
      if (!picture.IsTransparent(x, y)) continue;
      char& byte = mask.bytes[static_cast<std::size_t>(y * mask.rowBytes + x / 8)];
      byte = static_cast<char>(byte | 0x80 >> x % 8);
    }
  }
  return {colour, mask};
}

/// The strip of these images, which stand in cookie order: as high as the first, as wide as the first times their
/// number, of the first one's depth; each at its own width times its index, cut off at the strip's edges, later ones
/// over earlier ones. Only strips of 32 bits have pixels.
inline HandBitmap ExpectedStrip(const std::vector<HandImage>& images, std::uint32_t key) {
  if (images.empty()) return {};
  const HandBitmap& first = images.front().colour;
  HandBitmap strip{
      .width = first.width * static_cast<int>(images.size()), .height = first.height, .depth = first.depth};
  strip.rowBytes = (strip.width * strip.depth + 15) / 16 * 2;
  strip.bytes.assign(static_cast<std::size_t>(strip.rowBytes * strip.height), '\0');
  if (strip.depth != 32) return strip;
  for (int index = 0; index < static_cast<int>(images.size()); ++index) {
    const HandImage& image = images[static_cast<std::size_t>(index)];
    for (int y = 0; y < image.colour.height; ++y) {
      for (int x = 0; x < image.colour.width; ++x) {
        const int column = index * image.colour.width + x;
        if (column >= strip.width || y >= strip.height) continue;
        const std::uint32_t pixel = image.Pixel(x, y, key);
        const auto offset = static_cast<std::size_t>(y * strip.rowBytes + 4 * column);
        strip.bytes[offset] = static_cast<char>(pixel >> 16);
        strip.bytes[offset + 1] = static_cast<char>(pixel >> 8);
        strip.bytes[offset + 2] = static_cast<char>(pixel);
      }
    }
  }
  return strip;
}

}  // namespace ondrel::test
