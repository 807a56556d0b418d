// A bitmap's geometry: its buffer, its rows, and what becomes of both in moves and new sizes.

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

#include <ondrel/MMCObjectBitmap.h>
#include <ondrel/platform/framework.h>

#include "model/bitmap_buffer.h"
#include "support/archive_bytes.h"
#include "support/model/hand_bytes.h"

namespace ondrel::test {
namespace {

/// Whether sizing the buffer of this geometry is refused for want of memory.
bool ConstructIsRefused(CMMCObjectBitmap& bitmap) {
  try {
    bitmap.Construct();
  } catch (const CMemoryException&) {
    return true;
  } catch (const std::bad_alloc&) {
    return true;
  }
  return false;
}

TEST(BitmapGeometry, ADefaultBitmapHasNoGeometryAndNoPixels) {
  CMMCObjectBitmap bitmap;
  EXPECT_EQ(bitmap.bmType, 0);
  EXPECT_EQ(bitmap.bmWidth, 0);
  EXPECT_EQ(bitmap.bmHeight, 0);
  EXPECT_EQ(bitmap.bmWidthBytes, 0);
  EXPECT_EQ(bitmap.bmPlanes, 0);
  EXPECT_EQ(bitmap.bmBitsPixel, 0);
  EXPECT_EQ(bitmap.bmBits, nullptr);
  EXPECT_EQ(bitmap.GetBuffer(), nullptr);
  EXPECT_EQ(bitmap.GetLength(), 0U);
}

TEST(BitmapGeometry, AMaskHasTwoBytesForEachRowOf16Pixels) {
  CMMCObjectBitmap bitmap(16, 16, 1, 1);
  EXPECT_EQ(bitmap.bmType, 0);
  EXPECT_EQ(bitmap.bmWidth, 16);
  EXPECT_EQ(bitmap.bmHeight, 16);
  EXPECT_EQ(bitmap.bmWidthBytes, 2);
  EXPECT_EQ(bitmap.bmPlanes, 1);
  EXPECT_EQ(bitmap.bmBitsPixel, 1);
  EXPECT_EQ(bitmap.bmBits, bitmap.GetBuffer());
  EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(std::string(32, '\0')));
}

TEST(BitmapGeometry, AColourBitmapHasFourBytesForEachPixel) {
  CMMCObjectBitmap bitmap(3, 2, 1, 32);
  EXPECT_EQ(bitmap.bmWidthBytes, 12);
  EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(std::string(24, '\0')));
}

TEST(BitmapGeometry, RowsAreNotPaddedAndTheirBytesTruncate) {
  CMMCObjectBitmap ten(10, 1, 1, 1);
  EXPECT_EQ(ten.bmWidthBytes, 1);
  EXPECT_EQ(ten.GetLength(), 1U);
  CMMCObjectBitmap seven(7, 3, 1, 1);  // 21 bits in all
  EXPECT_EQ(seven.bmWidthBytes, 0);
  EXPECT_EQ(seven.GetLength(), 2U);
  CMMCObjectBitmap odd(3, 3, 1, 24);
  EXPECT_EQ(odd.bmWidthBytes, 9);
  EXPECT_EQ(odd.GetLength(), 27U);
}

TEST(BitmapGeometry, PlanesCountInTheBufferButNotInTheRow) {
  const CMMCObjectBitmap bitmap(8, 2, 3, 8);
  EXPECT_EQ(bitmap.bmWidthBytes, 8);
  EXPECT_EQ(bitmap.GetLength(), 48U);
}

TEST(BitmapGeometry, TheBufferLengthDoesNotDependOnTheRowBytes) {
  CMMCObjectBitmap bitmap;
  bitmap.bmWidth = 4;
  bitmap.bmHeight = 4;
  bitmap.bmPlanes = 1;
  bitmap.bmBitsPixel = 32;
  bitmap.bmWidthBytes = 1000;
  bitmap.Construct();
  EXPECT_EQ(bitmap.GetLength(), 64U);
  EXPECT_EQ(bitmap.bmWidthBytes, 1000);
  EXPECT_EQ(bitmap.bmBits, bitmap.GetBuffer());
}

