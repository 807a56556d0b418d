// The pixels and masks of PNG images, in every form that there is. On Windows the system has a decoder of its own for
// them, and one that stands in for Windows swaps red and blue.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"
#include "graphics/png_kinds.h"
#include "support/png_bytes.h"

namespace ondrel::test {
namespace {

class PosixPngIconOf : public testing::TestWithParam<std::tuple<PngKind, std::pair<int, int>, bool>> {};

std::string NameOfPngForm(const testing::TestParamInfo<PosixPngIconOf::ParamType>& info) {
  const auto& [form, size, interlaced] = info.param;
  return form.name + std::to_string(form.depth) + "BitsOf" + std::to_string(size.first) + "By" +
         std::to_string(size.second) + (interlaced ? "Interlaced" : "");
}

TEST_P(PosixPngIconOf, GivesColoursAndMaskInBothSizes) {
  const auto& [form, size, interlaced] = GetParam();
  PngPicture picture = PatternPng(size.first, size.second, form.colour, form.depth);
  picture.interlaced = interlaced;
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredPng(picture)}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, Uncompressed(picture)));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, Uncompressed(picture)));
}

INSTANTIATE_TEST_SUITE_P(AllForms, PosixPngIconOf,
                         testing::Combine(testing::ValuesIn(kPngKinds),
                                          testing::Values(std::pair{32, 32}, std::pair{16, 16}, std::pair{256, 256},
                                                          std::pair{33, 21}, std::pair{1, 1}, std::pair{3, 70}),
                                          testing::Bool()),
                         NameOfPngForm);

testing::AssertionResult IsShown(const PngPicture& picture) {
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredPng(picture)}));
  if (const auto succeeded = Succeeded(extraction); !succeeded) return succeeded;
  return Shows(extraction.large.get(), 32, Uncompressed(picture));
}

TEST(PosixPngIcon, OneTransparentColourOfEveryFormThatMayHaveOne) {
  for (const PngKind& form : kPngKinds) {
    if (form.colour != PngColour::grey && form.colour != PngColour::trueColour) continue;
    PngPicture picture = PatternPng(32, 32, form.colour, form.depth);
    picture.transparent = picture.samples[35];
    EXPECT_TRUE(IsShown(picture)) << form.name << ", " << form.depth << " bits";
    EXPECT_EQ(Uncompressed(picture).transparent[35], true);
  }
}

TEST(PosixPngIcon, ATransparentColourOf16BitsIsNotTakenForItsNeighbours) {
  PngPicture picture = PatternPng(32, 32, PngColour::trueColour, 16);
  picture.samples[0] = {0x1234, 0x5678, 0x9ABC, 0};
  picture.samples[1] = {0x1235, 0x5678, 0x9ABC, 0};  // the same in 8 bits
  picture.transparent = picture.samples[0];
  ASSERT_TRUE(IsShown(picture));
  EXPECT_TRUE(Uncompressed(picture).transparent[0]);
  EXPECT_FALSE(Uncompressed(picture).transparent[1]);
}

TEST(PosixPngIcon, ImagesWithoutAlphaAreOpaqueAllOver) {
  const PngPicture picture = PatternPng(32, 32, PngColour::trueColour, 8);
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredPng(picture)}));
  ASSERT_TRUE(Succeeded(extraction));
  const IconContents icon = ReadIcon(extraction.large.get());
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 32; ++x) {
      ASSERT_EQ(icon.Colour(x, y)[3], 255) << x << ", " << y;
      ASSERT_FALSE(icon.IsTransparent(x, y)) << x << ", " << y;
    }
  }
}

TEST(PosixPngIcon, AlphaOf0AloneIsMaskedAndColoursStayAsTheyAre) {
  PngPicture picture = PngOf(SolidPicture(32, 32, 32, 0x123456));
  const auto setPixel = [&](int x, PngSamples samples) { picture.samples[static_cast<std::size_t>(x)] = samples; };
  setPixel(0, {0xAB, 0xCD, 0xEF, 0});
  setPixel(1, {0xAB, 0xCD, 0xEF, 1});
  setPixel(2, {0xAB, 0xCD, 0xEF, 127});
  setPixel(3, {0xAB, 0xCD, 0xEF, 254});
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredPng(picture)}));
  ASSERT_TRUE(Succeeded(extraction));
  const IconContents icon = ReadIcon(extraction.large.get());
  EXPECT_EQ(icon.Colour(0, 0), (PixelBytes{0xEF, 0xCD, 0xAB, 0}));
  EXPECT_EQ(icon.Colour(1, 0), (PixelBytes{0xEF, 0xCD, 0xAB, 1}));
  EXPECT_EQ(icon.Colour(2, 0), (PixelBytes{0xEF, 0xCD, 0xAB, 127}));
  EXPECT_EQ(icon.Colour(3, 0), (PixelBytes{0xEF, 0xCD, 0xAB, 254}));
  EXPECT_EQ(icon.Colour(4, 0), (PixelBytes{0x56, 0x34, 0x12, 255}));
  EXPECT_TRUE(icon.IsTransparent(0, 0));
  for (int x = 1; x < 32; ++x) EXPECT_FALSE(icon.IsTransparent(x, 0)) << x;
}

