// The two image strips of a set's icons: their geometry, their pixels, and the image indices that they leave.

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <new>
#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/live_handles.h"
#include "support/model/icon_fixtures.h"
#include "support/model/icon_strips.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

/// Three icon files stand side by side, in cookie order, in the strip of their large or of their small images.
void ExpectStripOfThreeOrdinaryIcons(bool ofLarge) {
  const TemporaryFolder folder;
  CMMCObjectSet set(LeaveToSet);
  std::map<__int64, IconPicture> pictures;
  for (const __int64 cookie : {30, 10, 20}) {
    IconPicture large = PatternPicture(32, 32, cookie == 20 ? 24 : 32);
    IconPicture smallIcon = PatternPicture(16, 16, cookie == 30 ? 8 : 32);
    large.pixels[33] = static_cast<std::uint32_t>(cookie);
    const CString path = WriteIcon(folder, std::to_string(cookie) + ".ico", {large, smallIcon});
    ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(set, path, cookie), S_OK);
    pictures[cookie] = ofLarge ? large : smallIcon;
  }

  const Strips strips(set);
  const BITMAP smallGeometry = Geometry(strips.smallIcon);
  EXPECT_EQ(smallGeometry.bmWidth, 48);
  EXPECT_EQ(smallGeometry.bmHeight, 16);
  EXPECT_EQ(smallGeometry.bmPlanes, 1);
  EXPECT_EQ(smallGeometry.bmBitsPixel, 32);
  const BITMAP largeGeometry = Geometry(strips.large);
  EXPECT_EQ(largeGeometry.bmWidth, 96);
  EXPECT_EQ(largeGeometry.bmHeight, 32);
  EXPECT_EQ(largeGeometry.bmBitsPixel, 32);

  const std::string pixels = Pixels(ofLarge ? strips.large : strips.smallIcon);
  int index = 0;
  for (const auto& [cookie, picture] : pictures) {
    EXPECT_EQ(IndexOf(set, cookie), index) << cookie;
    for (int y = 0; y < picture.height; ++y) {
      for (int x = 0; x < picture.width; ++x) {
        ASSERT_EQ(ColourAt(pixels, 3 * picture.width, index * picture.width + x, y),
                  picture.IsTransparent(x, y) ? kKey : ColourOf(picture, x, y))
            << "icon " << cookie << ", " << x << ", " << y;
      }
    }
    ++index;
  }
}

TEST(IconFilesStrips, LargeImagesOfThreeOrdinaryIconsStandSideBySideInCookieOrder) {
  ExpectStripOfThreeOrdinaryIcons(true);
}

TEST(IconFilesStrips, SmallImagesOfThreeOrdinaryIconsStandSideBySideInCookieOrder) {
  ExpectStripOfThreeOrdinaryIcons(false);
}

TEST(IconFilesStrips, OneIconIsItsMaskedImagesByteForByte) {
  CMMCObjectSet set(LeaveToSet);
  InsertRecord(set, 7, TinyIconBytes());
  const Strips strips(set, 0x00A1B2C3);
  EXPECT_EQ(Hex(Pixels(strips.large)), Hex(FromHex("01 02 03 00  A1 B2 C3 00  A1 B2 C3 00  0D 0E 0F 00")));
  EXPECT_EQ(Hex(Pixels(strips.smallIcon)), Hex(FromHex("A1 B2 C3 00")));
  EXPECT_EQ(IndexOf(set, 7), 0);
}

TEST(IconFilesStrips, IconsFromAnImageAreDrawnToo) {
  CMMCObjectSet set(LeaveToSet);
  InsertRecord(set, 1, SolidIconBytes(1, 1, 0x00010203));
  InsertRecord(set, 2, SolidIconBytes(1, 1, 0x00040506));
  const Strips strips(set);
  EXPECT_EQ(Hex(Pixels(strips.large)), "01 02 03 00 04 05 06 00");
  EXPECT_EQ(Hex(Pixels(strips.smallIcon)), "01 02 03 00 04 05 06 00");
}

