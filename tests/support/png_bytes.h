// PNG images for tests, built chunk by chunk from the published layout of the format and from nothing of the reader
// under test.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/icon_bytes.h"

namespace ondrel::test {

/// With the numbers that the header chunk has for them.
enum class PngColour : std::uint8_t { grey = 0, trueColour = 2, palette = 3, greyAlpha = 4, trueColourAlpha = 6 };

/// The samples of a pixel in the file's order: grey, or red, green, blue, or an index; then alpha, where there is one.
using PngSamples = std::array<std::uint16_t, 4>;

/// One PNG image, described from the top row down.
struct PngPicture {
  int width = 0;
  int height = 0;
  PngColour colour = PngColour::trueColourAlpha;
  int depth = 8;  ///< Bits of a sample: 1, 2, 4, 8 or 16, as the colour type allows.
  bool interlaced = false;
  std::vector<PixelBytes> palette = {};  ///< Blue, green, red, alpha. Alpha is stored when one of them is not 255.
  std::optional<PngSamples> transparent = {};  ///< The one colour that is transparent, of an image without alpha.
  std::vector<PngSamples> samples = {};

  /// What a reader shall make of a pixel: samples brought to 8 bits, alpha 255 where the image has none.
  PixelBytes Colour(int x, int y) const;
};

/// A picture unlike itself mirrored or turned, with pixels of alpha 0, 255 and between, as far as its colour type has
/// them without a transparent colour.
PngPicture PatternPng(int width, int height, PngColour colour, int depth);
/// A PNG image of a picture of 32 bits without a mask.
PngPicture PngOf(const IconPicture& picture);
/// The uncompressed picture that shows the same: 32 bits, transparent where alpha is 0.
IconPicture Uncompressed(const PngPicture& picture);

// What an image is made of, for images that are damaged or made by hand.

std::string PngSignature();
/// Length, name, data and checksum.
std::string PngChunk(std::string_view name, std::string_view data);
/// The same with a length and a checksum of the caller's.
std::string PngChunkOf(std::uint32_t length, std::string_view name, std::string_view data, std::uint32_t checksum);
std::string PngHeader(std::uint32_t width, std::uint32_t height, PngColour colour, int depth, bool interlaced = false);
/// The chunks between the header and the pixels; nothing for most pictures.
std::string PngColours(const PngPicture& picture);
/// The rows as they are before compression, each with its filter's number, 0, in front; pass after pass.
std::string PngRows(const PngPicture& picture);
/// Bytes as a zlib stream.
std::string Deflated(std::string_view bytes);
/// A zlib stream of so many MiB of zeros, a thousandth as long.
std::string DeflatedZeros(std::uint32_t mebibytes);
std::string PngEnd();

/// The whole image.
std::string PngBytes(const PngPicture& picture);

/// The entry of a file, with the directory telling the truth.
StoredImage StoredPng(const PngPicture& picture);

}  // namespace ondrel::test
