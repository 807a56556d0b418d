// The icons of programs and libraries, 32-bit and 64-bit: which of them is the first, and what it is made of.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/first_icon.h"
#include "graphics/icon_choice.h"
#include "support/executable_bytes.h"
#include "support/little_endian_bytes.h"
#include "support/png_bytes.h"

namespace ondrel::test {
namespace {

constexpr std::uint32_t kEnglish = 1033;
constexpr std::uint32_t kGerman = 1031;

FirstIcon FirstIconOfTypes(const std::vector<ResourceType>& types) {
  return test::FirstIconOf(BuildProgram(types).bytes);
}

/// A group of the one image that has this number, 32 x 32 pixels large.
std::string GroupOf(std::uint16_t number) { return IconGroupBytes({{number, Square(32, 32, 0)}}); }

/// Images with the numbers 1 and 2.
const IconPicture& First() {
  static const IconPicture picture = Square(32, 32, 0x111111);
  return picture;
}
const IconPicture& Second() {
  static const IconPicture picture = Square(32, 32, 0x222222);
  return picture;
}
ResourceType TwoImages() { return {kIconImageType, {{1, ImageBytes(First())}, {2, ImageBytes(Second())}}}; }

class ProgramIconOf : public testing::TestWithParam<ProgramKind> {};

TEST_P(ProgramIconOf, HasTheLargeImageOfItsGroup) {
  const IconPicture large = PatternPicture(32, 32, 32);
  const std::string bytes = BuildProgram(IconResources({large, PatternPicture(16, 16, 8)}), GetParam()).bytes;
  const FirstIcon icon = test::FirstIconOf(bytes);
  ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(icon.large.get(), 32, large));
}

TEST_P(ProgramIconOf, HasTheSmallImageOfItsGroup) {
  const IconPicture smallIcon = PatternPicture(16, 16, 8);
  const std::string bytes = BuildProgram(IconResources({PatternPicture(32, 32, 32), smallIcon}), GetParam()).bytes;
  const FirstIcon icon = test::FirstIconOf(bytes);
  ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(icon.smallIcon.get(), 16, smallIcon));
}

TEST_P(ProgramIconOf, WithoutResourcesIsNone) {
  const FirstIcon icon = test::FirstIconOf(BuildProgram({}, GetParam()).bytes);
  EXPECT_TRUE(EndedWith(icon, ERROR_RESOURCE_DATA_NOT_FOUND));
}

INSTANTIATE_TEST_SUITE_P(BothKinds, ProgramIconOf, testing::Values(ProgramKind::pe32, ProgramKind::pe32Plus),
                         [](const testing::TestParamInfo<ProgramKind>& info) {
                           return info.param == ProgramKind::pe32 ? "Pe32" : "Pe32Plus";
                         });

TEST(ProgramIcon, IsFoundWhateverTheFileIsCalled) {
  const TemporaryFolder folder;
  const std::string bytes = BuildProgram(IconResources({First()})).bytes;
  for (const char* const name : {"a.exe", "a.dll", "a.ico", "a"}) {
    const FirstIcon icon = FirstIconAt(folder.Write(name, bytes));
    ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS)) << name;
    EXPECT_TRUE(Shows(icon.large.get(), 32, First())) << name;
  }
}

TEST(ProgramIcon, OtherResourcesDoNotCount) {
  const FirstIcon icon = FirstIconOfTypes({{u"ICONS", {{1, "text"}}},
                                           {1, {{1, "a cursor"}}},
                                           TwoImages(),
                                           {12, {{1, "a group of cursors"}}},
                                           {kIconGroupType, {{1, GroupOf(2)}}},
                                           {24, {{1, "a manifest"}}}});
  ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(icon.large.get(), 32, Second()));
}

TEST(ProgramIcon, IsThatOfTheGroupWithTheLowestNumber) {
  const FirstIcon icon = FirstIconOfTypes({TwoImages(), {kIconGroupType, {{7, GroupOf(2)}, {101, GroupOf(1)}}}});
  ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(icon.large.get(), 32, Second()));
}

TEST(ProgramIcon, GroupsWithATextComeBeforeThoseWithANumber) {
  const FirstIcon icon = FirstIconOfTypes(
      {TwoImages(), {kIconGroupType, {{u"MAIN", GroupOf(2)}, {u"OTHER", GroupOf(1)}, {1, GroupOf(1)}}}});
  ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(icon.large.get(), 32, Second()));
}

TEST(ProgramIcon, FirstLanguageOfAGroupCounts) {
  const FirstIcon icon =
      FirstIconOfTypes({TwoImages(), {kIconGroupType, {{1, {{kGerman, GroupOf(2)}, {kEnglish, GroupOf(1)}}}}}});
  ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(icon.large.get(), 32, Second()));
}

TEST(ProgramIcon, FirstLanguageOfAnImageCounts) {
  const FirstIcon icon =
      FirstIconOfTypes({{kIconImageType, {{1, {{kGerman, ImageBytes(Second())}, {kEnglish, ImageBytes(First())}}}}},
                        {kIconGroupType, {{1, GroupOf(1)}}}});
  ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(icon.large.get(), 32, Second()));
}