TEST(BitmapGeometry, AnotherSizeKeepsTheLeadingBytesAndClearsTheNewOnes) {
  CMMCObjectBitmap bitmap(2, 1, 1, 32);
  std::memcpy(bitmap.GetBuffer(), "\x01\x02\x03\x04\x05\x06\x07\x08", 8);
  bitmap.bmWidth = 3;
  bitmap.Construct();
  EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(FromHex("01 02 03 04 05 06 07 08 00 00 00 00")));
  EXPECT_EQ(bitmap.bmBits, bitmap.GetBuffer());
  bitmap.bmWidth = 1;
  bitmap.Construct();
  EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(FromHex("01 02 03 04")));
  EXPECT_EQ(bitmap.bmBits, bitmap.GetBuffer());
  bitmap.bmHeight = 0;
  bitmap.Construct();
  EXPECT_EQ(bitmap.GetLength(), 0U);
  EXPECT_EQ(bitmap.bmBits, nullptr);
}

TEST(BitmapGeometry, ASizeOfZeroGivesAnEmptyBuffer) {
  EXPECT_EQ(CMMCObjectBitmap(0, 16, 1, 32).GetLength(), 0U);
  EXPECT_EQ(CMMCObjectBitmap(16, 0, 1, 32).GetLength(), 0U);
  EXPECT_EQ(CMMCObjectBitmap(16, 16, 0, 32).GetLength(), 0U);
  EXPECT_EQ(CMMCObjectBitmap(16, 16, 1, 0).GetLength(), 0U);
  EXPECT_EQ(CMMCObjectBitmap(1, 1, 1, 1).GetLength(), 0U);  // an eighth of a byte
  EXPECT_EQ(CMMCObjectBitmap(16, 16, 1, 0).bmBits, nullptr);
}

TEST(BitmapGeometry, ANegativeSizeIsRefusedAndKeepsTheBuffer) {
  CMMCObjectBitmap bitmap(2, 1, 1, 32);
  std::memcpy(bitmap.GetBuffer(), "\x01\x02\x03\x04\x05\x06\x07\x08", 8);
  bitmap.bmHeight = -1;
  EXPECT_TRUE(ConstructIsRefused(bitmap));
  EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(FromHex("01 02 03 04 05 06 07 08")));
  EXPECT_EQ(bitmap.bmBits, bitmap.GetBuffer());
  EXPECT_THROW(CMMCObjectBitmap(-16, 16, 1, 32), CMemoryException);
}

TEST(BitmapGeometry, ASizeBeyond31BitsIsRefusedAndKeepsTheBuffer) {
  constexpr LONG kMost = std::numeric_limits<LONG>::max();
  constexpr LONG kLeast = std::numeric_limits<LONG>::min();
  struct Geometry {
    LONG width, height;
    WORD planes, depth;
  };
  // The last two would wrap around to a small positive product: 0x10000 * 0x10000 * 32, and 2^32 + 32.
  for (const Geometry& geometry :
       {Geometry{kMost, kMost, 0xFFFF, 0xFFFF}, Geometry{kMost, 1, 1, 32}, Geometry{kLeast, kMost, 1, 32},
        Geometry{kLeast, 1, 1, 1}, Geometry{0x4000000, 1, 1, 32}, Geometry{0x10000, 0x10000, 1, 32},
        Geometry{0x8000001, 1, 1, 32}}) {
    CMMCObjectBitmap bitmap(2, 1, 1, 32);
    bitmap.bmWidth = geometry.width;
    bitmap.bmHeight = geometry.height;
    bitmap.bmPlanes = geometry.planes;
    bitmap.bmBitsPixel = geometry.depth;
    EXPECT_TRUE(ConstructIsRefused(bitmap)) << geometry.width << " x " << geometry.height;
    EXPECT_EQ(bitmap.GetLength(), 8U);
    EXPECT_EQ(bitmap.bmBits, bitmap.GetBuffer());
  }
}

