// Object images whose icons claim other geometry than their bytes have: shown with what they claim, drawn with what
// they have.
#include <gtest/gtest.h>

#include "strip_images.h"
#include "support/model/hand_bytes.h"
#include "support/model/mismatched_icons.h"

namespace ondrel::test {
namespace {

/// A pixel in a strip with the key FF00FF.
RgbaPixel StripPixel(char pixel) {
  if (pixel == 'K') return {0xFF, 0, 0xFF, 0xFF};
  if (pixel == '.') return {0, 0, 0, 0xFF};
  const std::string bytes = FourColours().substr(static_cast<std::size_t>(pixel - '1') * 4, 3);
  return {static_cast<std::uint8_t>(bytes[2]), static_cast<std::uint8_t>(bytes[1]), static_cast<std::uint8_t>(bytes[0]),
          0xFF};
}

/// The image, whose first icon is an ordinary one.
void WriteImage(const ProjectFolder& folder) {
  const std::string smallBitmaps = StoredBitmaps(SolidPicture(1, 1, 32, 0));
  std::vector<std::string> icons;
  for (const MismatchedIcon& icon : MismatchedIcons()) icons.push_back(icon.bitmaps + smallBitmaps);
  folder.Write(kImageName, IconImage(icons));
}

TEST(MismatchedIcons, AreDrawnWithThePixelsThatTheyHave) {
  const ProjectFolder folder;
  WriteImage(folder);
  ExpectSuccess(RunStrips(folder, kImageName));
  const std::vector<MismatchedIcon> icons = MismatchedIcons();
  RgbaPicture expected(2 * static_cast<int>(icons.size()), 2);
  int left = 0;
  for (const MismatchedIcon& icon : icons) {
    for (int place = 0; place < 4; ++place) {
      expected.At(left + place % 2, place / 2) = StripPixel(icon.pixels[static_cast<std::size_t>(place)]);
    }
    left += 2;
  }
  EXPECT_TRUE(SamePicture(DecodePng(ReadBytes(folder / kLargeName)), expected));
}

TEST(MismatchedIcons, AreShownWithTheGeometryThatTheyClaim) {
  const ProjectFolder folder;
  WriteImage(folder);
  ExpectSuccess(folder.Show(kImageName));
  const nlohmann::json shown = folder.Json(kImageName).at("icons");
  const std::vector<MismatchedIcon> icons = MismatchedIcons();
  ASSERT_EQ(shown.size(), icons.size());
  for (std::size_t index = 0; index < icons.size(); ++index) {
    const std::string height = icons[index].bitmaps.substr(8, 4);
    const std::string depth = icons[index].bitmaps.substr(18, 2);
    const nlohmann::json& large = shown[index].at("large");
    EXPECT_EQ(large.at("width"), 2) << icons[index].name;
    EXPECT_EQ(Long(large.at("height").get<std::int64_t>()), height) << icons[index].name;
    EXPECT_EQ(Word(large.at("bitsPixel").get<unsigned>()), depth) << icons[index].name;
  }
}

TEST(MismatchedIcons, WhoseFirstHasHardlyAnyBytesFillsItsStripWithBlack) {
  const ProjectFolder folder;
  const std::string smallBitmaps = StoredBitmaps(SolidPicture(1, 1, 32, 0));
  folder.Write(kImageName, IconImage({BitmapBytes(1000, 500, 4000, 32, FourColours().substr(0, 4)) +
                                      std::string(24, '\0') + smallBitmaps}));
  ExpectSuccess(RunStrips(folder, kImageName));
  RgbaPicture expected(1000, 500, StripPixel('.'));
  expected.At(0, 0) = StripPixel('1');
  EXPECT_TRUE(SamePicture(DecodePng(ReadBytes(folder / kLargeName)), expected));
}

}  // namespace
}  // namespace ondrel::test
