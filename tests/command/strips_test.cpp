// The pictures that `ondrel strips` writes, and what it says of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "strip_images.h"
#include "support/model/hand_bytes.h"
#include "support/model/icon_fixtures.h"

namespace ondrel::test {
namespace {

using testing::ElementsAre;

constexpr RgbaPixel kMagenta = {0xFF, 0, 0xFF, 0xFF};
constexpr RgbaPixel kBlackPixel = {0, 0, 0, 0xFF};

RgbaPicture PictureIn(const ProjectFolder& folder, const char* name) { return DecodePng(ReadBytes(folder / name)); }

/// An icon of an object image: the large image, then the small one.
std::string StoredIcon(const IconPicture& large, const IconPicture& smallIcon) {
  return StoredBitmaps(large) + StoredBitmaps(smallIcon);
}

TEST(Strips, OfAnImageAreItsPixelsOneByOne) {
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage({TinyIconBytes(), SolidIconBytes(2, 1, 0x00030201)}));
  const CommandResult result = RunStrips(folder, kImageName, "123456");
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "small.png: 2 icons, 2 x 1 pixels\n"
            "large.png: 2 icons, 4 x 2 pixels\n");
  EXPECT_EQ(folder.Listing(), "console.img\nlarge.png\nsmall.png\n");

  constexpr RgbaPixel kKey = {0x12, 0x34, 0x56, 0xFF};
  constexpr RgbaPixel kSolid = {1, 2, 3, 0xFF};
  RgbaPicture large(4, 2, kSolid);
  large.At(0, 0) = {3, 2, 1, 0xFF};
  large.At(1, 0) = kKey;
  large.At(0, 1) = kKey;
  large.At(1, 1) = {0x0F, 0x0E, 0x0D, 0xFF};
  EXPECT_TRUE(SamePicture(PictureIn(folder, kLargeName), large));
  RgbaPicture smallIcons(2, 1, kSolid);
  smallIcons.At(0, 0) = kKey;
  EXPECT_TRUE(SamePicture(PictureIn(folder, kSmallName), smallIcons));
}

TEST(Strips, ThePicturesSayNothingButTheirPixels) {
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage({TinyIconBytes()}));
  ExpectSuccess(RunStrips(folder, kImageName));
  const std::string picture = ReadBytes(folder / kLargeName);
  EXPECT_EQ(HeaderText(picture), "2 x 2, 8 bits, colour type 2");
  EXPECT_THAT(ChunkNames(picture), ElementsAre("IHDR", "IDAT", "IEND"));
  ExpectSuccess(RunStrips(folder, kImageName));
  EXPECT_EQ(ReadBytes(folder / kLargeName), picture) << "the same again";
}

TEST(Strips, OneOfThemMayBeEnough) {
  for (const bool large : {false, true}) {
    const ProjectFolder folder;
    folder.Write(kImageName, IconImage({TinyIconBytes()}));
    const CommandResult result =
        folder.Run({"strips", kImageName, "--key", "FF00FF", large ? "--large" : "--small", "one.png"});
    ExpectSuccess(result);
    EXPECT_EQ(result.output, large ? "one.png: 1 icon, 2 x 2 pixels\n" : "one.png: 1 icon, 1 x 1 pixels\n");
    EXPECT_EQ(folder.Listing(), "console.img\none.png\n");
  }
}

TEST(Strips, TheKeyIsRedGreenAndBlueInAnyLetters) {
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage({TinyIconBytes()}));
  for (const std::string key : {"c0FfEe", "#C0fFeE", "C0FFEE"}) {
    ExpectSuccess(RunStrips(folder, kImageName, key));
    EXPECT_EQ(PictureIn(folder, kSmallName).At(0, 0), (RgbaPixel{0xC0, 0xFF, 0xEE, 0xFF})) << key;
  }
}

TEST(Strips, OfSeveralIconsStandSideBySide) {
  const std::vector<IconPicture> large = {PatternPicture(32, 32, 32), PatternPicture(32, 32, 4),
                                          SolidPicture(32, 32, 32, 0x112233)};
  const std::vector<IconPicture> smallIcons = {PatternPicture(16, 16, 8), PatternPicture(16, 16, 32),
                                               SolidPicture(16, 16, 32, 0x445566)};
  std::vector<std::string> icons;
  for (std::size_t icon = 0; icon < large.size(); ++icon) icons.push_back(StoredIcon(large[icon], smallIcons[icon]));
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage(icons));
  const CommandResult result = RunStrips(folder, kImageName);
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "small.png: 3 icons, 48 x 16 pixels\n"
            "large.png: 3 icons, 96 x 32 pixels\n");
  EXPECT_TRUE(SamePicture(PictureIn(folder, kLargeName), StripOf(large, kMagenta)));
  EXPECT_TRUE(SamePicture(PictureIn(folder, kSmallName), StripOf(smallIcons, kMagenta)));
}

TEST(Strips, IconsOfOtherSizesAreCutWhereTheFirstOnesSizeEnds) {
  const std::vector<IconPicture> pictures = {PatternPicture(5, 4, 32), PatternPicture(7, 6, 32),
                                             PatternPicture(3, 2, 32)};
  std::vector<std::string> icons;
  for (const IconPicture& picture : pictures) icons.push_back(StoredIcon(picture, picture));
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage(icons));
  const CommandResult result = RunStrips(folder, kImageName);
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::StartsWith("small.png: 3 icons, 15 x 4 pixels\n"));
  for (const char* const name : {kSmallName, kLargeName}) {
    EXPECT_TRUE(SamePicture(PictureIn(folder, name), StripOf(pictures, kMagenta))) << name;
  }
}