TEST(BitmapGeometry, AZeroFactorMakesAnyGeometryEmpty) {
  constexpr LONG kMost = std::numeric_limits<LONG>::max();
  CMMCObjectBitmap bitmap;
  bitmap.bmWidth = kMost;
  bitmap.bmHeight = kMost;
  bitmap.bmPlanes = 0xFFFF;
  bitmap.bmBitsPixel = 0;
  bitmap.Construct();
  EXPECT_EQ(bitmap.GetLength(), 0U);
}

TEST(BitmapGeometry, AMoveTakesGeometryAndBufferAndLeavesTheSourceWithoutPixels) {
  CMMCObjectBitmap source(2, 1, 1, 32);
  source.bmType = 5;
  source.bmWidthBytes = 9;
  std::memcpy(source.GetBuffer(), "\x01\x02\x03\x04\x05\x06\x07\x08", 8);
  const void* const pixels = source.GetBuffer();

  CMMCObjectBitmap target(std::move(source));
  EXPECT_EQ(target.bmType, 5);
  EXPECT_EQ(target.bmWidth, 2);
  EXPECT_EQ(target.bmHeight, 1);
  EXPECT_EQ(target.bmWidthBytes, 9);
  EXPECT_EQ(target.bmPlanes, 1);
  EXPECT_EQ(target.bmBitsPixel, 32);
  EXPECT_EQ(target.bmBits, pixels);
  EXPECT_EQ(target.GetBuffer(), pixels);
  EXPECT_EQ(target.GetLength(), 8U);
  EXPECT_EQ(source.GetLength(), 0U);  // NOLINT(bugprone-use-after-move): what is left is the point
  EXPECT_EQ(source.GetBuffer(), nullptr);
  EXPECT_EQ(source.bmBits, nullptr);
  EXPECT_EQ(source.bmWidth, 2);
  EXPECT_EQ(source.GetPixel(0, 0), 0U) << "the geometry is still there, the pixels are not";
}

TEST(BitmapGeometry, AMoveAssignmentReplacesWhatTheTargetHad) {
  CMMCObjectBitmap source(2, 1, 1, 32);
  std::memcpy(source.GetBuffer(), "\x01\x02\x03\x04\x05\x06\x07\x08", 8);
  const void* const pixels = source.GetBuffer();
  CMMCObjectBitmap target(16, 16, 1, 1);

  target = std::move(source);
  EXPECT_EQ(target.bmWidth, 2);
  EXPECT_EQ(target.bmHeight, 1);
  EXPECT_EQ(target.bmBitsPixel, 32);
  EXPECT_EQ(target.bmBits, pixels);
  EXPECT_EQ(target.GetLength(), 8U);
  EXPECT_EQ(source.GetLength(), 0U);  // NOLINT(bugprone-use-after-move): what is left is the point
  EXPECT_EQ(source.bmBits, nullptr);
}

TEST(BitmapGeometry, AMoveOntoItselfKeepsThePixels) {
  CMMCObjectBitmap bitmap(2, 1, 1, 32);
  CMMCObjectBitmap& same = bitmap;
  bitmap = std::move(same);
  EXPECT_EQ(bitmap.GetLength(), 8U);
  EXPECT_EQ(bitmap.bmBits, bitmap.GetBuffer());
}

TEST(BitmapGeometry, AnEmptyBitmapMoves) {
  CMMCObjectBitmap source;
  CMMCObjectBitmap target(std::move(source));
  EXPECT_EQ(target.bmBits, nullptr);
  CMMCObjectBitmap full(2, 1, 1, 32);
  full = std::move(target);
  EXPECT_EQ(full.GetLength(), 0U);
  EXPECT_EQ(full.bmBits, nullptr);
}

TEST(BitmapGeometry, BitmapsMoveAndDoNotCopy) {
  EXPECT_FALSE(std::is_copy_constructible_v<CMMCObjectBitmap>);
  EXPECT_FALSE(std::is_copy_assignable_v<CMMCObjectBitmap>);
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<CMMCObjectBitmap>);
  EXPECT_TRUE(std::has_virtual_destructor_v<CMMCObjectBitmap>);
}

}  // namespace
}  // namespace ondrel::test