TEST(IconFilesStrips, ASetWithoutIconsHandsEmptyStripsToThePlatform) {
  CMMCObjectSet set(LeaveToSet);
  const auto before = CountLiveHandles();
  {
    const Strips strips(set);
    ASSERT_NE(strips.smallIcon, nullptr);
    ASSERT_NE(strips.large, nullptr);
    // What the platform makes of a bitmap without size.
    EXPECT_EQ(Geometry(strips.smallIcon).bmWidth, 1);
    EXPECT_EQ(Geometry(strips.smallIcon).bmHeight, 1);
    EXPECT_EQ(Geometry(strips.smallIcon).bmBitsPixel, 1);
    EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps + 2);
  }
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
}

TEST(IconFilesStrips, IndicesAreNotedAnew) {
  CMMCObjectSet set(LeaveToSet);
  InsertRecord(set, 5, SolidIconBytes(1, 1, 0));
  EXPECT_EQ(IndexOf(set, 5), -99);
  { const Strips strips(set); }
  EXPECT_EQ(IndexOf(set, 5), 0);
  InsertRecord(set, 2, SolidIconBytes(1, 1, 0));
  { const Strips strips(set); }
  EXPECT_EQ(IndexOf(set, 2), 0);
  EXPECT_EQ(IndexOf(set, 5), 1);
  CImageList list;
  ASSERT_TRUE(list.Create(16, 16, ILC_COLOR32 | ILC_MASK, 0, 1));
  set.GetIconImageList(16, 16, list);
  EXPECT_EQ(IndexOf(set, 5), -99) << "the list has no image of it";
  EXPECT_FALSE(set.IsModified());
}

TEST(IconFilesStrips, AWiderIconIsCutOffAtTheStripsEdge) {
  CMMCObjectSet set(LeaveToSet);
  InsertRecord(set, 1, SolidIconBytes(2, 1, 0x00010101));
  InsertRecord(set, 2, SolidIconBytes(3, 2, 0x00020202));
  const Strips strips(set);
  EXPECT_EQ(Geometry(strips.large).bmWidth, 4);
  EXPECT_EQ(Geometry(strips.large).bmHeight, 2);
  // The second icon stands at its own width times 1, column 3, and one column of it fits.
  EXPECT_EQ(Hex(Pixels(strips.large)), Hex(FromHex("01 01 01 00 01 01 01 00 00 00 00 00 02 02 02 00"
                                                   "01 01 01 00 01 01 01 00 00 00 00 00 02 02 02 00")));
  // The small strip is 2 x 1; the second icon's column is 2, outside.
  EXPECT_EQ(Hex(Pixels(strips.smallIcon)), Hex(FromHex("01 01 01 00 00 00 00 00")));
  EXPECT_EQ(IndexOf(set, 2), 1);
}

TEST(IconFilesStrips, ASmallerIconStandsAtItsOwnWidthTimesItsIndex) {
  CMMCObjectSet set(LeaveToSet);
  InsertRecord(set, 1, SolidIconBytes(2, 2, 0x00010101));
  InsertRecord(set, 2, SolidIconBytes(1, 1, 0x00020202));
  const Strips strips(set);
  EXPECT_EQ(Hex(Pixels(strips.large)), Hex(FromHex("01 01 01 00 02 02 02 00 00 00 00 00 00 00 00 00"
                                                   "01 01 01 00 01 01 01 00 00 00 00 00 00 00 00 00")))
      << "over the first icon's second column";
}

