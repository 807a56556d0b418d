// Which image of an icon file is shown at 32 x 32 and at 16 x 16 pixels.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/icon_choice.h"

namespace ondrel::test {
namespace {

class IconChoice : public testing::TestWithParam<Choice> {};

TEST_P(IconChoice, TakesTheBestForTheLargeIcon) {
  const Choice& choice = GetParam();
  const Extraction extraction = ExtractChoice(choice);
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, choice.pictures[choice.large]));
}

TEST_P(IconChoice, TakesTheBestForTheSmallIcon) {
  const Choice& choice = GetParam();
  const Extraction extraction = ExtractChoice(choice);
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, choice.pictures[choice.smallIcon]));
}

INSTANTIATE_TEST_SUITE_P(Rules, IconChoice,
                         testing::Values(Choice{"ExactSizesInAnyOrder",
                                                {Square(48, 32, 0x111111), Square(16, 8, 0x222222),
                                                 Square(64, 32, 0x333333), Square(32, 4, 0x444444)},
                                                3,
                                                1},
                                         Choice{"HigherDepthOfOneSize",
                                                {Square(32, 4, 0x111111), Square(32, 32, 0x222222),
                                                 Square(32, 24, 0x333333), Square(16, 1, 0x444444),
                                                 Square(16, 8, 0x555555)},
                                                1,
                                                4},
                                         Choice{"TheOnlyOne", {Square(2, 1, 0x111111)}, 0, 0},
                                         Choice{"OneOf256Pixels", {Square(256, 8, 0x111111)}, 0, 0}),
                         NameOfChoice);

TEST(IconChoice, StatedSizeOfZeroMeans256) {
  const IconPicture whole = Square(100, 32, 0x111111);
  // The directory must be believed about a damaged image: at 256 pixels it is farther off than the whole one, at 0 it
  // would be nearer, be taken, and end the call.
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredImage(0, 0, 32, "no image"), StoredImage(whole)}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, whole));
}

TEST(IconChoice, DamagedImageThatIsNotChosenDoesNoHarm) {
  const IconPicture whole = Square(32, 32, 0x111111);
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredImage(48, 48, 32, "no image"), whole}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, whole));
}

}  // namespace
}  // namespace ondrel::test
