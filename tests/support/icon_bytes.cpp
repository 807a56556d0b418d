// Building of icon files, byte by byte.
#include "support/icon_bytes.h"

#include <utility>

#include "support/little_endian_bytes.h"

namespace ondrel::test {
namespace {

// Appends a row of numbers of `bits` bits each, the first one highest in its byte, padded with zero to 4 bytes. Numbers
// of several bytes stand with their lowest byte first.
template <class NumberAt>
void AppendRow(std::string& bytes, int width, int bits, NumberAt numberAt) {
  const std::size_t start = bytes.size();
  if (bits >= 8) {
    for (int x = 0; x < width; ++x) {
      for (int shift = 0; shift < bits; shift += 8) bytes += static_cast<char>(numberAt(x) >> shift & 0xFF);
    }
  } else {
    std::uint32_t byte = 0;
    int filled = 0;
    for (int x = 0; x < width; ++x) {
      byte = byte << bits | numberAt(x);
      filled += bits;
      if (filled == 8) {
        bytes += static_cast<char>(byte);
        byte = 0;
        filled = 0;
      }
    }
    if (filled != 0) bytes += static_cast<char>(byte << (8 - filled));
  }
  while ((bytes.size() - start) % 4 != 0) bytes += '\0';
}

template <class NumberAt>
void AppendRows(std::string& bytes, const IconPicture& picture, int bits, NumberAt numberAt) {
  for (int row = 0; row < picture.height; ++row) {
    const int y = picture.topDown ? row : picture.height - 1 - row;
    AppendRow(bytes, picture.width, bits, [&](int x) -> std::uint32_t { return numberAt(x, y); });
  }
}

// A pixel of 16 bits: 5 each of red, green and blue, the lowest last, below a bit without a meaning.
std::uint32_t PackedPixel(std::uint32_t pixel) {
  return (pixel >> 16 & 0x8000) | (pixel >> 9 & 0x7C00) | (pixel >> 6 & 0x03E0) | (pixel >> 3 & 0x001F);
}

void AppendOldHeader(std::string& bytes, const IconPicture& picture) {
  AppendDword(bytes, 12);  // the header's own length
  AppendWord(bytes, static_cast<std::uint32_t>(picture.width));
  AppendWord(bytes, static_cast<std::uint32_t>(2 * picture.height));
  AppendWord(bytes, 1);  // planes
  AppendWord(bytes, static_cast<std::uint32_t>(picture.bitsPerPixel));
}

void AppendHeader(std::string& bytes, const IconPicture& picture) {
  const int bothHeights = 2 * picture.height;
  AppendDword(bytes, 40);  // the header's own length
  AppendDword(bytes, static_cast<std::uint32_t>(picture.width));
  AppendDword(bytes, static_cast<std::uint32_t>(picture.topDown ? -bothHeights : bothHeights));
  AppendWord(bytes, 1);  // planes
  AppendWord(bytes, static_cast<std::uint32_t>(picture.bitsPerPixel));
  AppendDword(bytes, 0);  // no compression
  AppendDword(bytes, 0);  // length of the pixels: may be left out
  AppendDword(bytes, 0);  // pixels per metre, both ways
  AppendDword(bytes, 0);
  const bool isFullPalette = picture.bitsPerPixel > 8 || picture.palette.size() == 1U << picture.bitsPerPixel;
  AppendDword(bytes, isFullPalette ? 0 : static_cast<std::uint32_t>(picture.palette.size()));
  AppendDword(bytes, 0);  // important colours: all
}

std::string BytesWithoutMask(const IconPicture& picture) {
  std::string bytes;
  if (picture.oldHeader) {
    AppendOldHeader(bytes, picture);
  } else {
    AppendHeader(bytes, picture);
  }
  for (const PixelBytes& colour : picture.palette) {
    for (const std::size_t part : {0, 1, 2}) bytes += static_cast<char>(colour[part]);
    if (!picture.oldHeader) bytes += '\0';
  }
  AppendRows(bytes, picture, picture.bitsPerPixel, [&](int x, int y) {
    const std::uint32_t pixel = picture.pixels[picture.Index(x, y)];
    return picture.bitsPerPixel == 16 ? PackedPixel(pixel) : pixel;
  });
  return bytes;
}

}  // namespace

PixelBytes IconPicture::Colour(int x, int y) const {
  const std::uint32_t value = pixels[Index(x, y)];
  if (bitsPerPixel <= 8) {
    if (value >= palette.size()) return {};
    return {palette[value][0], palette[value][1], palette[value][2], 0};
  }
  const auto channel = [&](int shift) {
    const std::uint32_t stored = value >> shift & 0xFF;
    // The 3 highest of the 5 bits once more, in the place of the 3 that are not stored.
    return static_cast<std::uint8_t>(bitsPerPixel == 16 ? (stored & 0xF8) | stored >> 5 : stored);
  };
  return {channel(0), channel(8), channel(16), static_cast<std::uint8_t>(bitsPerPixel == 32 ? value >> 24 : 0)};
}

IconPicture SolidPicture(int width, int height, int bitsPerPixel, std::uint32_t colour) {
  IconPicture picture{.width = width, .height = height, .bitsPerPixel = bitsPerPixel};
  const auto count = static_cast<std::size_t>(width * height);
  picture.transparent.assign(count, false);
  if (bitsPerPixel > 8) {
    picture.pixels.assign(count, 0xFF000000U | colour);
    return picture;
  }
  picture.palette.resize(1U << bitsPerPixel);
  picture.palette.back() = {static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(colour >> 8),
                            static_cast<std::uint8_t>(colour >> 16), 0};
  picture.pixels.assign(count, static_cast<std::uint32_t>(picture.palette.size() - 1));
  return picture;
}

IconPicture PatternPicture(int width, int height, int bitsPerPixel) {
  IconPicture picture{.width = width, .height = height, .bitsPerPixel = bitsPerPixel};
  const std::uint32_t colours = bitsPerPixel <= 8 ? 1U << bitsPerPixel : 0;
  for (std::uint32_t index = 0; index < colours; ++index) {
    picture.palette.push_back({static_cast<std::uint8_t>(index * 37 + 11), static_cast<std::uint8_t>(index * 91 + 5),
                               static_cast<std::uint8_t>(index * 53 + 200), 0});
  }
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const auto column = static_cast<std::uint32_t>(x);
      const auto row = static_cast<std::uint32_t>(y);
      const std::uint32_t mixed = column * 3 + row * 5 + column * row / 7;
      const std::uint32_t pixel = colours != 0 ? mixed % colours : (row * 71 + column * 13 + 5) * 0x01030507U;
      picture.pixels.push_back(bitsPerPixel == 24 ? pixel & 0xFFFFFF : pixel);
      picture.transparent.push_back((x + 2 * y) % 5 == 0);
    }
  }
  return picture;
}

