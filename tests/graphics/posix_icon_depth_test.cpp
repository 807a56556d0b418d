// The pixels of icon images in forms that Windows scales in its own way, or does not take: other sizes, rows from the
// top down, short and overlong palettes, old and long headers, missing masks.
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"

namespace ondrel::test {
namespace {

using DepthSizeAndOrder = std::tuple<int, std::pair<int, int>, bool>;
class PosixIconDepthOf : public testing::TestWithParam<DepthSizeAndOrder> {};

TEST_P(PosixIconDepthOf, GivesColoursAndMaskInBothSizes) {
  const auto& [bits, size, topDown] = GetParam();
  IconPicture picture = PatternPicture(size.first, size.second, bits);
  picture.topDown = topDown;
  const Extraction extraction = ExtractIconsOf(IconFileBytes({picture}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, picture));
}

std::string NameOfDepth(const testing::TestParamInfo<DepthSizeAndOrder>& info) {
  const auto& [bits, size, topDown] = info.param;
  return std::to_string(bits) + "Bits" + std::to_string(size.first) + "By" + std::to_string(size.second) +
         (topDown ? "TopDown" : "BottomUp");
}

// Sizes that need no scaling, and others whose rows need padding or whose sides differ.
INSTANTIATE_TEST_SUITE_P(AllDepths, PosixIconDepthOf,
                         testing::Combine(testing::Values(1, 4, 8, 16, 24, 32),
                                          testing::Values(std::pair{32, 32}, std::pair{16, 16}, std::pair{48, 48},
                                                          std::pair{33, 21}, std::pair{1, 1}, std::pair{7, 64},
                                                          std::pair{200, 3}),
                                          testing::Bool()),
                         NameOfDepth);

TEST(PosixIconDepth, ColoursBeyondAShortPaletteAreBlack) {
  IconPicture picture = PatternPicture(32, 32, 8);
  picture.palette.resize(100);
  const Extraction extraction = ExtractIconsOf(IconFileBytes({picture}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
}

TEST(PosixIconDepth, OldHeaderIsReadAtEveryDepth) {
  for (const int bits : {1, 4, 8, 16, 24, 32}) {
    for (const auto& size : {std::pair{32, 32}, std::pair{16, 16}, std::pair{33, 21}}) {
      IconPicture picture = PatternPicture(size.first, size.second, bits);
      picture.oldHeader = true;
      const Extraction extraction = ExtractIconsOf(IconFileBytes({picture}));
      ASSERT_TRUE(Succeeded(extraction)) << bits << " bits";
      EXPECT_TRUE(Shows(extraction.large.get(), 32, picture)) << bits << " bits";
      EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, picture)) << bits << " bits";
    }
  }
}

TEST(PosixIconDepth, OldHeaderSaysItsSizeAndDepthAgainstTheDirectory) {
  IconPicture large = PatternPicture(32, 32, 8);
  IconPicture smallIcon = PatternPicture(16, 16, 4);
  large.oldHeader = true;
  smallIcon.oldHeader = true;
  const Extraction extraction = ExtractIconsOf(
      IconFileBytes({StoredImage(16, 16, 32, ImageBytes(large)), StoredImage(32, 32, 32, ImageBytes(smallIcon))}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, large));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, smallIcon));
}

TEST(PosixIconDepth, MoreColoursThanAPaletteCanHaveAreReadAs256) {
  for (const int bits : {8, 24}) {
    for (const std::uint32_t stated : {257U, 1000U, 0x10000U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
      const IconPicture picture = PatternPicture(32, 32, bits);
      std::string image = ImageBytes(picture);
      constexpr std::size_t kColours = 32;
      for (std::size_t byte = 0; byte < 4; ++byte) image[kColours + byte] = static_cast<char>(stated >> (8 * byte));
      if (bits == 24) image.insert(40, std::size_t{256} * 4, '\x55');
      const Extraction extraction =
          ExtractIconsOf(IconFileBytes({StoredImage(32, 32, static_cast<std::uint16_t>(bits), image)}));
      ASSERT_TRUE(Succeeded(extraction)) << bits << " bits, " << stated << " colours";
      EXPECT_TRUE(Shows(extraction.large.get(), 32, picture)) << bits << " bits, " << stated << " colours";
    }
  }
}

TEST(PosixIconDepth, LongerHeaderIsSteppedOver) {
  constexpr std::size_t kLongHeader = 108;
  const IconPicture picture = PatternPicture(32, 32, 4);
  std::string image = ImageBytes(picture);
  image[0] = kLongHeader;
  image.insert(40, kLongHeader - 40, '\x55');
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredImage(32, 32, 4, image)}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
}

TEST(PosixIconDepth, MissingOrShortMaskReadsAsOpaque) {
  for (const int bits : {1, 4, 8, 16, 24, 32}) {
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
