// The masked pixels of an icon: transparent pixels take the key colour, one by one and in a whole copy.

#include <gtest/gtest.h>

#include <new>
#include <string>

#include <ondrel/MMCObjectIcon.h>
#include <ondrel/platform/framework.h>

#include "support/archive_bytes.h"
#include "support/model/icon_fixtures.h"

namespace ondrel::test {
namespace {

constexpr DWORD kMaskedKey = 0x00FF00FF;

CMMCObjectIcon Loaded(const std::string& bytes) {
  LoadingArchive archive(bytes);
  CMMCObjectIcon icon;
  icon.Deserialize(*archive);
  EXPECT_EQ(archive.Unused(), 0U);
  return icon;
}

std::string BufferOf(CMMCObjectBitmap& bitmap) {
  return {static_cast<const char*>(bitmap.GetBuffer()), bitmap.GetBuffer() == nullptr ? 0 : bitmap.GetLength()};
}

TEST(IconMasked, TransparentPixelsAreTheKeyColourAndOthersTheirOwn) {
  const CMMCObjectIcon icon = Loaded(TinyIconBytes());
  EXPECT_EQ(icon.GetPixel(true, 0, 0, kMaskedKey), 0x00010203U);
  EXPECT_EQ(icon.GetPixel(true, 1, 0, kMaskedKey), kMaskedKey);
  EXPECT_EQ(icon.GetPixel(true, 0, 1, kMaskedKey), kMaskedKey);
  EXPECT_EQ(icon.GetPixel(true, 1, 1, kMaskedKey), 0x000D0E0FU);
  EXPECT_EQ(icon.GetPixel(false, 0, 0, kMaskedKey), kMaskedKey);
  EXPECT_EQ(icon.GetPixel(false, 0, 0, 0x00123456), 0x00123456U);
}

TEST(IconMasked, TheCopyHasRowsOfItsOwnAndAZeroFourthByte) {
  CMMCObjectBitmap copy = Loaded(TinyIconBytes()).GetMaskedBitmap(true, 0x00A1B2C3);
  EXPECT_EQ(copy.bmType, 0);
  EXPECT_EQ(copy.bmWidth, 2);
  EXPECT_EQ(copy.bmHeight, 2);
  EXPECT_EQ(copy.bmWidthBytes, 8);
  EXPECT_EQ(copy.bmPlanes, 1);
  EXPECT_EQ(copy.bmBitsPixel, 32);
  EXPECT_EQ(Hex(BufferOf(copy)), Hex(FromHex("01 02 03 00  A1 B2 C3 00  A1 B2 C3 00  0D 0E 0F 00")));
}

TEST(IconMasked, TheCopyOfTheSmallImageIsTheSmallOne) {
  CMMCObjectBitmap copy = Loaded(TinyIconBytes()).GetMaskedBitmap(false, 0x00A1B2C3);
  EXPECT_EQ(copy.bmWidth, 1);
  EXPECT_EQ(copy.bmHeight, 1);
  EXPECT_EQ(Hex(BufferOf(copy)), Hex(FromHex("A1 B2 C3 00")));
}

TEST(IconMasked, TheCopysRowBytesAreComputedNotCopied) {
  const std::string bytes =
      BitmapBytes(1, 2, 12, 32, FromHex("01 02 03 04 EE EE EE EE EE EE EE EE 05 06 07 08")) + std::string(3 * 24, '\0');
  CMMCObjectBitmap copy = Loaded(bytes).GetMaskedBitmap(true, kMaskedKey);
  EXPECT_EQ(copy.bmWidthBytes, 4);
  EXPECT_EQ(Hex(BufferOf(copy)), Hex(FromHex("01 02 03 00  05 06 07 00")));
}

TEST(IconMasked, EveryPixelOfAnOrdinaryIconFollowsTheRule) {
  const TemporaryFolder folder;
  const IconPicture large = PatternPicture(32, 32, 32);
  CMMCObjectIcon icon;
  ASSERT_EQ(icon.Construct(WriteIcon(folder, "icon.ico", {large, SolidIcon(16, 0)})), S_OK);
  const CMMCObjectBitmap copy = icon.GetMaskedBitmap(true, kMaskedKey);
  EXPECT_EQ(copy.bmWidth, 32);
  EXPECT_EQ(copy.bmHeight, 32);
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 32; ++x) {
      ASSERT_EQ(copy.GetPixel(x, y), large.IsTransparent(x, y) ? kMaskedKey : ColourOf(large, x, y)) << x << ", " << y;
    }
  }
}

