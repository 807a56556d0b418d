// PNG files as pixels and back, through libpng's own simple calls and through nothing of the readers and writers under
// test.
#pragma once

#include <array>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace ondrel::test {

/// Red, green, blue, alpha.
using RgbaPixel = std::array<std::uint8_t, 4>;

/// Rows from the top.
struct RgbaPicture {
  RgbaPicture() = default;
  RgbaPicture(int itsWidth, int itsHeight, RgbaPixel colour = {});  ///< Of one colour.

  RgbaPixel& At(int x, int y) { return pixels.at(static_cast<std::size_t>(y * width + x)); }
  const RgbaPixel& At(int x, int y) const { return pixels.at(static_cast<std::size_t>(y * width + x)); }
  /// The columns from `left` on.
  RgbaPicture Columns(int left, int count) const;

  int width = 0;
  int height = 0;
  std::vector<RgbaPixel> pixels = {};
};

/// Any PNG file; alpha is 255 where it has none. Raises std::runtime_error for a file that libpng refuses.
RgbaPicture DecodePng(std::string_view file);
/// A file of 8 bits a channel, with alpha.
std::string EncodePng(const RgbaPicture& picture);

/// The names of a file's chunks in their order.
std::vector<std::string> ChunkNames(std::string_view file);
/// What its header says: "96 x 32, 8 bits, colour type 6".
std::string HeaderText(std::string_view file);

/// Where two pictures part.
testing::AssertionResult SamePicture(const RgbaPicture& actual, const RgbaPicture& expected);

}  // namespace ondrel::test
