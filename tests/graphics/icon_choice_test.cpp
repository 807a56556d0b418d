// Which image of an icon file is shown at 32 x 32 and at 16 x 16 pixels.
#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"

namespace ondrel::test {
namespace {

struct Choice {
  const char* name;
  std::vector<IconPicture> pictures;
  std::size_t large;      // the picture expected at 32 x 32
  std::size_t smallIcon;  // and at 16 x 16
};

// One-colour pictures, so that scaling cannot blur which of them is shown.
IconPicture Sized(int width, int height, int bits, std::uint32_t colour) {
  return SolidPicture(width, height, bits, colour);
}
IconPicture Square(int size, int bits, std::uint32_t colour) { return Sized(size, size, bits, colour); }

class IconChoice : public testing::TestWithParam<Choice> {};

TEST_P(IconChoice, TakesTheBestForEachSize) {
  const Choice& choice = GetParam();
  const Extraction extraction = ExtractIconsOf(IconFileBytes({choice.pictures.begin(), choice.pictures.end()}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, choice.pictures[choice.large]));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, choice.pictures[choice.smallIcon]));
}

INSTANTIATE_TEST_SUITE_P(
    Rules, IconChoice,
    testing::Values(
        Choice{"ExactSizesInAnyOrder",
               {Square(48, 32, 0x111111), Square(16, 8, 0x222222), Square(64, 32, 0x333333), Square(32, 4, 0x444444)},
               3,
               1},
        Choice{"ExactSizeBeforeDepth", {Square(31, 32, 0x111111), Square(32, 1, 0x222222)}, 1, 0},
        Choice{"NearestSize", {Square(200, 32, 0x111111), Square(40, 32, 0x222222), Square(20, 32, 0x333333)}, 1, 2},
        Choice{"LargerOfTwoAtTheSameDistance", {Square(24, 32, 0x111111), Square(40, 1, 0x222222)}, 1, 0},
        Choice{"SmallerWhenItIsNearer", {Square(28, 8, 0x111111), Square(40, 32, 0x222222)}, 0, 0},
        Choice{"BothSidesCount", {Sized(32, 64, 32, 0x111111), Sized(30, 30, 8, 0x222222)}, 1, 1},
        Choice{"HigherDepthOfOneSize",
               {Square(32, 4, 0x111111), Square(32, 32, 0x222222), Square(32, 24, 0x333333), Square(16, 1, 0x444444),
                Square(16, 8, 0x555555)},
               1,
               4},
        Choice{"FirstOfEquals", {Square(32, 32, 0x111111), Square(32, 32, 0x222222)}, 0, 0},
        Choice{"TheOnlyOne", {Square(2, 1, 0x111111)}, 0, 0}),
    [](const testing::TestParamInfo<Choice>& info) { return info.param.name; });

TEST(IconChoice, ImagesOwnHeaderDecidesAgainstTheDirectory) {
  const IconPicture large = Square(32, 32, 0x111111);
  const IconPicture smallIcon = Square(16, 32, 0x222222);
  // Each is said to have the size of the other.
  const Extraction extraction = ExtractIconsOf(
      IconFileBytes({StoredImage(16, 16, 1, ImageBytes(large)), StoredImage(32, 32, 1, ImageBytes(smallIcon))}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, large));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, smallIcon));
}

TEST(IconChoice, ImagesOwnDepthDecidesAgainstTheDirectory) {
  const IconPicture poor = Square(32, 1, 0x111111);
  const IconPicture rich = Square(32, 32, 0x222222);
  const Extraction extraction = ExtractIconsOf(
      IconFileBytes({StoredImage(32, 32, 32, ImageBytes(poor)), StoredImage(32, 32, 1, ImageBytes(rich))}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, rich));
}

TEST(IconChoice, StatedSizeOfZeroMeans256) {
  const IconPicture whole = Square(100, 32, 0x111111);
  // The directory must be believed about a damaged image: at 256 pixels it is farther off than the whole one, at 0 it
  // would be nearer, be taken, and end the call.
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredImage(0, 0, 32, "no image"), StoredImage(whole)}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, whole));
}

TEST(IconChoice, ImageOf256PixelsIsScaled) {
  const IconPicture picture = PatternPicture(256, 256, 8);
  const Extraction extraction = ExtractIconsOf(IconFileBytes({picture}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, picture));
}

TEST(IconChoice, DamagedImageThatIsNotChosenDoesNoHarm) {
  const IconPicture whole = Square(32, 32, 0x111111);
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredImage(48, 48, 32, "no image"), whole}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, whole));
}

TEST(IconChoice, DamagedImageThatIsChosenIsNotReplacedByAnother) {
  const IconPicture whole = Square(48, 32, 0x111111);
  const std::string file = IconFileBytes({StoredImage(32, 32, 32, "no image"), whole});
  EXPECT_TRUE(FailedWith(ExtractIconsOf(file), kNoIcon, ERROR_INVALID_DATA));
}

TEST(IconChoice, DamagedSmallImageLeavesNoLargeIconEither) {
  const std::string file = IconFileBytes({Square(32, 32, 0x111111), StoredImage(16, 16, 32, "no image")});
  EXPECT_TRUE(FailedWith(ExtractIconsOf(file), kNoIcon, ERROR_INVALID_DATA));
  EXPECT_EQ(platform::CountLiveHandles().icons, 0);
}

}  // namespace
}  // namespace ondrel::test
