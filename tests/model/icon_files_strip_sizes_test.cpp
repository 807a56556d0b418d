// The two image strips of icons of equal and of mixed sizes and depths, pixel for pixel, and the image indices that
// they leave.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/live_handles.h"
#include "support/model/icon_strips.h"
#include "support/model/set_forms.h"

namespace ondrel::test {
namespace {

/// Each channel another, and one with a byte that is no channel.
constexpr DWORD kKeys[] = {0x00A1B2C3, 0x00123456, 0x00FF8001, 0xEE302010};

/// Inserts icons in an order that is not that of their cookies; the strips and the indices must be as the rule says.
void ExpectStrips(const std::vector<HandIcon>& icons) {
  CMMCObjectSet set(LeaveToSet);
  const auto cookieOf = [](std::size_t index) { return static_cast<__int64>(index) * 1000 - 1500; };
  for (const std::size_t start : {1U, 0U}) {
    for (std::size_t index = icons.size(); index-- > 0;) {
      if (index % 2 == start) InsertRecord(set, cookieOf(index), icons[index].Record());
    }
  }
  std::vector<HandImage> large;
  std::vector<HandImage> smallIcon;
  for (const HandIcon& icon : icons) {
    large.push_back(icon.large);
    smallIcon.push_back(icon.smallIcon);
  }
  const LiveHandles before = CountLiveHandles();
  for (const DWORD key : kKeys) {
    const Strips strips(set, key);
    EXPECT_TRUE(IsStrip(strips.large, ExpectedStrip(large, key))) << "large, key " << key;
    EXPECT_TRUE(IsStrip(strips.smallIcon, ExpectedStrip(smallIcon, key))) << "small, key " << key;
    for (std::size_t index = 0; index < icons.size(); ++index) {
      ASSERT_EQ(IndexOf(set, cookieOf(index)), static_cast<int>(index));
    }
  }
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
}

HandIcon Ordinary(std::uint32_t seed) { return {FilledImage(32, 32, 32, seed), FilledImage(16, 16, 32, seed + 2)}; }

/// An icon of another form than an ordinary one; there are kMixedForms.
constexpr std::uint32_t kMixedForms = 13;
HandIcon Mixed(std::uint32_t form) {
  const std::uint32_t seed = form * 100;
  HandIcon icon = Ordinary(seed);
  switch (form % kMixedForms) {
    case 0:
      return {FilledImage(48, 48, 32, seed), FilledImage(24, 24, 32, seed + 2)};  // larger
    case 1:
      return {FilledImage(20, 20, 32, seed), FilledImage(8, 8, 32, seed + 2)};  // smaller
    case 2:
      return {FilledImage(40, 32, 32, seed), FilledImage(17, 16, 32, seed + 2)};  // wider
    case 3:
      return {FilledImage(32, 40, 32, seed), FilledImage(16, 17, 32, seed + 2)};  // taller
    case 4:
      return {FilledImage(50, 7, 32, seed), FilledImage(3, 30, 32, seed + 2)};  // wider and less tall, and the reverse
    case 5:
      return {FilledImage(32, 32, 24, seed), FilledImage(16, 16, 24, seed + 2)};
    case 6:
      return {FilledImage(32, 32, 8, seed), FilledImage(20, 20, 8, seed + 2)};
    case 7:
      return {FilledImage(30, 32, 16, seed), FilledImage(16, 16, 4, seed + 2)};
    case 8:
      return {FilledImage(32, 32, 1, seed), FilledImage(15, 15, 1, seed + 2)};
    case 9:  // masks smaller than their images
      icon.large.mask = FilledBitmap(20, 10, 1, seed);
      icon.smallIcon.mask = FilledBitmap(5, 16, 1, seed + 2);
      return icon;
    case 10:  // no masks
      icon.large.mask = icon.smallIcon.mask = {};
      return icon;
    case 11:  // masks larger than their images, and of 32 bits
      icon.large.mask = FilledBitmap(40, 40, 1, seed);
      icon.smallIcon.mask = FilledBitmap(16, 16, 32, seed);
      return icon;
    default:  // no images, and a small one of another size
      icon.large = {};
      icon.smallIcon = FilledImage(32, 32, 32, seed);
      return icon;
  }
}

class IconFilesStripSizes : public testing::TestWithParam<int> {};

TEST_P(IconFilesStripSizes, IconsOfEqualSizesStandSideBySide) {
  std::vector<HandIcon> icons;
  for (int index = 0; index < GetParam(); ++index) icons.push_back(Ordinary(static_cast<std::uint32_t>(index)));
  ExpectStrips(icons);
}

TEST_P(IconFilesStripSizes, IconsOfMixedSizesStandAtTheirOwnWidthTimesTheirIndex) {
  std::vector<HandIcon> icons;
  for (int index = 0; index < GetParam(); ++index) icons.push_back(Mixed(static_cast<std::uint32_t>(index)));
  ExpectStrips(icons);
}

TEST_P(IconFilesStripSizes, AFirstIconOf24BitsGivesStripsOfZeros) {
  std::vector<HandIcon> icons;
  for (int index = 0; index < GetParam(); ++index) icons.push_back(Mixed(static_cast<std::uint32_t>(index)));
  icons.front() = {FilledImage(32, 32, 24, 1), FilledImage(16, 16, 24, 2)};
  ExpectStrips(icons);
}

TEST_P(IconFilesStripSizes, AFirstIconOf8BitsGivesStripsOfZeros) {
  std::vector<HandIcon> icons;
  for (int index = 0; index < GetParam(); ++index) icons.push_back(Mixed(static_cast<std::uint32_t>(index)));
  icons.front() = {FilledImage(32, 32, 8, 1), FilledImage(16, 16, 8, 2)};
  ExpectStrips(icons);
}

INSTANTIATE_TEST_SUITE_P(Icons, IconFilesStripSizes, testing::Values(1, 2, 3, 200),
                         [](const testing::TestParamInfo<int>& info) { return std::to_string(info.param); });

TEST(IconFilesStripSizes, EveryFormAfterEveryFormAsTheFirst) {
  for (std::uint32_t first = 0; first < kMixedForms; ++first) {
    if (Mixed(first).large.colour.width == 0) continue;  // a strip without a size is the platform's affair
    std::vector<HandIcon> icons = {Mixed(first)};
    for (std::uint32_t later = 0; later < kMixedForms; ++later) icons.push_back(Mixed(kMixedForms + later));
    SCOPED_TRACE(first);
    ExpectStrips(icons);
  }
}

TEST(IconFilesStripSizes, LargeAndSmallStripsMayBeOfDifferentDepths) {
  ExpectStrips({{FilledImage(32, 32, 24, 1), FilledImage(16, 16, 32, 2)}, Ordinary(3), Mixed(2)});
  ExpectStrips({{FilledImage(32, 32, 32, 1), FilledImage(16, 16, 8, 2)}, Ordinary(3), Mixed(2)});
}

TEST(IconFilesStripSizes, RowsWithPaddingAreReadByTheirOwnLength) {
  HandIcon padded = Ordinary(1);
  for (HandImage* const image : {&padded.large, &padded.smallIcon}) {
    HandBitmap& colour = image->colour;
    colour.rowBytes += 12;
    colour.bytes = FilledBitmap(colour.width + 3, colour.height, 32, 9).bytes;
    HandBitmap& mask = image->mask;
    mask.rowBytes += 2;
    mask.bytes = FilledBitmap(mask.width + 16, mask.height, 1, 9).bytes;
  }
  ExpectStrips({padded, Ordinary(2)});
  ExpectStrips({Ordinary(2), padded});
}

}  // namespace
}  // namespace ondrel::test
