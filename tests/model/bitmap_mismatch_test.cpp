// Bitmaps whose geometry, row length, depth and bytes do not match, as any file may claim them: every operation on
// each. Where a pixel lies, and whether there is one, is worked out here.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/MMCObjectBitmap.h>
#include <ondrel/platform/framework.h>

#include "model/bitmap_buffer.h"
#include "support/archive_bytes.h"
#include "support/model/hand_bytes.h"

namespace ondrel::test {
namespace {

constexpr LONG kMostLong = std::numeric_limits<LONG>::max();
constexpr LONG kLeastLong = std::numeric_limits<LONG>::min();
constexpr LONG kWidths[] = {kLeastLong, -2, 0, 1, 3, kMostLong};
constexpr LONG kHeights[] = {kLeastLong, -1, 0, 1, 3, kMostLong};
constexpr LONG kRowBytes[] = {kLeastLong, -4, 0, 1, 12, kMostLong};
constexpr int kCoordinates[] = {kLeastLong, -1, 0, 1, 2, 9, kMostLong};

struct BitmapClaim {
  LONG width, height, rowBytes;
  WORD planes, depth;
  std::string bytes;

  std::string Record() const {
    return Long(0) + Long(width) + Long(height) + Long(rowBytes) + Word(planes) + Word(depth) + ByteVector(bytes);
  }
  /// Where the bytes of a pixel begin that can be addressed; -1 for any other.
  std::int64_t PlaceOf(std::int64_t x, std::int64_t y) const {
    if ((depth != 1 && depth != 32) || x < 0 || x >= width || y < 0 || y >= height || rowBytes < 0) return -1;
    const std::int64_t place = y * rowBytes + x * depth / 8;
    const std::int64_t end = place + (depth == 32 ? 4 : 1);
    return end <= static_cast<std::int64_t>(bytes.size()) ? place : -1;
  }
  DWORD PixelAt(std::int64_t x, std::int64_t y) const {
    const std::int64_t place = PlaceOf(x, y);
    if (place < 0) return 0;
    const auto byte = [&](std::int64_t offset) {
      return DWORD{static_cast<unsigned char>(bytes[static_cast<std::size_t>(place + offset)])};
    };
    if (depth == 1) return (byte(0) & (0x80U >> (x % 8))) != 0 ? 0x00FFFFFF : 0;
    return byte(0) << 16 | byte(1) << 8 | byte(2);
  }
  void Paint(std::int64_t x, std::int64_t y, const std::string& blueGreenRed) {
    const std::int64_t place = depth == 32 ? PlaceOf(x, y) : -1;
    if (place >= 0) bytes.replace(static_cast<std::size_t>(place), blueGreenRed.size(), blueGreenRed);
  }
  /// The bytes that the geometry takes; -1 where they cannot be counted in 31 bits.
  std::int64_t Size() const {
    const double bits = 1.0 * width * height * planes * depth;
    return bits < 0 || bits > kMostLong ? -1 : static_cast<std::int64_t>(bits) / 8;
  }
};

std::ostream& operator<<(std::ostream& out, const BitmapClaim& claim) {
  return out << claim.width << " x " << claim.height << " pixels, " << claim.planes << " x " << claim.depth
             << " bits, rows of " << claim.rowBytes << ", " << claim.bytes.size() << " bytes";
}

std::vector<BitmapClaim> BitmapClaims() {
  std::string pattern;
  for (int index = 0; index < 100; ++index) pattern += static_cast<char>(index * 73 + 149);
  std::vector<BitmapClaim> claims;
  for (const WORD depth : {0, 1, 2, 4, 8, 16, 24, 32, 64, 0xFFFF}) {
    for (const LONG width : kWidths) {
      for (const LONG height : kHeights) {
        for (const LONG rowBytes : kRowBytes) {
          for (const std::size_t length : {0, 1, 3, 24, 36, 100}) {
            claims.push_back({width, height, rowBytes, 1, depth, pattern.substr(0, length)});
          }
        }
      }
    }
  }
  for (const WORD planes : {0, 2, 0xFFFF}) claims.push_back({2, 2, 8, planes, 32, pattern.substr(0, 16)});
  return claims;
}

CMMCObjectBitmap LoadedFrom(const BitmapClaim& claim) {
  LoadingArchive archive(claim.Record(), 64);
  CMMCObjectBitmap bitmap;
  bitmap.Deserialize(*archive);
  return bitmap;
}

std::string SerializedBytes(const CMMCObjectBitmap& bitmap) {
  return Stored([&](CVellum& archive) { bitmap.Serialize(archive); }, 64);
}

TEST(BitmapMismatch, EveryPixelIsReadWhereItLiesOrBlack) {
  for (const BitmapClaim& claim : BitmapClaims()) {
    const CMMCObjectBitmap bitmap = LoadedFrom(claim);
    for (const int x : kCoordinates) {
      for (const int y : kCoordinates) {
        ASSERT_EQ(bitmap.GetPixel(x, y), claim.PixelAt(x, y)) << x << ", " << y << " of " << claim;
      }
    }
  }
}

TEST(BitmapMismatch, EveryPixelIsWrittenWhereItLiesOrNowhere) {
  for (BitmapClaim& claim : BitmapClaims()) {
    CMMCObjectBitmap bitmap = LoadedFrom(claim);
    for (const int x : kCoordinates) {
      for (const int y : kCoordinates) {
        bitmap.SetPixel(x, y, 0x00C1C2C3);
        claim.Paint(x, y, "\xC1\xC2\xC3");
      }
    }
    ASSERT_EQ(Hex(BufferOf(bitmap)), Hex(claim.bytes)) << claim;
  }
}

TEST(BitmapMismatch, EveryBitmapIsStoredAsItWasLoadedAndMovesWhole) {
  for (const BitmapClaim& claim : BitmapClaims()) {
    CMMCObjectBitmap bitmap = LoadedFrom(claim);
    ASSERT_EQ(bitmap.GetLength(), claim.bytes.size()) << claim;
    ASSERT_EQ(bitmap.bmBits, bitmap.GetBuffer()) << claim;
    ASSERT_EQ(SerializedBytes(bitmap), claim.Record()) << claim;
    const CMMCObjectBitmap built(std::move(bitmap));
    ASSERT_EQ(SerializedBytes(built), claim.Record()) << claim;
    ASSERT_EQ(bitmap.GetPixel(0, 0), 0U) << claim;  // NOLINT(bugprone-use-after-move): what is left is looked at
  }
}

TEST(BitmapMismatch, ConstructMakesTheBufferFitOrLeavesItAlone) {
  constexpr std::int64_t kLargestTried = 1024 * 1024;  // the others differ in nothing but the time to clear them
  for (const BitmapClaim& claim : BitmapClaims()) {
    const std::int64_t size = claim.Size();
    if (size > kLargestTried) continue;
    CMMCObjectBitmap bitmap = LoadedFrom(claim);
    if (size < 0) {
      EXPECT_THROW(bitmap.Construct(), CMemoryException) << claim;
      ASSERT_EQ(SerializedBytes(bitmap), claim.Record()) << claim;
      continue;
    }
    bitmap.Construct();
    std::string expected = claim.bytes;
    expected.resize(static_cast<std::size_t>(size), '\0');
    ASSERT_EQ(BufferOf(bitmap), expected) << claim;
    ASSERT_EQ(bitmap.bmBits, bitmap.GetBuffer()) << claim;
  }
}

}  // namespace
}  // namespace ondrel::test
