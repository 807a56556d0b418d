// Bitmap handles.
#include <cstring>
#include <limits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ondrel/platform/graphics.h>

#include "graphics/icon_reading.h"
#include "support/live_handles.h"

namespace ondrel::test {
namespace {

using platform::UniqueBitmap;
using testing::ElementsAre;

TEST(Bitmap, DescribesItselfAsItWasMade) {
  const UniqueBitmap bitmap(CreateBitmap(5, 3, 1, 24, nullptr));
  BITMAP description = {};
  description.bmBits = &description;
  EXPECT_EQ(GetObjectW(bitmap.get(), sizeof(BITMAP), &description), int{sizeof(BITMAP)});
  EXPECT_EQ(description.bmType, 0);
  EXPECT_EQ(description.bmWidth, 5);
  EXPECT_EQ(description.bmHeight, 3);
  EXPECT_EQ(description.bmWidthBytes, 16);  // 15 bytes of pixels and one of padding
  EXPECT_EQ(description.bmPlanes, 1);
  EXPECT_EQ(description.bmBitsPixel, 24);
  EXPECT_EQ(description.bmBits, nullptr);
}

TEST(Bitmap, RowsStartAtEvenBytes) {
  struct Case {
    int width;
    UINT bits;
    LONG stride;
  };
  for (const Case& c :
       {Case{1, 1, 2}, Case{16, 1, 2}, Case{17, 1, 4}, Case{32, 1, 4}, Case{3, 4, 2}, Case{5, 4, 4}, Case{1, 8, 2},
        Case{3, 8, 4}, Case{3, 16, 6}, Case{1, 24, 4}, Case{2, 24, 6}, Case{3, 32, 12}}) {
    const UniqueBitmap bitmap(CreateBitmap(c.width, 2, 1, c.bits, nullptr));
    EXPECT_EQ(ReadBitmap(bitmap.get()).header.bmWidthBytes, c.stride) << c.width << " pixels of " << c.bits << " bits";
  }
}

TEST(Bitmap, KeepsTheRowsThatItWasGivenAtEveryDepth) {
  for (const UINT bits : {1U, 4U, 8U, 16U, 24U, 32U}) {
    std::vector<BYTE> rows(2 * 2 * bits);  // 16 pixels a row need no padding at any depth
    for (std::size_t index = 0; index < rows.size(); ++index) rows[index] = static_cast<BYTE>(index * 7 + 1);
    const UniqueBitmap bitmap(CreateBitmap(16, 2, 1, bits, rows.data()));
    EXPECT_EQ(ReadBitmap(bitmap.get()).bits, rows) << bits << " bits";
  }
}

TEST(Bitmap, WithoutRowsIsZero) {
  const UniqueBitmap bitmap(CreateBitmap(2, 1, 1, 32, nullptr));
  EXPECT_THAT(ReadBitmap(bitmap.get()).bits, ElementsAre(0, 0, 0, 0, 0, 0, 0, 0));
}

TEST(Bitmap, OfNoWidthOrHeightIsOneMonochromePixel) {
  const BYTE byte = 0xFF;
  for (const auto& [width, height] : {std::pair{0, 0}, std::pair{0, 7}, std::pair{7, 0}}) {
    // A strip of no images has no planes and no depth either.
    const UniqueBitmap bitmap(CreateBitmap(width, height, 0, 0, &byte));
    const BitmapContents contents = ReadBitmap(bitmap.get());
    EXPECT_EQ(contents.header.bmWidth, 1) << width << " x " << height;
    EXPECT_EQ(contents.header.bmHeight, 1) << width << " x " << height;
    EXPECT_EQ(contents.header.bmPlanes, 1) << width << " x " << height;
    EXPECT_EQ(contents.header.bmBitsPixel, 1) << width << " x " << height;
    EXPECT_THAT(contents.bits, ElementsAre(0, 0)) << width << " x " << height;
  }
}

TEST(Bitmap, LargerThanAnyIsRefused) {
  constexpr int kMost = std::numeric_limits<int>::max();
  struct Case {
    int width;
    int height;
    UINT bits;
  };
  for (const Case& c : {Case{kMost, kMost, 32}, Case{kMost, 2, 8}, Case{1 << 15, 1 << 14, 32}}) {
    SetLastError(ERROR_SUCCESS);
    const UniqueBitmap bitmap(CreateBitmap(c.width, c.height, 1, c.bits, nullptr));
    EXPECT_EQ(bitmap.get(), nullptr) << c.width << " x " << c.height << " x " << c.bits;
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER) << c.width << " x " << c.height << " x " << c.bits;
  }
}

TEST(Bitmap, GivesNoMoreBitsThanAskedForAndNoMoreThanItHas) {
  const BYTE rows[] = {1, 2, 3, 4};
  const UniqueBitmap bitmap(CreateBitmap(1, 1, 1, 32, rows));
  std::vector<BYTE> bits(6, 0xEE);
  EXPECT_EQ(GetBitmapBits(bitmap.get(), 3, bits.data()), 3);
  EXPECT_THAT(bits, ElementsAre(1, 2, 3, 0xEE, 0xEE, 0xEE));
  EXPECT_EQ(GetBitmapBits(bitmap.get(), 6, bits.data()), 4);
  EXPECT_THAT(bits, ElementsAre(1, 2, 3, 4, 0xEE, 0xEE));
  EXPECT_EQ(GetBitmapBits(bitmap.get(), 0, bits.data()), 0);
  EXPECT_EQ(GetBitmapBits(bitmap.get(), 0, nullptr), 4) << "without a buffer, the bytes there are";
}

TEST(Bitmap, DescriptionNeedsItsWholeSize) {
  const UniqueBitmap bitmap(CreateBitmap(1, 1, 1, 32, nullptr));
  BITMAP description = {};
  description.bmWidth = 77;
  EXPECT_EQ(GetObjectW(bitmap.get(), sizeof(BITMAP) - 1, &description), 0);
  EXPECT_EQ(description.bmWidth, 77);
  EXPECT_EQ(GetObjectW(bitmap.get(), 0, nullptr), int{sizeof(BITMAP)}) << "without a place, the size";
}

TEST(Bitmap, NullHandleFailsEverywhere) {
  BITMAP description = {};
  BYTE byte = 0;
  EXPECT_EQ(GetObjectW(nullptr, sizeof(BITMAP), &description), 0);
  EXPECT_EQ(GetBitmapBits(nullptr, 1, &byte), 0);
  EXPECT_FALSE(DeleteObject(nullptr));
}

TEST(Bitmap, OfRowsThatAreHandedOverHasThem) {
  const UniqueBitmap bitmap = platform::AdoptBitmap(3, 2, 8, {1, 2, 3, 0, 4, 5, 6, 0});
  const BitmapContents contents = ReadBitmap(bitmap.get());
  EXPECT_EQ(contents.header.bmWidth, 3);
  EXPECT_EQ(contents.header.bmHeight, 2);
  EXPECT_EQ(contents.header.bmWidthBytes, 4) << "rows are padded to 2 bytes";
  EXPECT_EQ(contents.header.bmPlanes, 1);
  EXPECT_EQ(contents.header.bmBitsPixel, 8);
  EXPECT_THAT(contents.bits, ElementsAre(1, 2, 3, 0, 4, 5, 6, 0));
}

TEST(Bitmap, OfMoreOrFewerRowsThanItHasIsRefused) {
  struct Case {
    int width;
    int height;
    std::size_t bytes;
  };
  constexpr int kMost = std::numeric_limits<int>::max();
  constexpr int kLeast = std::numeric_limits<int>::min();
  for (const Case& c : {Case{1, 1, 3}, Case{1, 1, 5}, Case{1, 1, 0}, Case{0, 1, 0}, Case{1, 0, 0}, Case{-1, -1, 4},
                        Case{kMost, kMost, 4}, Case{kLeast, kLeast, 0}, Case{1 << 30, 4, 0}}) {
    SetLastError(ERROR_SUCCESS);
    const UniqueBitmap bitmap = platform::AdoptBitmap(c.width, c.height, 32, std::vector<BYTE>(c.bytes));
    EXPECT_EQ(bitmap.get(), nullptr) << c.width << " x " << c.height << ", " << c.bytes << " bytes";
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER) << c.width << " x " << c.height << ", " << c.bytes << " bytes";
  }
}

TEST(Bitmap, HandlesAreCountedWhileTheyLive) {
  ASSERT_EQ(CountLiveHandles().bitmaps, 0);
  {
    const UniqueBitmap first(CreateBitmap(1, 1, 1, 1, nullptr));
    const UniqueBitmap second(CreateBitmap(0, 0, 0, 0, nullptr));
    EXPECT_EQ(CountLiveHandles().bitmaps, 2);
  }
  EXPECT_EQ(CountLiveHandles().bitmaps, 0);
}

}  // namespace
}  // namespace ondrel::test