TEST(IconMasked, AColourImageOfAnotherDepthGivesAZeroCopyButMaskedPixels) {
  const std::string bytes = BitmapBytes(2, 1, 6, 24, FromHex("01 02 03 04 05 06")) +
                            BitmapBytes(2, 1, 2, 1, FromHex("40 00")) + std::string(2 * 24, '\0');
  const CMMCObjectIcon icon = Loaded(bytes);
  EXPECT_EQ(icon.GetPixel(true, 0, 0, kMaskedKey), 0U) << "opaque pixels of other depths are black";
  EXPECT_EQ(icon.GetPixel(true, 1, 0, kMaskedKey), kMaskedKey);
  CMMCObjectBitmap copy = icon.GetMaskedBitmap(true, kMaskedKey);
  EXPECT_EQ(copy.bmWidth, 2);
  EXPECT_EQ(copy.bmHeight, 1);
  EXPECT_EQ(copy.bmWidthBytes, 6);
  EXPECT_EQ(copy.bmBitsPixel, 24);
  EXPECT_EQ(Hex(BufferOf(copy)), Hex(std::string(6, '\0')));
}

TEST(IconMasked, AMaskOf32BitsMarksEveryPixelThatIsNotBlack) {
  const std::string bytes = BitmapBytes(2, 1, 8, 32, FromHex("01 02 03 04 05 06 07 08")) +
                            BitmapBytes(2, 1, 8, 32, FromHex("00 00 00 FF  00 01 00 00")) + std::string(2 * 24, '\0');
  const CMMCObjectIcon icon = Loaded(bytes);
  EXPECT_EQ(icon.GetPixel(true, 0, 0, kMaskedKey), 0x00010203U);
  EXPECT_EQ(icon.GetPixel(true, 1, 0, kMaskedKey), kMaskedKey);
}

TEST(IconMasked, AnEmptyIconGivesAnEmptyCopy) {
  const CMMCObjectIcon icon;
  const CMMCObjectBitmap copy = icon.GetMaskedBitmap(true, kMaskedKey);
  EXPECT_EQ(copy.bmWidth, 0);
  EXPECT_EQ(copy.bmBits, nullptr);
  EXPECT_EQ(icon.GetColourBitmap(false).bmWidth, 0);
  EXPECT_EQ(icon.GetColourBitmap(false).bmBits, nullptr);
}

TEST(IconMasked, PixelsThatTheDataDoesNotHoldAreBlack) {
  // 4 x 4 pixels are claimed, one is there.
  const std::string bytes = BitmapBytes(4, 4, 16, 32, FromHex("01 02 03 04")) + std::string(3 * 24, '\0');
  CMMCObjectBitmap copy = Loaded(bytes).GetMaskedBitmap(true, kMaskedKey);
  EXPECT_EQ(Hex(BufferOf(copy)), Hex(FromHex("01 02 03 00") + std::string(60, '\0')));
}

TEST(IconMasked, HostileGeometryIsRefusedOrEmptyAndEndsQuickly) {
  constexpr std::int64_t kMost = 0x7FFFFFFF;
  struct Geometry {
    std::int64_t width, height;
    unsigned depth;
  };
  for (const Geometry& geometry : {Geometry{kMost, kMost, 32}, Geometry{-1, 1, 32}, Geometry{1, -1, 32},
                                   Geometry{kMost, 1, 32}, Geometry{1, kMost, 32}, Geometry{-kMost - 1, kMost, 1}}) {
    const CMMCObjectIcon icon =
        Loaded(BitmapBytes(geometry.width, geometry.height, 4, geometry.depth, "") + std::string(3 * 24, '\0'));
    EXPECT_THROW(icon.GetMaskedBitmap(true, kMaskedKey), CMemoryException)
        << geometry.width << " x " << geometry.height;
    EXPECT_EQ(icon.GetPixel(true, 1, 1, kMaskedKey), 0U);
  }
  // Negative edges whose product is positive, and edges of nothing.
  for (const Geometry& geometry : {Geometry{-2, -2, 32}, Geometry{kMost, kMost, 0}, Geometry{0, kMost, 32}}) {
    const CMMCObjectIcon icon =
        Loaded(BitmapBytes(geometry.width, geometry.height, 4, geometry.depth, "") + std::string(3 * 24, '\0'));
    CMMCObjectBitmap copy = icon.GetMaskedBitmap(true, kMaskedKey);
    const std::string pixels = BufferOf(copy);
    EXPECT_EQ(Hex(pixels), Hex(std::string(pixels.size(), '\0'))) << geometry.width << " x " << geometry.height;
    EXPECT_LE(pixels.size(), 16U);
  }
}

}  // namespace
}  // namespace ondrel::test
