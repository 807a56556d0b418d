// Icon files for tests, built from the published layout of the format and from nothing of the reader under test.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace ondrel::test {

/// Blue, green, red, alpha: the order of the bytes in a 32-bit image.
using PixelBytes = std::array<std::uint8_t, 4>;

/// One uncompressed image, described from the top row down.
struct IconPicture {
  int width = 0;
  int height = 0;
  int bitsPerPixel = 32;                 ///< 1, 4, 8, 16, 24 or 32.
  bool topDown = false;                  ///< How the rows stand in the file. The other way round is the usual one.
  bool oldHeader = false;                ///< The header of 12 bytes, with a full palette of 3 bytes a colour, if any.
  std::vector<PixelBytes> palette = {};  ///< Up to 8 bits per pixel: the stored colours, alpha unused.
  /// Palette indices up to 8 bits per pixel, else 0xAARRGGBB. At 16 bits the upper 5 of each channel are stored, and
  /// the highest of alpha in the bit that says nothing.
  std::vector<std::uint32_t> pixels = {};
  std::vector<bool> transparent = {};  ///< Empty: the image has no mask.

  std::size_t Index(int x, int y) const { return static_cast<std::size_t>(y * width + x); }
  /// What a reader shall make of a pixel: alpha 0 unless the image has 32 bits per pixel, black for an index beyond the
  /// palette, 5 bits brought to 8 so that 31 becomes 255.
  PixelBytes Colour(int x, int y) const;
  bool IsTransparent(int x, int y) const { return !transparent.empty() && transparent[Index(x, y)]; }
};

/// An opaque picture of one colour (0xRRGGBB), with alpha 255 where there is one. Up to 8 bits per pixel the colour is
/// that of the highest index of a full palette.
IconPicture SolidPicture(int width, int height, int bitsPerPixel, std::uint32_t colour);
/// A picture with a full palette, unlike itself mirrored or turned, and with a mask.
IconPicture PatternPicture(int width, int height, int bitsPerPixel);

/// The image of an entry: header, palette, colour rows and mask rows.
std::string ImageBytes(const IconPicture& picture);
/// How many bytes of it stand in front of the mask.
std::size_t BytesBeforeMask(const IconPicture& picture);

/// An entry of a file: what the directory states, and the image's bytes, of whatever form.
struct StoredImage {
  std::uint8_t statedWidth = 0;
  std::uint8_t statedHeight = 0;
  std::uint16_t statedBits = 0;
  std::string bytes = {};

  StoredImage() = default;
  StoredImage(std::uint8_t width, std::uint8_t height, std::uint16_t bits, std::string image)
      : statedWidth(width), statedHeight(height), statedBits(bits), bytes(std::move(image)) {}
  StoredImage(const IconPicture& picture);
};

inline constexpr std::uint16_t kIconFileType = 1;
inline constexpr std::uint16_t kCursorFileType = 2;
inline constexpr std::size_t kIconFileHeaderBytes = 6;
inline constexpr std::size_t kIconFileEntryBytes = 16;  ///< Of one image in the directory.

/// A whole file: header, directory, and the images in the same order without gaps.
std::string IconFileBytes(const std::vector<StoredImage>& images, std::uint16_t type = kIconFileType);

}  // namespace ondrel::test
