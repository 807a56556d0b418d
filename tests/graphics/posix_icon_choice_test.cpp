// Which image of an icon file is shown where Windows leaves it open: the choice among images of other sizes, whose word
// counts about an image, how it is scaled, and what a damaged one does.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/icon_choice.h"
#include "support/live_handles.h"

namespace ondrel::test {
namespace {

class PosixIconChoice : public testing::TestWithParam<Choice> {};

TEST_P(PosixIconChoice, TakesTheBestForTheLargeIcon) {
  const Choice& choice = GetParam();
  const Extraction extraction = ExtractChoice(choice);
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, choice.pictures[choice.large]));
}

TEST_P(PosixIconChoice, TakesTheBestForTheSmallIcon) {
  const Choice& choice = GetParam();
  const Extraction extraction = ExtractChoice(choice);
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, choice.pictures[choice.smallIcon]));
}

INSTANTIATE_TEST_SUITE_P(
    Rules, PosixIconChoice,
    testing::Values(
        Choice{"ExactSizeBeforeDepth", {Square(31, 32, 0x111111), Square(32, 1, 0x222222)}, 1, 0},
        Choice{"NearestSize", {Square(200, 32, 0x111111), Square(40, 32, 0x222222), Square(20, 32, 0x333333)}, 1, 2},
        Choice{"LargerOfTwoAtTheSameDistance", {Square(24, 32, 0x111111), Square(40, 1, 0x222222)}, 1, 0},
        Choice{"SmallerWhenItIsNearer", {Square(28, 8, 0x111111), Square(40, 32, 0x222222)}, 0, 0},
        Choice{"BothSidesCount", {SolidPicture(32, 64, 32, 0x111111), Square(30, 8, 0x222222)}, 1, 1},
        Choice{"FirstOfEquals", {Square(32, 32, 0x111111), Square(32, 32, 0x222222)}, 0, 0}),
    NameOfChoice);

TEST(PosixIconChoice, ImagesOwnHeaderDecidesAgainstTheDirectory) {
  const IconPicture large = Square(32, 32, 0x111111);
  const IconPicture smallIcon = Square(16, 32, 0x222222);
  // Each is said to have the size of the other.
  const Extraction extraction = ExtractIconsOf(
      IconFileBytes({StoredImage(16, 16, 1, ImageBytes(large)), StoredImage(32, 32, 1, ImageBytes(smallIcon))}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, large));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, smallIcon));
}

TEST(PosixIconChoice, ImagesOwnDepthDecidesAgainstTheDirectory) {
  const IconPicture poor = Square(32, 1, 0x111111);
  const IconPicture rich = Square(32, 32, 0x222222);
  const Extraction extraction = ExtractIconsOf(
      IconFileBytes({StoredImage(32, 32, 32, ImageBytes(poor)), StoredImage(32, 32, 1, ImageBytes(rich))}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, rich));
}

TEST(PosixIconChoice, ImageOf256PixelsIsScaled) {
  const IconPicture picture = PatternPicture(256, 256, 8);
  const Extraction extraction = ExtractIconsOf(IconFileBytes({picture}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, picture));
}

TEST(PosixIconChoice, DamagedImageThatIsChosenIsNotReplacedByAnother) {
  const IconPicture whole = Square(48, 32, 0x111111);
  const std::string file = IconFileBytes({StoredImage(32, 32, 32, "no image"), whole});
  EXPECT_TRUE(FailedWith(ExtractIconsOf(file), kNoIconsFound, ERROR_INVALID_DATA));
}

TEST(PosixIconChoice, DamagedSmallImageLeavesNoLargeIconEither) {
  const std::string file = IconFileBytes({Square(32, 32, 0x111111), StoredImage(16, 16, 32, "no image")});
  EXPECT_TRUE(FailedWith(ExtractIconsOf(file), kNoIconsFound, ERROR_INVALID_DATA));
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

}  // namespace
}  // namespace ondrel::test
