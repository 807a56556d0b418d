// Extraction and comparison of icons.
#include "graphics/icon_reading.h"

#include <cmath>

namespace ondrel::test {

BitmapContents ReadBitmap(HBITMAP bitmap) {
  BitmapContents contents;
  if (GetObjectW(bitmap, sizeof(BITMAP), &contents.header) == 0) return contents;
  contents.bits.resize(static_cast<std::size_t>(contents.header.bmWidthBytes * contents.header.bmHeight));
  const auto size = static_cast<LONG>(contents.bits.size());
  EXPECT_EQ(GetBitmapBits(bitmap, size, contents.bits.data()), size);
  return contents;
}

PixelBytes IconContents::Colour(int x, int y) const {
  const auto offset = static_cast<std::size_t>(y * colour.header.bmWidthBytes + x * 4);
  return {colour.bits.at(offset), colour.bits.at(offset + 1), colour.bits.at(offset + 2), colour.bits.at(offset + 3)};
}

bool IconContents::IsTransparent(int x, int y) const {
  return (mask.bits.at(static_cast<std::size_t>(y * mask.header.bmWidthBytes + x / 8)) >> (7 - x % 8) & 1) != 0;
}

IconContents ReadIcon(HICON icon) {
  ICONINFO info = {};
  if (GetIconInfo(icon, &info) == FALSE) {
    ADD_FAILURE() << "no icon information, last error " << GetLastError();
    return {};
  }
  const platform::UniqueBitmap colour(info.hbmColor);
  const platform::UniqueBitmap mask(info.hbmMask);
  return {ReadBitmap(colour.get()), ReadBitmap(mask.get())};
}

Extraction ExtractIcons(const std::filesystem::path& path) {
  HICON large = nullptr;
  HICON smallIcon = nullptr;
  SetLastError(ERROR_SUCCESS);
  const UINT result = ExtractIconExW(Wide(path), 0, &large, &smallIcon, 1);
  return {result, GetLastError(), platform::UniqueIcon(large), platform::UniqueIcon(smallIcon)};
}

Extraction ExtractIconsOf(const std::string& bytes) {
  const TemporaryFolder folder;
  return ExtractIcons(folder.Write("test.ico", bytes));
}

platform::UniqueIcon LargeIconOf(const IconPicture& picture) {
  Extraction extraction = ExtractIconsOf(IconFileBytes({picture}));
  EXPECT_TRUE(Succeeded(extraction));
  return std::move(extraction.large);
}

testing::AssertionResult Shows(HICON icon, int size, const IconPicture& picture) {
  const IconContents contents = ReadIcon(icon);
  const BITMAP& colour = contents.colour.header;
  const BITMAP& mask = contents.mask.header;
  if (colour.bmWidth != size || colour.bmHeight != size || colour.bmBitsPixel != 32 || colour.bmPlanes != 1 ||
      colour.bmWidthBytes != size * 4) {
    return testing::AssertionFailure() << "colour image of " << colour.bmWidth << " x " << colour.bmHeight << " x "
                                       << colour.bmBitsPixel << ", row of " << colour.bmWidthBytes << " bytes";
  }
  if (mask.bmWidth != size || mask.bmHeight != size || mask.bmBitsPixel != 1 || mask.bmPlanes != 1 ||
      mask.bmWidthBytes != (size + 15) / 16 * 2) {
    return testing::AssertionFailure() << "mask of " << mask.bmWidth << " x " << mask.bmHeight << " x "
                                       << mask.bmBitsPixel << ", row of " << mask.bmWidthBytes << " bytes";
  }
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      const int sourceX = static_cast<int>(std::floor((x + 0.5) * picture.width / size));
      const int sourceY = static_cast<int>(std::floor((y + 0.5) * picture.height / size));
      if (contents.Colour(x, y) != picture.Colour(sourceX, sourceY)) {
        return testing::AssertionFailure()
               << "colour at " << x << ", " << y << " is " << testing::PrintToString(contents.Colour(x, y)) << ", not "
               << testing::PrintToString(picture.Colour(sourceX, sourceY));
      }
      if (contents.IsTransparent(x, y) != picture.IsTransparent(sourceX, sourceY)) {
        return testing::AssertionFailure() << "mask at " << x << ", " << y << " is " << contents.IsTransparent(x, y);
      }
    }
  }
  return testing::AssertionSuccess();
}

testing::AssertionResult Succeeded(const Extraction& extraction) {
  const bool isResult = extraction.result != kNoIconsFound && extraction.result != kFileUnreadable;
  if (isResult && extraction.large != nullptr && extraction.smallIcon != nullptr) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << "result " << extraction.result << ", last error " << extraction.error
                                     << ", large " << extraction.large.get() << ", small "
                                     << extraction.smallIcon.get();
}

testing::AssertionResult FailedWith(const Extraction& extraction, UINT result, DWORD error) {
  if (extraction.result == result && extraction.error == error && extraction.large == nullptr &&
      extraction.smallIcon == nullptr) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << "result " << extraction.result << ", last error " << extraction.error
                                     << ", large " << extraction.large.get() << ", small "
                                     << extraction.smallIcon.get();
}

}  // namespace ondrel::test