TEST(IconFilesStrips, AnIconFarBehindTheStripsEndIsNotDrawnAtItsStart) {
  constexpr std::int64_t kMost = 0x7FFFFFFF;
  CMMCObjectSet set(LeaveToSet);
  InsertRecord(set, 1, SolidIconBytes(1, 1, 0x00010101));
  InsertRecord(set, 2, SolidIconBytes(1, 1, 0x00020202));
  // It stands in column 2 * (2^31 - 1), which is -2 in 32 bits: its third pixel would come to column 0.
  const std::string wide = BitmapBytes(kMost, 1, 20, 32, std::string(20, '\x33'));
  InsertRecord(set, 3, wide + std::string(24, '\0') + wide + std::string(24, '\0'));
  const Strips strips(set);
  EXPECT_EQ(Hex(Pixels(strips.large)), Hex(FromHex("01 01 01 00 02 02 02 00 00 00 00 00")));
  EXPECT_EQ(Hex(Pixels(strips.smallIcon)), Hex(FromHex("01 01 01 00 02 02 02 00 00 00 00 00")));
  EXPECT_EQ(IndexOf(set, 3), 2);
}

TEST(IconFilesStrips, AFirstIconOfAnotherDepthGivesStripsOfThatDepthWithoutPixels) {
  for (const unsigned depth : {1U, 4U, 8U, 16U, 24U}) {
    CMMCObjectSet set(LeaveToSet);
    const std::string ones(4 * depth / 8 * 2 + 8, '\xFF');
    const std::string colour = BitmapBytes(8, 1, depth, depth, ones);
    const std::string mask = BitmapBytes(8, 1, 2, 1, FromHex("FF 00"));
    InsertRecord(set, 1, colour + mask + colour + mask);
    InsertRecord(set, 2, SolidIconBytes(8, 8, 0x00FFFFFF));
    InsertRecord(set, 3, SolidIconBytes(8, 8, 0x00FFFFFF));
    const Strips strips(set);
    ASSERT_NE(strips.large, nullptr) << depth << " bits";
    EXPECT_EQ(Geometry(strips.large).bmWidth, 24) << depth << " bits";
    EXPECT_EQ(Geometry(strips.large).bmBitsPixel, depth);
    const std::string pixels = Pixels(strips.large);
    EXPECT_EQ(Hex(pixels), Hex(std::string(pixels.size(), '\0'))) << depth << " bits";
    EXPECT_EQ(IndexOf(set, 3), 2);
  }
}

TEST(IconFilesStrips, OnePixelOfABitMakesAStripOfNoWholeByte) {
  CMMCObjectSet set(LeaveToSet);
  const std::string bit = BitmapBytes(1, 1, 2, 1, std::string("\x80\0", 2));
  InsertRecord(set, 1, bit + bit + bit + bit);
  const Strips strips(set);
  for (const auto* const strip : {&strips.smallIcon, &strips.large}) {
    ASSERT_NE(*strip, nullptr);
    EXPECT_EQ(Geometry(*strip).bmWidth, 1);
    EXPECT_EQ(Geometry(*strip).bmHeight, 1);
    EXPECT_EQ(Geometry(*strip).bmBitsPixel, 1);
  }
}

TEST(IconFilesStrips, RowsThatThePlatformPadsAreNotReadBeyondTheStrip) {
  // 3 pixels of 8 bits: the strip's rows take 3 bytes, the platform's 4.
  CMMCObjectSet set(LeaveToSet);
  const std::string colour = BitmapBytes(3, 3, 3, 8, std::string(9, '\x11'));
  InsertRecord(set, 1, colour + std::string(24, '\0') + colour + std::string(24, '\0'));
  const Strips strips(set);
  ASSERT_NE(strips.smallIcon, nullptr);
  EXPECT_EQ(Geometry(strips.smallIcon).bmWidth, 3);
  EXPECT_EQ(Hex(Pixels(strips.smallIcon)), Hex(std::string(12, '\0')));
}

TEST(IconFilesStrips, ALaterIconOfAnotherDepthIsBlackWhereItIsOpaque) {
  CMMCObjectSet set(LeaveToSet);
  InsertRecord(set, 1, SolidIconBytes(2, 2, 0x00010101));
  const std::string colour = BitmapBytes(2, 2, 6, 24, std::string(12, '\xFF'));
  const std::string mask = BitmapBytes(2, 2, 2, 1, FromHex("80 00  00 00"));
  InsertRecord(set, 2, colour + mask + colour + mask);
  const Strips strips(set, 0x00A1B2C3);
  EXPECT_EQ(Hex(Pixels(strips.smallIcon)), Hex(FromHex("01 01 01 00 01 01 01 00 A1 B2 C3 00 00 00 00 00"
                                                       "01 01 01 00 01 01 01 00 00 00 00 00 00 00 00 00")));
}

