// The colours of PNG images in icon files. Masks, and the alpha of images that have none, are each system's own.
#include <string>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"
#include "graphics/png_kinds.h"
#include "support/png_bytes.h"

namespace ondrel::test {
namespace {

class PngIconOf : public testing::TestWithParam<std::tuple<PngKind, bool>> {};

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

INSTANTIATE_TEST_SUITE_P(AllForms, PngIconOf, testing::Combine(testing::ValuesIn(kPngKinds), testing::Bool()),
                         NameOfForm);

}  // namespace
}  // namespace ondrel::test
