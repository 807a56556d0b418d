// Bitmap handles of this system's own: geometries that they do not take, and the last error behind every failure.
// Windows takes more, by rounding it, and tells less.
#include <limits>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"

namespace ondrel::test {
namespace {

using platform::UniqueBitmap;

TEST(PosixBitmap, OfImpossibleGeometryIsRefused) {
  struct Case {
    int width;
    int height;
    UINT planes;
    UINT bits;
  };
  for (const Case& c : {Case{-1, 1, 1, 32}, Case{1, -1, 1, 32}, Case{-1, 0, 1, 32},
                        Case{std::numeric_limits<int>::min(), 1, 1, 1}, Case{1, 1, 0, 32}, Case{1, 1, 2, 32},
                        Case{1, 1, 4, 1}, Case{1, 1, 1, 0}, Case{1, 1, 1, 2}, Case{1, 1, 1, 33}}) {
    SetLastError(ERROR_SUCCESS);
    const UniqueBitmap bitmap(CreateBitmap(c.width, c.height, c.planes, c.bits, nullptr));
    EXPECT_EQ(bitmap.get(), nullptr) << c.width << " x " << c.height << " x " << c.planes << " x " << c.bits;
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER)
        << c.width << " x " << c.height << " x " << c.planes << " x " << c.bits;
  }
}

TEST(PosixBitmap, NegativeCountOfBytesIsRefused) {
  const UniqueBitmap bitmap(CreateBitmap(1, 1, 1, 32, nullptr));
  BYTE bits[4];
  SetLastError(ERROR_SUCCESS);
  EXPECT_EQ(GetBitmapBits(bitmap.get(), -1, bits), 0);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(PosixBitmap, TooLittleRoomForADescriptionIsAnInvalidParameter) {
  const UniqueBitmap bitmap(CreateBitmap(1, 1, 1, 32, nullptr));
  BITMAP description = {};
  SetLastError(ERROR_SUCCESS);
  EXPECT_EQ(GetObjectW(bitmap.get(), sizeof(BITMAP) - 1, &description), 0);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(PosixBitmap, NullHandleIsAnInvalidHandleEverywhere) {
  BITMAP description = {};
  BYTE byte = 0;
  for (const auto& call : {+[](BITMAP*d, BYTE*) { return GetObjectW(nullptr, sizeof(BITMAP), d); },
                           +[](BITMAP*, BYTE*b) { return int{GetBitmapBits(nullptr, 1, b)}; },
                           +[](BITMAP*, BYTE*) { return DeleteObject(nullptr); }}) {
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(call(&description, &byte), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
  }
}

}  // namespace
}  // namespace ondrel::test
