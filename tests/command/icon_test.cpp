// What `ondrel icon` says of a file, and the picture that it makes of the icon.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "icon_views.h"
#include "project_folder.h"
#include "support/executable_bytes.h"

namespace ondrel::test {
namespace {

using testing::ElementsAre;

constexpr const char* kIconName = "disk.ico";
constexpr const char* kDiskPicture = "disk.png";

/// A picture without a mask, whose alpha bytes are of every kind.
IconPicture AlphaPicture(int size) {
  IconPicture picture = PatternPicture(size, size, 32);
  picture.transparent.clear();
  return picture;
}

StoredImage Png(const IconPicture& picture) {
  return {static_cast<std::uint8_t>(picture.width), static_cast<std::uint8_t>(picture.height), 32,
          PngImageBytes(picture)};
}

CommandResult Icon(const ProjectFolder& folder) { return folder.Run({"icon", kIconName}); }

/// The file that the command writes for an icon file of these images.
std::string PictureOf(const std::vector<StoredImage>& images) {
  const ProjectFolder folder;
  folder.Write(kIconName, IconFileBytes(images));
  ExpectSuccess(folder.Run({"icon", kIconName, "-o", kDiskPicture}));
  return ReadBytes(folder / kDiskPicture);
}

TEST(Icon, ListsTheImagesAndWhatIsMadeOfThem) {
  const ProjectFolder folder;
  folder.Write(kIconName, IconFileBytes({PatternPicture(16, 16, 4), PatternPicture(48, 48, 32), Png(AlphaPicture(64)),
                                         PatternPicture(24, 20, 8)}));
  const CommandResult result = Icon(folder);
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "disk.ico: icon file, 4 images\n"
            "\n"
            "Images  Size     Depth\n"
            "     1  16 x 16  4 bit\n"
            "     2  48 x 48  32 bit\n"
            "     3  64 x 64  PNG\n"
            "     4  24 x 20  8 bit\n"
            "\n"
            "Icon   Size     Made from\n"
            "large  32 x 32  image 4, 24 x 20, scaled\n"
            "small  16 x 16  image 1, exact\n");
  EXPECT_EQ(folder.Listing(), "disk.ico\n");
}

TEST(Icon, ListsTheImagesOfTheFirstIconOfAProgram) {
  const ProjectFolder folder;
  folder.Write(
      "console.dll",
      BuildProgram(IconResources({PatternPicture(32, 32, 8), Png(AlphaPicture(256)), PatternPicture(20, 20, 4)}))
          .bytes);
  const CommandResult result = folder.Run({"icon", "console.dll", "-o", kDiskPicture});
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "console.dll: program, first icon of 3 images\n"
            "\n"
            "Images  Size       Depth\n"
            "     1  32 x 32    8 bit\n"
            "     2  256 x 256  PNG\n"
            "     3  20 x 20    4 bit\n"
            "\n"
            "Icon   Size     Made from\n"
            "large  32 x 32  image 1, exact\n"
            "small  16 x 16  image 3, 20 x 20, scaled\n"
            "\n"
            "disk.png: 96 x 32 pixels\n");
  EXPECT_TRUE(
      SamePicture(LargeView(ReadBytes(folder / kDiskPicture)), IconView(PatternPicture(32, 32, 8), kLargeSize)));
}

TEST(Icon, OneImageMayServeBothSizes) {
  const ProjectFolder folder;
  folder.Write(kIconName, IconFileBytes({PatternPicture(32, 32, 24)}));
  const CommandResult result = Icon(folder);
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "disk.ico: icon file, 1 image\n"
            "\n"
            "Images  Size     Depth\n"
            "     1  32 x 32  24 bit\n"
            "\n"
            "Icon   Size     Made from\n"
            "large  32 x 32  image 1, exact\n"
            "small  16 x 16  image 1, 32 x 32, scaled\n");
}

TEST(Icon, TheImagesThemselvesAreBelievedNotTheDirectory) {
  const ProjectFolder folder;
  StoredImage lying = PatternPicture(32, 32, 8);
  lying.statedWidth = 16;
  lying.statedHeight = 16;
  lying.statedBits = 32;
  folder.Write(kIconName, IconFileBytes({PatternPicture(16, 16, 4), lying}));
  EXPECT_THAT(Icon(folder).output, testing::HasSubstr("     2  32 x 32  8 bit\n"));
}

TEST(Icon, AnImageThatIsNotChosenMayBeDamaged) {
  const ProjectFolder folder;
  StoredImage damaged = PatternPicture(48, 48, 32);
  damaged.statedBits = 0;
  damaged.bytes = "no image";
  folder.Write(kIconName, IconFileBytes({PatternPicture(32, 32, 4), PatternPicture(16, 16, 4), damaged}));
  const CommandResult result = Icon(folder);
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::HasSubstr("     3  48 x 48  unknown\n"));
}