TEST(Strips, OfTwoHundredIcons) {
  std::vector<IconPicture> pictures;
  std::vector<std::string> icons;
  for (std::uint32_t number = 0; number < 200; ++number) {
    pictures.push_back(SolidPicture(16, 16, 32, number * 0x010203));
    icons.push_back(StoredIcon(pictures.back(), pictures.back()));
  }
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage(icons));
  ExpectSuccess(RunStrips(folder, kImageName));
  EXPECT_TRUE(SamePicture(PictureIn(folder, kLargeName), StripOf(pictures, kMagenta)));
}

TEST(Strips, AreBlackWhereTheFirstIconHasNot32Bits) {
  for (const int depth : {24, 8}) {
    const int row = (3 * depth / 8 + 1) / 2 * 2;
    const std::string colours(static_cast<std::size_t>(row * 2), '\x55');
    const std::string first = BitmapBytes(3, 2, row, static_cast<unsigned>(depth), colours) +
                              BitmapBytes(3, 2, 2, 1, FromHex("E0 00  E0 00")) +  // transparent everywhere
                              StoredBitmaps(PatternPicture(4, 1, 32));
    const IconPicture second = PatternPicture(3, 2, 32);
    const IconPicture secondSmall = PatternPicture(4, 1, 32);
    const ProjectFolder folder;
    folder.Write(kImageName, IconImage({first, StoredIcon(second, secondSmall)}));
    const CommandResult result = RunStrips(folder, kImageName);
    ExpectSuccess(result);
    EXPECT_THAT(result.output, testing::EndsWith("large.png: 2 icons, 6 x 2 pixels\n"));
    EXPECT_TRUE(SamePicture(PictureIn(folder, kLargeName), RgbaPicture(6, 2, kBlackPixel))) << depth << " bits";
    EXPECT_TRUE(SamePicture(PictureIn(folder, kSmallName), StripOf({PatternPicture(4, 1, 32), secondSmall}, kMagenta)));
  }
}

TEST(Strips, MayBeWiderThanMostPictures) {
  IconPicture wide = SolidPicture(600'000, 1, 32, 0x123456);
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage({StoredIcon(wide, SolidPicture(1, 1, 32, 0)),
                                      StoredIcon(SolidPicture(1, 1, 32, 0), SolidPicture(1, 1, 32, 0))}));
  const CommandResult result = RunStrips(folder, kImageName);
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::EndsWith("large.png: 2 icons, 1200000 x 1 pixels\n"));
  EXPECT_EQ(HeaderText(ReadBytes(folder / kLargeName)), "1200000 x 1, 8 bits, colour type 2");
}

/// A project of three icon files and an image of it.
class StripsOfAProject : public testing::Test {
 protected:
  StripsOfAProject() {
    m_folder.WriteProject(Lines({R"(<Project><FileGroup>)", R"(<Icon Cookie="30" Name="icons\c.ico"/>)",
                                 R"(<Icon Cookie="10" Name="icons\a.ico"/><Icon Cookie="-5" Name="b.ico"/>)",
                                 R"(<File Cookie="1" Name="a.js"/></FileGroup></Project>)"}));
    m_folder.Write("b.ico", IconFileBytes({m_large[0], m_smallIcons[0]}));
    m_folder.Write("icons/a.ico", IconFileBytes({m_large[1], m_smallIcons[1]}));
    m_folder.Write("icons/c.ico", IconFileBytes({m_large[2], m_smallIcons[2]}));
    m_folder.Write("a.js", "run()");
  }

  // In the order of their cookies.
  const std::vector<IconPicture> m_large = {PatternPicture(32, 32, 32), PatternPicture(32, 32, 8),
                                            PatternPicture(32, 32, 1)};
  const std::vector<IconPicture> m_smallIcons = {PatternPicture(16, 16, 24), PatternPicture(16, 16, 32),
                                                 PatternPicture(16, 16, 4)};
  ProjectFolder m_folder;
};

TEST_F(StripsOfAProject, HaveItsLargeIcons) {
  const CommandResult result = RunStrips(m_folder, kProjectName);
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "small.png: 3 icons, 48 x 16 pixels\n"
            "large.png: 3 icons, 96 x 32 pixels\n");
  EXPECT_TRUE(SamePicture(PictureIn(m_folder, kLargeName), StripOf(m_large, kMagenta)));
}

TEST_F(StripsOfAProject, HaveItsSmallIcons) {
  ExpectSuccess(RunStrips(m_folder, kProjectName));
  EXPECT_TRUE(SamePicture(PictureIn(m_folder, kSmallName), StripOf(m_smallIcons, kMagenta)));
}

TEST_F(StripsOfAProject, AreThoseOfItsImage) {
  ExpectSuccess(RunStrips(m_folder, kProjectName));
  const std::string smallIcons = ReadBytes(m_folder / kSmallName);
  const std::string large = ReadBytes(m_folder / kLargeName);
  std::filesystem::remove(m_folder / kSmallName);
  std::filesystem::remove(m_folder / kLargeName);
  ExpectSuccess(m_folder.Compile());
  ExpectSuccess(RunStrips(m_folder, kImageName));
  EXPECT_EQ(ReadBytes(m_folder / kSmallName), smallIcons);
  EXPECT_EQ(ReadBytes(m_folder / kLargeName), large);
}

TEST_F(StripsOfAProject, NeedNoCodeFiles) {
  std::filesystem::remove(m_folder / "a.js");
  ExpectSuccess(RunStrips(m_folder, kProjectName));
}

TEST_F(StripsOfAProject, ReplaceOldPictures) {
  m_folder.Write(kSmallName, std::string(100'000, 'x'));
  ExpectSuccess(RunStrips(m_folder, kProjectName));
  EXPECT_EQ(PictureIn(m_folder, kSmallName).width, 48);
}

}  // namespace
}  // namespace ondrel::test
