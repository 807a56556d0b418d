// How the tests take icons out of files and look at their pixels, through the platform's calls alone.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <ondrel/platform/graphics.h>

#include "support/icon_bytes.h"
#include "support/temporary_folder.h"

namespace ondrel::test {

struct BitmapContents {
  BITMAP header = {};
  std::vector<BYTE> bits = {};
};

/// The bits of a null handle are empty.
BitmapContents ReadBitmap(HBITMAP bitmap);

struct IconContents {
  BitmapContents colour = {};
  BitmapContents mask = {};

  PixelBytes Colour(int x, int y) const;
  bool IsTransparent(int x, int y) const;
};

/// Both bitmaps of an icon; the handles that had to be made for it are gone again.
IconContents ReadIcon(HICON icon);

struct Extraction {
  UINT result = 0;
  DWORD error = ERROR_SUCCESS;  ///< The last error after the call; ERROR_SUCCESS when the call left none.
  platform::UniqueIcon large = {};
  platform::UniqueIcon smallIcon = {};
};

Extraction ExtractIcons(const std::filesystem::path& path);
/// Of a file with these bytes.
Extraction ExtractIconsOf(const std::string& bytes);

/// The large icon of a file of this picture alone.
platform::UniqueIcon LargeIconOf(const IconPicture& picture);

inline constexpr UINT kIconExtracted = 1;
inline constexpr UINT kNoIconsFound = 0;
inline constexpr UINT kFileUnreadable = 0xFFFFFFFF;

/// Whether an icon of size x size pixels shows `picture`, in its own size or scaled by nearest neighbour.
testing::AssertionResult Shows(HICON icon, int size, const IconPicture& picture);
/// Whether the call gave both icons.
testing::AssertionResult Succeeded(const Extraction& extraction);
/// Whether the call gave `result`, no icon, and this reason.
testing::AssertionResult FailedWith(const Extraction& extraction, UINT result, DWORD error);

/// Icon files with an image of 32 and one of 16 pixels.
inline std::string ThirtyTwoBitIconFile() {
  return IconFileBytes({PatternPicture(32, 32, 32), PatternPicture(16, 16, 8)});
}
inline std::string FourBitIconFile() { return IconFileBytes({PatternPicture(32, 32, 4), PatternPicture(16, 16, 4)}); }

}  // namespace ondrel::test