TEST(IconFilesStrips, HostileGeometryIsRefusedOrEmptyAndEndsQuickly) {
  constexpr std::int64_t kMost = 0x7FFFFFFF;
  struct Claim {
    std::int64_t width, height;
    unsigned depth;
  };
  for (const Claim& first : {Claim{kMost, kMost, 32}, Claim{kMost, 1, 32}, Claim{1, kMost, 32}, Claim{-1, 1, 32},
                             Claim{-kMost - 1, -kMost - 1, 32}, Claim{1, -1, 1}, Claim{0, kMost, 32},
                             Claim{0x40000000, 1, 1}, Claim{-2, -2, 32}, Claim{kMost, kMost, 0}}) {
    const auto start = std::chrono::steady_clock::now();
    CMMCObjectSet set(LeaveToSet);
    const std::string hostile = BitmapBytes(first.width, first.height, 4, first.depth, "");
    const std::string none(24, '\0');
    InsertRecord(set, 1, hostile + none + hostile + none);
    InsertRecord(set, 2, SolidIconBytes(2, 2, 0x00FFFFFF));
    InsertRecord(set, 3, hostile + none + hostile + none);
    const auto before = CountLiveHandles();
    try {
      const Strips strips(set);
      EXPECT_EQ(strips.smallIcon == nullptr, strips.large == nullptr);
    } catch (const CMemoryException&) {
    } catch (const std::bad_alloc&) {
    }
    EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps) << first.width << " x " << first.height;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5))
        << first.width << " x " << first.height;
  }
}

TEST(IconFilesStrips, HostileGeometryOfALaterIconEndsQuickly) {
  constexpr std::int64_t kMost = 0x7FFFFFFF;
  CMMCObjectSet set(LeaveToSet);
  InsertRecord(set, 1, SolidIconBytes(2, 2, 0x00010101));
  __int64 cookie = 2;
  for (const std::int64_t width : {kMost, std::int64_t{-1}, -kMost - 1, std::int64_t{0}}) {
    for (const std::int64_t height : {kMost, std::int64_t{-1}, -kMost - 1}) {
      const std::string hostile = BitmapBytes(width, height, 4, 32, "");
      InsertRecord(set, cookie++, hostile + std::string(24, '\0') + hostile + std::string(24, '\0'));
    }
  }
  const auto start = std::chrono::steady_clock::now();
  const Strips strips(set);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  ASSERT_NE(strips.smallIcon, nullptr);
  EXPECT_EQ(Geometry(strips.smallIcon).bmWidth, 26);
  EXPECT_EQ(Geometry(strips.smallIcon).bmHeight, 2);
  EXPECT_EQ(ColourAt(Pixels(strips.smallIcon), 26, 0, 0), 0x00010101U);
  EXPECT_EQ(IndexOf(set, cookie - 1), 12);
}

TEST(IconFilesStrips, MoreIconsThanAStripHasRoomForAreRefused) {
  CMMCObjectSet set(LeaveToSet);
  // Two of 2^30 columns and no rows: the width of the strip does not fit a LONG.
  const std::string wide = BitmapBytes(0x40000000, 0, 0, 32, "");
  InsertRecord(set, 1, wide + std::string(24, '\0') + wide + std::string(24, '\0'));
  InsertRecord(set, 2, wide + std::string(24, '\0') + wide + std::string(24, '\0'));
  HBITMAP smallIcon = nullptr;
  HBITMAP large = nullptr;
  EXPECT_THROW(set.GetIconBitmapImages(kKey, smallIcon, large), CMemoryException);
  EXPECT_EQ(smallIcon, nullptr);
  EXPECT_EQ(large, nullptr);
}

}  // namespace
}  // namespace ondrel::test
