// Icons of an object image whose bitmaps do not match their geometry or each other: their pixels, their copies, their
// strips, and the image that they are saved in again.

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/model/icon_fixtures.h"
#include "support/model/icon_strips.h"
#include "support/model/mismatched_icons.h"
#include "support/model/set_forms.h"

namespace ondrel::test {
namespace {

const std::string kNoSmallImage(2 * 24, '\0');

DWORD PixelOf(char pixel, DWORD key) {
  if (pixel == 'K') return key;
  if (pixel == '.') return 0;
  const std::string bytes = FourColours().substr(static_cast<std::size_t>(pixel - '1') * 4, 3);
  const auto byte = [&](std::size_t place) { return DWORD{static_cast<unsigned char>(bytes[place])}; };
  return byte(0) << 16 | byte(1) << 8 | byte(2);
}

/// An image of nothing but these icons, with cookies from 1.
std::string ImageOf(const std::vector<std::string>& icons) {
  std::string bytes = Long(1) + Long(1) + Count(0) + Count(0) + Count(icons.size());
  std::int64_t cookie = 0;
  for (const std::string& icon : icons) bytes += Cookie(++cookie) + icon;
  return bytes + Count(0) + Count(0);
}

TEST(IconMismatch, EveryPixelFollowsTheRuleOrIsBlack) {
  for (const MismatchedIcon& mismatched : MismatchedIcons()) {
    LoadingArchive archive(mismatched.bitmaps + kNoSmallImage);
    CMMCObjectIcon icon;
    icon.Deserialize(*archive);
    for (int place = 0; place < 4; ++place) {
      EXPECT_EQ(icon.GetPixel(true, place % 2, place / 2, kDistinctKey),
                PixelOf(mismatched.pixels[static_cast<std::size_t>(place)], kDistinctKey))
          << mismatched.name << ", pixel " << place;
    }
    for (const int outside : {-1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
      EXPECT_EQ(icon.GetPixel(true, outside, 0, kDistinctKey), 0U) << mismatched.name;
      EXPECT_EQ(icon.GetPixel(true, 0, outside, kDistinctKey), 0U) << mismatched.name;
    }
    EXPECT_EQ(icon.GetPixel(false, 0, 0, kDistinctKey), 0U) << mismatched.name;
    EXPECT_EQ(icon.GetIcon(32, 32), nullptr) << mismatched.name;
  }
}

TEST(IconMismatch, MaskedCopiesHaveThesePixelsWhereTheyHave32Bits) {
  for (const MismatchedIcon& mismatched : MismatchedIcons()) {
    LoadingArchive archive(mismatched.bitmaps + kNoSmallImage);
    CMMCObjectIcon icon;
    icon.Deserialize(*archive);
    const tagBITMAP& colours = icon.GetColourBitmap(true);
    if (colours.bmHeight != 2) {
      EXPECT_THROW(icon.GetMaskedBitmap(true, kDistinctKey), CMemoryException) << mismatched.name;
      continue;
    }
    const CMMCObjectBitmap copy = icon.GetMaskedBitmap(true, kDistinctKey);
    for (int place = 0; place < 4; ++place) {
      const char pixel = colours.bmBitsPixel == 32 ? mismatched.pixels[static_cast<std::size_t>(place)] : '.';
      EXPECT_EQ(copy.GetPixel(place % 2, place / 2), PixelOf(pixel, kDistinctKey))
          << mismatched.name << ", pixel " << place;
    }
    EXPECT_EQ(icon.GetMaskedBitmap(false, kDistinctKey).GetLength(), 0U) << mismatched.name;
  }
}

TEST(IconMismatch, StripsHaveThesePixelsBesideAnOrdinaryIcon) {
  std::vector<std::string> icons = {BitmapBytes(2, 2, 8, 32, FourColours()) + std::string(24, '\0') + kNoSmallImage};
  std::string pixels = "1234";
  for (const MismatchedIcon& mismatched : MismatchedIcons()) {
    icons.push_back(mismatched.bitmaps + kNoSmallImage);
    pixels += mismatched.pixels;
  }
  CMMCObjectSet set(LeaveToSet);
  LoadImage(set, ImageOf(icons));
  const Strips strips(set, kDistinctKey);
  const int width = 2 * static_cast<int>(icons.size());
  ASSERT_EQ(Geometry(strips.large).bmWidth, width);
  ASSERT_EQ(Geometry(strips.large).bmHeight, 2);
  const std::string bytes = Pixels(strips.large);
  for (int place = 0; place < 2 * width; ++place) {
    const int icon = place / 4;
    const int x = 2 * icon + place % 2;
    const int y = place / 2 % 2;
    EXPECT_EQ(ColourAt(bytes, width, x, y), PixelOf(pixels[static_cast<std::size_t>(place)], kDistinctKey))
        << "icon " << icon << ": " << x << ", " << y;
  }
}

TEST(IconMismatch, EachAsTheFirstIconGivesStripsOrARefusal) {
  for (const MismatchedIcon& mismatched : MismatchedIcons()) {
    CMMCObjectSet set(LeaveToSet);
    const std::string ordinary = BitmapBytes(2, 2, 8, 32, FourColours()) + std::string(24, '\0');
    const std::string first = mismatched.bitmaps + mismatched.bitmaps;
    LoadImage(set, ImageOf({first, ordinary + ordinary}));
    const CMMCObjectIcon* icon = nullptr;
    ASSERT_TRUE(set.GetIconFile(1, &icon));
    const tagBITMAP colours = icon->GetColourBitmap(true);
    HBITMAP smallBitmap = nullptr;
    HBITMAP largeBitmap = nullptr;
    if (colours.bmHeight != 2) {
      EXPECT_THROW(set.GetIconBitmapImages(kDistinctKey, smallBitmap, largeBitmap), CMemoryException)
          << mismatched.name;
      continue;
    }
    set.GetIconBitmapImages(kDistinctKey, smallBitmap, largeBitmap);
    const platform::UniqueBitmap smallIcon(smallBitmap);
    const platform::UniqueBitmap large(largeBitmap);
    ASSERT_EQ(smallIcon == nullptr, large == nullptr) << mismatched.name;
    if (colours.bmBitsPixel != 32 || colours.bmPlanes != 1) continue;  // each platform has its own answer
    ASSERT_NE(large, nullptr) << mismatched.name;
    const std::string bytes = Pixels(large);
    for (int place = 0; place < 4; ++place) {
      EXPECT_EQ(ColourAt(bytes, 4, place % 2, place / 2),
                PixelOf(mismatched.pixels[static_cast<std::size_t>(place)], kDistinctKey))
          << mismatched.name;
      EXPECT_EQ(ColourAt(bytes, 4, 2 + place % 2, place / 2), PixelOf(static_cast<char>('1' + place), 0))
          << "beside " << mismatched.name;
    }
  }
}

TEST(IconMismatch, WithoutPlanesTheLargestGeometryIsEmptyAndTakesNoTime) {
  constexpr std::int64_t kMost = 0x7FFFFFFF;
  const std::string image = WithPlanes(BitmapBytes(kMost, kMost, 8, 32, FourColours()), 0) + std::string(24, '\0');
  CMMCObjectSet set(LeaveToSet);
  LoadImage(set, ImageOf({image + image}));
  const CMMCObjectIcon* icon = nullptr;
  ASSERT_TRUE(set.GetIconFile(1, &icon));
  const CMMCObjectBitmap copy = icon->GetMaskedBitmap(true, kDistinctKey);
  EXPECT_EQ(copy.bmWidth, kMost);
  EXPECT_EQ(copy.GetLength(), 0U);
  const Strips strips(set, kDistinctKey);  // nothing is drawn, one pixel at a time
  EXPECT_EQ(strips.smallIcon == nullptr, strips.large == nullptr);
  EXPECT_EQ(IndexOf(set, 1), 0);
}

TEST(IconMismatch, AnImageIsSavedAsItWasLoaded) {
  std::vector<std::string> icons;
  for (const MismatchedIcon& mismatched : MismatchedIcons()) {
    icons.push_back(mismatched.bitmaps + kNoSmallImage);
    icons.push_back(kNoSmallImage + mismatched.bitmaps);
  }
  CMMCObjectSet set(LeaveToSet);
  LoadImage(set, ImageOf(icons));
  EXPECT_EQ(Hex(SavedImage(set)), Hex(ImageOf(icons)));
  CImageList list;
  ASSERT_TRUE(list.Create(16, 16, ILC_COLOR32 | ILC_MASK, 0, 1));
  set.GetIconImageList(16, 16, list);
  EXPECT_EQ(IndexOf(set, 1), -99) << "icons of an image have no handles";
}

}  // namespace
}  // namespace ondrel::test