TEST(PosixPngIcon, AlphaOf16BitsIsMaskedWhereItRoundsTo0) {
  PngPicture picture = PatternPng(32, 32, PngColour::trueColourAlpha, 16);
  picture.samples[0] = {0x8000, 0x8000, 0x8000, 0};
  picture.samples[1] = {0x8000, 0x8000, 0x8000, 128};  // nearer to 0 than to 257
  picture.samples[2] = {0x8000, 0x8000, 0x8000, 129};
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredPng(picture)}));
  ASSERT_TRUE(Succeeded(extraction));
  const IconContents icon = ReadIcon(extraction.large.get());
  EXPECT_TRUE(icon.IsTransparent(0, 0));
  EXPECT_TRUE(icon.IsTransparent(1, 0));
  EXPECT_FALSE(icon.IsTransparent(2, 0));
  EXPECT_EQ(icon.Colour(2, 0)[3], 1);
}

TEST(PosixPngIcon, GammaAndColourProfilesAreNotApplied) {
  const PngPicture picture = PatternPng(32, 32, PngColour::trueColourAlpha, 8);
  const std::string gamma = PngChunk("gAMA", std::string("\0\x01\x86\xA0", 4));  // 1.0
  const std::string png = PngSignature() + PngHeader(32, 32, picture.colour, 8) + gamma + PngChunk("sRGB", "\x03") +
                          PngChunk("IDAT", Deflated(PngRows(picture))) + PngEnd();
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredImage(32, 32, 32, png)}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, Uncompressed(picture)));
}

TEST(PosixPngIcon, TheImagesOwnHeaderDecidesAgainstTheDirectory) {
  const PngPicture large = PatternPng(32, 32, PngColour::trueColourAlpha, 8);
  const PngPicture smallIcon = PatternPng(16, 16, PngColour::palette, 4);
  // Each is said to have the size of the other, and no depth or one that it cannot have.
  const Extraction extraction = ExtractIconsOf(
      IconFileBytes({StoredImage(16, 16, 0, PngBytes(large)), StoredImage(32, 32, 1, PngBytes(smallIcon))}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, Uncompressed(large)));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, Uncompressed(smallIcon)));
}

TEST(PosixPngIcon, StandsBesideUncompressedImagesInAnyOrder) {
  const PngPicture largePng = PatternPng(32, 32, PngColour::trueColourAlpha, 8);
  const PngPicture smallPng = PatternPng(16, 16, PngColour::greyAlpha, 8);
  const IconPicture large = PatternPicture(32, 32, 24);
  const IconPicture smallIcon = PatternPicture(16, 16, 8);
  const IconPicture other = PatternPicture(48, 48, 4);
  const StoredImage otherPng = StoredPng(PatternPng(64, 64, PngColour::trueColour, 8));
  struct Case {
    std::vector<StoredImage> images;
    IconPicture large, smallIcon;
  };
  for (const Case& c : {Case{{StoredPng(largePng), smallIcon}, Uncompressed(largePng), smallIcon},
                        Case{{smallIcon, StoredPng(largePng)}, Uncompressed(largePng), smallIcon},
                        Case{{large, StoredPng(smallPng)}, large, Uncompressed(smallPng)},
                        Case{{StoredPng(smallPng), large}, large, Uncompressed(smallPng)},
                        Case{{other, StoredPng(smallPng), otherPng, StoredPng(largePng)},
                             Uncompressed(largePng),
                             Uncompressed(smallPng)},
                        Case{{otherPng, smallIcon, other, large}, large, smallIcon}}) {
    const Extraction extraction = ExtractIconsOf(IconFileBytes(c.images));
    ASSERT_TRUE(Succeeded(extraction));
    EXPECT_TRUE(Shows(extraction.large.get(), 32, c.large));
    EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, c.smallIcon));
  }
}

TEST(PosixPngIcon, CountsAs32BitsWhateverItsOwnDepth) {
  const PngPicture png = PatternPng(32, 32, PngColour::grey, 1);
  const IconPicture of24Bits = PatternPicture(32, 32, 24);
  const Extraction extraction = ExtractIconsOf(IconFileBytes({of24Bits, StoredPng(png)}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, Uncompressed(png)));
  const IconPicture of32Bits = PatternPicture(32, 32, 32);
  const Extraction ofEquals = ExtractIconsOf(IconFileBytes({of32Bits, StoredPng(png)}));
  ASSERT_TRUE(Succeeded(ofEquals));
  EXPECT_TRUE(Shows(ofEquals.large.get(), 32, of32Bits)) << "the first of equals";
}

TEST(PosixPngIcon, AnImageOf256PixelsWithSizeByte0IsScaled) {
  const PngPicture picture = PatternPng(256, 256, PngColour::trueColourAlpha, 8);
  const StoredImage stored = StoredPng(picture);
  ASSERT_EQ(stored.statedWidth, 0);
  const Extraction extraction = ExtractIconsOf(IconFileBytes({stored}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, Uncompressed(picture)));
  EXPECT_TRUE(Shows(extraction.smallIcon.get(), 16, Uncompressed(picture)));
}

}  // namespace
}  // namespace ondrel::test
