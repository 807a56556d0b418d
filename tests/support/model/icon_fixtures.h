// Icons for tests of the model: files on disk, and records as an object image holds them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <ondrel/MMCObjectSet.h>

#include "support/icon_bytes.h"
#include "support/model/hand_bytes.h"
#include "support/temporary_folder.h"

namespace ondrel::test {

/// Writes an icon file of these pictures; its path.
inline CString WriteIcon(const TemporaryFolder& folder, std::string_view name,
                         const std::vector<IconPicture>& pictures) {
  return Wide(folder.Write(name, IconFileBytes(std::vector<StoredImage>(pictures.begin(), pictures.end()))));
}

/// A picture of 32 bits without transparent pixels, of a colour 0x00BBGGRR.
inline IconPicture SolidIcon(int size, DWORD colour) {
  const DWORD swapped = (colour & 0x0000FF00) | ((colour & 0xFF) << 16) | (colour >> 16);
  return SolidPicture(size, size, 32, swapped);
}

/// A picture's pixel as a colour 0x00BBGGRR.
inline DWORD ColourOf(const IconPicture& picture, int x, int y) {
  const PixelBytes bytes = picture.Colour(x, y);
  return DWORD{bytes[0]} << 16 | DWORD{bytes[1]} << 8 | DWORD{bytes[2]};
}

/// The four bitmaps of an icon of 2 x 2 (large) and 1 x 1 (small) pixels, each byte of them another.
inline std::string TinyIconBytes() {
  return BitmapBytes(2, 2, 8, 32, FromHex("01 02 03 04  05 06 07 08  09 0A 0B 0C  0D 0E 0F 10")) +
         BitmapBytes(2, 2, 2, 1, FromHex("40 00  80 00")) + BitmapBytes(1, 1, 4, 32, FromHex("11 12 13 14")) +
         BitmapBytes(1, 1, 2, 1, FromHex("80 00"));
}

/// The four bitmaps of an icon whose opaque pixels all have one colour (0x00BBGGRR), without a mask.
inline std::string SolidIconBytes(int largeSize, int smallSize, DWORD colour) {
  std::string bytes;
  for (const int size : {largeSize, smallSize}) {
    std::string pixels;
    for (int pixel = 0; pixel < size * size; ++pixel) {
      pixels += {static_cast<char>(colour >> 16), static_cast<char>(colour >> 8), static_cast<char>(colour), '\0'};
    }
    bytes += BitmapBytes(size, size, 4 * size, 32, pixels) + std::string(24, '\0');
  }
  return bytes;
}

/// The icon has no images and no handles.
inline void ExpectEmpty(const CMMCObjectIcon& icon) {
  for (const bool large : {true, false}) {
    EXPECT_EQ(icon.GetColourBitmap(large).bmWidth, 0);
    EXPECT_EQ(icon.GetColourBitmap(large).bmHeight, 0);
    EXPECT_EQ(icon.GetColourBitmap(large).bmBitsPixel, 0);
    EXPECT_EQ(icon.GetColourBitmap(large).bmBits, nullptr);
    EXPECT_EQ(icon.GetPixel(large, 0, 0, 0x00FF00FF), 0U);
  }
  EXPECT_EQ(icon.GetIcon(32, 32), nullptr);
  EXPECT_EQ(icon.GetIcon(16, 16), nullptr);
}

}  // namespace ondrel::test
