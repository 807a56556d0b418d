// The pixels of uncompressed icon images, at every depth, size and order of rows.
#include <string>
#include <tuple>

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

using DepthSizeAndOrder = std::tuple<int, std::pair<int, int>, bool>;
class IconDepthOf : public testing::TestWithParam<DepthSizeAndOrder> {};

TEST_P(IconDepthOf, GivesColoursAndMaskInBothSizes) {
  const auto& [bits, size, topDown] = GetParam();
  IconPicture picture = PatternPicture(size.first, size.second, bits);
  picture.topDown = topDown;
  const Extraction extraction = ExtractIconsOf(IconFileBytes({picture}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, picture));
}

std::string NameOfForm(const testing::TestParamInfo<DepthSizeAndOrder>& info) {
  const auto& [bits, size, topDown] = info.param;
  return std::to_string(bits) + "Bits" + std::to_string(size.first) + "By" + std::to_string(size.second) +
         (topDown ? "TopDown" : "BottomUp");
}

// Sizes that need no scaling, and others whose rows need padding or whose sides differ.
INSTANTIATE_TEST_SUITE_P(AllForms, IconDepthOf,
                         testing::Combine(testing::Values(1, 4, 8, 24, 32),
                                          testing::Values(std::pair{32, 32}, std::pair{16, 16}, std::pair{48, 48},
                                                          std::pair{33, 21}, std::pair{1, 1}, std::pair{7, 64},
                                                          std::pair{200, 3}),
                                          testing::Bool()),
                         NameOfForm);

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

TEST(IconDepth, ColoursBeyondAShortPaletteAreBlack) {
  IconPicture picture = PatternPicture(32, 32, 8);
  picture.palette.resize(100);
  const Extraction extraction = ExtractIconsOf(IconFileBytes({picture}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
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

TEST(IconDepth, LongerHeaderIsSteppedOver) {
  constexpr std::size_t kLongHeader = 108;
  const IconPicture picture = PatternPicture(32, 32, 4);
  std::string image = ImageBytes(picture);
  image[0] = kLongHeader;
  image.insert(40, kLongHeader - 40, '\x55');
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredImage(32, 32, 4, image)}));
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

TEST(IconDepth, MissingOrShortMaskReadsAsOpaque) {
  for (const int bits : {1, 4, 8, 24, 32}) {
    IconPicture picture = PatternPicture(32, 32, bits);
    const std::string image = ImageBytes(picture);
    const std::size_t beforeMask = BytesBeforeMask(picture);
    picture.transparent.clear();
    for (const std::size_t length : {beforeMask, beforeMask + 1, image.size() - 1}) {
      const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredImage(32, 32, 0, image.substr(0, length))}));
      ASSERT_TRUE(Succeeded(extraction)) << bits << " bits, " << length << " bytes";
      EXPECT_TRUE(Shows(extraction.large.get(), 32, picture)) << bits << " bits, " << length << " bytes";
    }
  }
}

}  // namespace
}  // namespace ondrel::test
