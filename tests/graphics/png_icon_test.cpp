// The colours of PNG images in icon files. Masks, and the alpha of images that have none, are each system's own.
#include <string>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"
#include "support/png_bytes.h"

namespace ondrel::test {
namespace {

struct Form {
  const char* name;
  PngColour colour;
  int depth;
};

class PngIconOf : public testing::TestWithParam<std::tuple<Form, bool>> {};

TEST_P(PngIconOf, GivesTheColoursOfTheLargeImage) {
  const auto& [form, interlaced] = GetParam();
  PngPicture picture = PatternPng(32, 32, form.colour, form.depth);
  picture.interlaced = interlaced;
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredPng(picture)}));
  ASSERT_TRUE(Succeeded(extraction));
  const IconContents icon = ReadIcon(extraction.large.get());
  const bool hasAlpha = form.colour == PngColour::greyAlpha || form.colour == PngColour::trueColourAlpha;
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 32; ++x) {
      PixelBytes expected = picture.Colour(x, y);
      PixelBytes shown = icon.Colour(x, y);
      if (!hasAlpha) expected[3] = shown[3] = 0;
      ASSERT_EQ(shown, expected) << x << ", " << y;
    }
  }
}

std::string NameOfForm(const testing::TestParamInfo<PngIconOf::ParamType>& info) {
  const auto& [form, interlaced] = info.param;
  return form.name + std::to_string(form.depth) + "Bits" + (interlaced ? "Interlaced" : "");
}

INSTANTIATE_TEST_SUITE_P(
    AllForms, PngIconOf,
    testing::Combine(testing::Values(Form{"Grey", PngColour::grey, 1}, Form{"Grey", PngColour::grey, 2},
                                     Form{"Grey", PngColour::grey, 4}, Form{"Grey", PngColour::grey, 8},
                                     Form{"Grey", PngColour::grey, 16}, Form{"TrueColour", PngColour::trueColour, 8},
                                     Form{"TrueColour", PngColour::trueColour, 16},
                                     Form{"Palette", PngColour::palette, 1}, Form{"Palette", PngColour::palette, 2},
                                     Form{"Palette", PngColour::palette, 4}, Form{"Palette", PngColour::palette, 8},
                                     Form{"GreyAlpha", PngColour::greyAlpha, 8},
                                     Form{"GreyAlpha", PngColour::greyAlpha, 16},
                                     Form{"TrueColourAlpha", PngColour::trueColourAlpha, 8},
                                     Form{"TrueColourAlpha", PngColour::trueColourAlpha, 16}),
                     testing::Bool()),
    NameOfForm);

}  // namespace
}  // namespace ondrel::test