std::string ImageBytes(const IconPicture& picture) {
  std::string bytes = BytesWithoutMask(picture);
  if (!picture.transparent.empty()) {
    AppendRows(bytes, picture, 1, [&](int x, int y) { return picture.IsTransparent(x, y) ? 1 : 0; });
  }
  return bytes;
}

std::size_t BytesBeforeMask(const IconPicture& picture) { return BytesWithoutMask(picture).size(); }

StoredImage::StoredImage(const IconPicture& picture)
    : StoredImage(static_cast<std::uint8_t>(picture.width), static_cast<std::uint8_t>(picture.height),
                  static_cast<std::uint16_t>(picture.bitsPerPixel), ImageBytes(picture)) {}

std::string IconFileBytes(const std::vector<StoredImage>& images, std::uint16_t type) {
  std::string bytes;
  AppendWord(bytes, 0);  // reserved
  AppendWord(bytes, type);
  AppendWord(bytes, static_cast<std::uint32_t>(images.size()));
  constexpr std::size_t kHeaderBytes = 6;
  std::size_t offset = kHeaderBytes + images.size() * kIconFileEntryBytes;
  for (const StoredImage& image : images) {
    bytes += static_cast<char>(image.statedWidth);
    bytes += static_cast<char>(image.statedHeight);
    bytes += '\0';         // colours: none stated
    bytes += '\0';         // reserved
    AppendWord(bytes, 1);  // planes
    AppendWord(bytes, image.statedBits);
    AppendDword(bytes, static_cast<std::uint32_t>(image.bytes.size()));
    AppendDword(bytes, static_cast<std::uint32_t>(offset));
    offset += image.bytes.size();
  }
  for (const StoredImage& image : images) bytes += image.bytes;
  return bytes;
}

}  // namespace ondrel::test