TEST(Icon, TheContentTellsTheFileNotItsName) {
  const ProjectFolder folder;
  folder.Write("disk.exe", SmallIconFile());
  const CommandResult result = folder.Run({"icon", "disk.exe"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::StartsWith("disk.exe: icon file, 2 images\n"));
}

TEST(Icon, APictureIsAnnouncedBelow) {
  const ProjectFolder folder;
  folder.Write(kIconName, SmallIconFile());
  const std::string facts = Icon(folder).output;
  const CommandResult result = folder.Run({"icon", kIconName, "-o", kDiskPicture});
  ExpectSuccess(result);
  EXPECT_EQ(result.output, facts + "\ndisk.png: 96 x 32 pixels\n");
  EXPECT_EQ(folder.Listing(), "disk.ico\ndisk.png\n");
}

TEST(Icon, ThePictureSaysNothingButItsPixels) {
  const ProjectFolder folder;
  folder.Write(kIconName, SmallIconFile());
  ExpectSuccess(folder.Run({"icon", kIconName, "-o", kDiskPicture}));
  const std::string picture = ReadBytes(folder / kDiskPicture);
  EXPECT_EQ(HeaderText(picture), "96 x 32, 8 bits, colour type 6");
  EXPECT_THAT(ChunkNames(picture), ElementsAre("IHDR", "IDAT", "IEND"));
  ExpectSuccess(folder.Run({"icon", kIconName, "-o", kDiskPicture}));
  EXPECT_EQ(ReadBytes(folder / kDiskPicture), picture) << "the same again";
}

TEST(Icon, BelowTheSmallIconThePictureIsTransparent) {
  const RgbaPicture picture = DecodePng(PictureOf({SolidPicture(32, 32, 32, 0xFF0000)}));
  ASSERT_EQ(picture.height, 32);
  for (int y = 16; y < 32; ++y) {
    for (int x = 64; x < 96; ++x) EXPECT_EQ(picture.At(x, y), RgbaPixel()) << x << ", " << y;
  }
}

struct Depicted {
  const char* name;
  IconPicture large;
  IconPicture smallIcon;
};

std::ostream& operator<<(std::ostream& out, const Depicted& depicted) { return out << depicted.name; }

Depicted InDepth(const char* name, int depth) {
  return {name, PatternPicture(32, 32, depth), PatternPicture(16, 16, depth)};
}

/// Colours and a mask, and no alpha, although there is room for it.
IconPicture WithoutAlpha(IconPicture picture) {
  for (std::uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFF;
  return picture;
}

/// One pixel that is hardly to be seen is enough for alpha to count.
IconPicture WithOneAlpha(IconPicture picture) {
  picture = WithoutAlpha(std::move(picture));
  picture.pixels[picture.pixels.size() / 2 + 3] |= 0x01000000;
  return picture;
}

IconPicture WithoutMask(IconPicture picture) {
  picture.transparent.clear();
  return picture;
}

const Depicted kDepicted[] = {
    InDepth("Depth1", 1),
    InDepth("Depth4", 4),
    InDepth("Depth8", 8),
    InDepth("Depth24", 24),
    InDepth("Depth32", 32),
    {"Depth32WithoutAlpha", WithoutAlpha(PatternPicture(32, 32, 32)), WithoutAlpha(PatternPicture(16, 16, 32))},
    {"Depth32WithOneAlpha", WithOneAlpha(PatternPicture(32, 32, 32)), WithOneAlpha(PatternPicture(16, 16, 32))},
    {"LargeAloneHasAlpha", PatternPicture(32, 32, 32), PatternPicture(16, 16, 8)},
    {"SmallAloneHasAlpha", PatternPicture(32, 32, 24), PatternPicture(16, 16, 32)},
    {"WithoutMask", WithoutMask(PatternPicture(32, 32, 24)), WithoutMask(PatternPicture(16, 16, 24))},
};

class IconPictureOfDepth : public testing::TestWithParam<Depicted> {};

TEST_P(IconPictureOfDepth, ShowsTheLargeImageAndItsMask) {
  EXPECT_TRUE(SamePicture(LargeView(PictureOf({GetParam().smallIcon, GetParam().large})),
                          IconView(GetParam().large, kLargeSize)));
}

TEST_P(IconPictureOfDepth, ShowsTheSmallImageAndItsMask) {
  EXPECT_TRUE(SamePicture(SmallView(PictureOf({GetParam().smallIcon, GetParam().large})),
                          IconView(GetParam().smallIcon, kSmallSize)));
}

INSTANTIATE_TEST_SUITE_P(Icon, IconPictureOfDepth, testing::ValuesIn(kDepicted),
                         [](const auto& info) { return std::string(info.param.name); });

/// A picture that decides by alpha alone, as PNG images do.
IconPicture MaskedByAlpha(int size) {
  IconPicture picture = AlphaPicture(size);
  for (std::size_t pixel = 0; pixel < picture.pixels.size(); ++pixel) {
    if (pixel % 3 == 0) picture.pixels[pixel] &= 0xFFFFFF;
    picture.transparent.push_back(picture.pixels[pixel] >> 24 == 0);
  }
  return picture;
}

TEST(Icon, APngImageIsPicturedInItsColours) {
  const IconPicture large = MaskedByAlpha(32);
  const std::string picture = PictureOf({Png(large), Png(MaskedByAlpha(16))});
  EXPECT_TRUE(
      SamePicture(DecodePng(picture).Columns(0, kLargeSize), IconView(large, kLargeSize).Columns(0, kLargeSize)));
}

TEST(Icon, APngImageIsPicturedWithTheMaskOfItsAlpha) {
  const IconPicture large = MaskedByAlpha(32);
  const IconPicture smallIcon = MaskedByAlpha(16);
  const std::string picture = PictureOf({Png(large), Png(smallIcon)});
  EXPECT_TRUE(SamePicture(LargeView(picture), IconView(large, kLargeSize)));
  EXPECT_TRUE(SamePicture(SmallView(picture), IconView(smallIcon, kSmallSize)));
}

}  // namespace
}  // namespace ondrel::test
