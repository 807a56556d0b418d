// The pixels of uncompressed icon images, at every depth.
#include <array>
#include <string>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"

namespace ondrel::test {
namespace {

// A monochrome icon of 16 x 16 pixels, written out. Its picture, top row first: a row of the second palette colour, one
// with the left and right pixel in it, one of the first colour; then rows of zero. Of the top row the two leftmost
// pixels are transparent, of the second the rightmost.
std::string MonochromeFile() {
  const std::string row(4, '\0');
  std::string bytes(
      "\0\0\1\0\1\0"
      "\x10\x10\2\0\1\0\1\0\xB0\0\0\0\x16\0\0\0"
      "\x28\0\0\0\x10\0\0\0\x20\0\0\0\1\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
      "\x10\x20\x30\0\xA0\xB0\xC0\0",
      6 + 16 + 40 + 8);
  for (int y = 0; y < 14; ++y) bytes += row;
  bytes += std::string("\x80\1\0\0\xFF\xFF\0\0", 8);
  for (int y = 0; y < 14; ++y) bytes += row;
  bytes += std::string("\0\1\0\0\xC0\0\0\0", 8);
  return bytes;
}

TEST(IconDepth, ReadsAFileWrittenOutByHand) {
  const Extraction extraction = ExtractIconsOf(MonochromeFile());
  ASSERT_TRUE(Succeeded(extraction));
  const IconContents icon = ReadIcon(extraction.smallIcon.get());
  constexpr PixelBytes kFirst = {0x10, 0x20, 0x30, 0};
  constexpr PixelBytes kSecond = {0xA0, 0xB0, 0xC0, 0};
  for (int x = 0; x < 16; ++x) {
    const bool isEdge = x == 0 || x == 15;
    EXPECT_EQ(icon.Colour(x, 0), kSecond) << "column " << x;
    EXPECT_EQ(icon.Colour(x, 1), isEdge ? kSecond : kFirst) << "column " << x;
    EXPECT_EQ(icon.Colour(x, 2), kFirst) << "column " << x;
    EXPECT_EQ(icon.Colour(x, 15), kFirst) << "column " << x;
    EXPECT_EQ(icon.IsTransparent(x, 0), x <= 1) << "column " << x;
    EXPECT_EQ(icon.IsTransparent(x, 1), x == 15) << "column " << x;
    EXPECT_FALSE(icon.IsTransparent(x, 15)) << "column " << x;
  }
}

class IconDepthOf : public testing::TestWithParam<int> {};

TEST_P(IconDepthOf, GivesColoursAndMaskOfTheLargeImage) {
  const IconPicture picture = PatternPicture(32, 32, GetParam());
  const Extraction extraction = ExtractIconsOf(IconFileBytes({picture}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
}

TEST_P(IconDepthOf, GivesColoursAndMaskOfTheSmallImage) {
  const IconPicture picture = PatternPicture(16, 16, GetParam());
  const Extraction extraction = ExtractIconsOf(IconFileBytes({picture}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, picture));
}

INSTANTIATE_TEST_SUITE_P(AllDepths, IconDepthOf, testing::Values(1, 4, 8, 16, 24, 32),
                         [](const testing::TestParamInfo<int>& info) { return std::to_string(info.param) + "Bits"; });

TEST(IconDepth, AlphaIsKeptEvenWhereTheMaskIsSetOrAlphaIsZero) {
  IconPicture picture = SolidPicture(32, 32, 32, 0x123456);
  picture.pixels[picture.Index(3, 4)] = 0x00ABCDEF;
  picture.pixels[picture.Index(5, 6)] = 0x7FABCDEF;
  picture.transparent[picture.Index(5, 6)] = true;
  const Extraction extraction = ExtractIconsOf(IconFileBytes({picture}));
  ASSERT_TRUE(Succeeded(extraction));
  const IconContents icon = ReadIcon(extraction.large.get());
  EXPECT_EQ(icon.Colour(3, 4), (PixelBytes{0xEF, 0xCD, 0xAB, 0x00}));
  EXPECT_FALSE(icon.IsTransparent(3, 4)) << "the mask alone says what is transparent";
  EXPECT_EQ(icon.Colour(5, 6), (PixelBytes{0xEF, 0xCD, 0xAB, 0x7F}));
  EXPECT_TRUE(icon.IsTransparent(5, 6));
}

TEST(IconDepth, SixteenBitsGiveThe32ValuesOfEachChannel) {
  // Row 0 has all values of red, row 1 those of green, row 2 those of blue; row 3 the same with the bit that says
  // nothing.
  IconPicture picture = SolidPicture(32, 32, 16, 0);
  for (std::uint32_t value = 0; value < 32; ++value) {
    const auto column = static_cast<int>(value);
    picture.pixels[picture.Index(column, 0)] = value << 19;
    picture.pixels[picture.Index(column, 1)] = value << 11;
    picture.pixels[picture.Index(column, 2)] = value << 3;
    picture.pixels[picture.Index(column, 3)] = 0x80000000 | value << 3;
  }
  const Extraction extraction = ExtractIconsOf(IconFileBytes({picture}));
  ASSERT_TRUE(Succeeded(extraction));
  const IconContents icon = ReadIcon(extraction.large.get());
  constexpr std::array<std::uint8_t, 32> kLevels = {0,   8,   16,  24,  33,  41,  49,  57,  66,  74,  82,
                                                    90,  99,  107, 115, 123, 132, 140, 148, 156, 165, 173,
                                                    181, 189, 198, 206, 214, 222, 231, 239, 247, 255};
  for (int column = 0; column < 32; ++column) {
    const std::uint8_t level = kLevels[static_cast<std::size_t>(column)];
    EXPECT_EQ(icon.Colour(column, 0), (PixelBytes{0, 0, level, 0})) << "red " << column;
    EXPECT_EQ(icon.Colour(column, 1), (PixelBytes{0, level, 0, 0})) << "green " << column;
    EXPECT_EQ(icon.Colour(column, 2), (PixelBytes{level, 0, 0, 0})) << "blue " << column;
    EXPECT_EQ(icon.Colour(column, 3), (PixelBytes{level, 0, 0, 0})) << "blue " << column;
  }
}

TEST(IconDepth, PaletteOfATrueColourImageIsSteppedOver) {
  const IconPicture picture = PatternPicture(32, 32, 24);
  std::string image = ImageBytes(picture);
  image[32] = 3;  // colours used
  image.insert(40, 3 * 4, '\x55');
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredImage(32, 32, 24, image)}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
}

TEST(IconDepth, BytesBehindTheImageAreIgnored) {
  const IconPicture picture = PatternPicture(32, 32, 8);
  const Extraction extraction =
      ExtractIconsOf(IconFileBytes({StoredImage(32, 32, 8, ImageBytes(picture) + "more")}) + "and more");
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
}

}  // namespace
}  // namespace ondrel::test