TEST(ProgramIcon, ImagesMayStandInAnyOrderAndBetweenOthers) {
  const IconPicture large = Square(32, 24, 0x333333);
  const IconPicture other = Square(48, 24, 0x444444);
  const FirstIcon icon = FirstIconOfTypes(
      {{kIconImageType,
        {{1, ImageBytes(First())}, {2, ImageBytes(other)}, {3, ImageBytes(Second())}, {9, ImageBytes(large)}}},
       {kIconGroupType, {{1, IconGroupBytes({{9, large}, {2, other}})}}}});
  ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(icon.large.get(), 32, large));
}

TEST(ProgramIcon, UpperHalfOfANumberSaysNothing) {
  ProgramBytes program = BuildProgram(IconResources({First()}));
  PutDword(program.bytes, program.directories[0] + 16 + 8, 0x10000 + kIconGroupType);
  PutDword(program.bytes, program.directories[1] + 16, 0x70001);
  const FirstIcon icon = test::FirstIconOf(program.bytes);
  ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(icon.large.get(), 32, First()));
}

/// Images of several sizes and depths, and those that the two icons are made of.
struct ProgramIconChoice {
  std::vector<IconPicture> pictures = {Square(48, 32, 0x111111), Square(16, 1, 0x222222),  Square(64, 32, 0x333333),
                                       Square(32, 4, 0x444444),  Square(32, 24, 0x555555), Square(16, 8, 0x666666)};
  const IconPicture& large = pictures[4];
  const IconPicture& smallIcon = pictures[5];
  FirstIcon icon = FirstIconOfTypes(IconResources({pictures.begin(), pictures.end()}));
};

TEST(ProgramIcon, LargeIconIsOfTheExactSizeAndTheHighestDepth) {
  const ProgramIconChoice choice;
  ASSERT_TRUE(EndedWith(choice.icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(choice.icon.large.get(), 32, choice.large));
}

TEST(ProgramIcon, SmallIconIsOfTheExactSizeAndTheHighestDepth) {
  const ProgramIconChoice choice;
  ASSERT_TRUE(EndedWith(choice.icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(choice.icon.smallIcon.get(), 16, choice.smallIcon));
}

TEST(ProgramIcon, StatedSizeOfZeroMeans256) {
  // The group must be believed about an image that is not there: at 256 pixels it is farther off than the whole one, at
  // 0 it would be nearer, be taken, and end the call.
  const IconPicture whole = Square(100, 32, 0x111111);
  const FirstIcon icon =
      FirstIconOfTypes({{kIconImageType, {{1, ImageBytes(whole)}}},
                        {kIconGroupType, {{1, IconGroupBytes({{2, StoredImage(0, 0, 32, "")}, {1, whole}})}}}});
  ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(icon.large.get(), 32, whole));
}

TEST(ProgramIcon, MissingImageThatIsNotChosenDoesNoHarm) {
  const FirstIcon icon =
      FirstIconOfTypes({TwoImages(), {kIconGroupType, {{1, IconGroupBytes({{7, Square(48, 32, 0)}, {2, Second()}})}}}});
  ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(icon.large.get(), 32, Second()));
}

TEST(ProgramIcon, MissingImageThatIsChosenIsDamage) {
  EXPECT_TRUE(EndedWith(FirstIconOfTypes({TwoImages(), {kIconGroupType, {{1, GroupOf(7)}}}}), ERROR_INVALID_DATA));
  EXPECT_TRUE(EndedWith(FirstIconOfTypes({{kIconGroupType, {{1, GroupOf(1)}}}}), ERROR_INVALID_DATA))
      << "no images at all";
}

TEST(ProgramIcon, LengthThatTheGroupStatesDoesNotCount) {
  for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{100000}}) {
    StoredImage stated = First();
    stated.bytes = std::string(length, '\0');
    const FirstIcon icon = FirstIconOfTypes({TwoImages(), {kIconGroupType, {{1, IconGroupBytes({{1, stated}})}}}});
    ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS)) << length;
    EXPECT_TRUE(Shows(icon.large.get(), 32, First())) << length;
  }
}

TEST(ProgramIcon, LengthOfTheResourceCounts) {
  ProgramBytes program = BuildProgram(IconResources({First()}));
  const std::size_t length = program.descriptions[0] + 4;
  PutDword(program.bytes, length, 39);
  EXPECT_TRUE(EndedWith(test::FirstIconOf(program.bytes), ERROR_INVALID_DATA));
}

TEST(ProgramIcon, PngImageIsOneOfTheImages) {
  const FirstIcon icon =
      FirstIconOfTypes(IconResources({StoredPng(PngOf(Square(32, 32, 0xFFFFFF))), Square(48, 8, 0x222222)}));
  ASSERT_TRUE(EndedWith(icon, ERROR_SUCCESS));
  EXPECT_TRUE(Shows(icon.large.get(), 32, Square(32, 32, 0xFFFFFF)));
}

TEST(ProgramIcon, DamagedPngImageIsDamage) {
  const std::string png = PngSignature() + PngHeader(32, 32, PngColour::trueColourAlpha, 8);
  EXPECT_TRUE(EndedWith(FirstIconOfTypes(IconResources({StoredImage(32, 32, 32, png)})), ERROR_INVALID_DATA));
}

TEST(ProgramIcon, GroupOfAnotherKindIsNoIcon) {
  const std::string group = IconGroupBytes({{1, First()}}, kCursorFileType);
  EXPECT_TRUE(
      EndedWith(FirstIconOfTypes({TwoImages(), {kIconGroupType, {{1, group}}}}), ERROR_RESOURCE_DATA_NOT_FOUND));
}

}  // namespace
}  // namespace ondrel::test
