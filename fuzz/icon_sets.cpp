// A look at every icon, and at the strips of all.
#include "icon_sets.h"

#include <limits>

#include "expect.h"

namespace ondrel::fuzz {
namespace {

using platform::UniqueBitmap;

constexpr DWORD kKeyColour = 0x00112233;
constexpr DWORD kLargestColour = 0x00FFFFFF;

/// The bytes that a strip of `count` images of a geometry takes at most.
constexpr double kModestBytes = 512 * 1024;

bool IsModest(const tagBITMAP& geometry, std::size_t count) {
  const double bits = static_cast<double>(geometry.bmPlanes) * geometry.bmBitsPixel * geometry.bmHeight *
                      geometry.bmWidth * static_cast<double>(count);
  // Also the work for the pixels, whatever their depth.
  const double pixels = static_cast<double>(geometry.bmHeight) * geometry.bmWidth * static_cast<double>(count);
  const double widest = static_cast<double>(geometry.bmWidth) * static_cast<double>(count);
  return bits >= 0 && bits / 8 <= kModestBytes && pixels <= kModestBytes &&
         widest >= std::numeric_limits<LONG>::min() && widest <= std::numeric_limits<LONG>::max();
}

void LookAtPixels(const CMMCObjectIcon& icon, bool large) {
  const tagBITMAP& geometry = icon.GetColourBitmap(large);
  constexpr int kFar = std::numeric_limits<int>::max();
  const int lastColumn = geometry.bmWidth > 0 ? geometry.bmWidth - 1 : 0;
  const int lastRow = geometry.bmHeight > 0 ? geometry.bmHeight - 1 : 0;
  for (const int y : {0, lastRow / 2, lastRow, -1, kFar, -kFar - 1}) {
    for (const int x : {0, 1, 7, 8, lastColumn / 2, lastColumn, -1, kFar, -kFar - 1}) {
      const DWORD pixel = icon.GetPixel(large, x, y, kKeyColour);
      Expect(pixel <= kLargestColour, "a pixel is a colour");
      // The mask may be larger than the colours, but neither has pixels before the first one.
      if (x < 0 || y < 0) Expect(pixel == 0, "a pixel outside is black");
    }
  }
  if (!IsModest(geometry, 1)) return;
  const CMMCObjectBitmap masked = icon.GetMaskedBitmap(large, kKeyColour);
  Expect(masked.bmWidth == geometry.bmWidth && masked.bmHeight == geometry.bmHeight, "a copy has the geometry");
  if (masked.bmBitsPixel == 32 && masked.bmPlanes == 1 && masked.bmWidth > 0 && masked.bmHeight > 0) {
    Expect(masked.GetPixel(lastColumn, lastRow) == icon.GetPixel(large, lastColumn, lastRow, kKeyColour),
           "a copy has the pixels of the icon");
  }
}

void CheckStrip(HBITMAP strip, const tagBITMAP& first, std::size_t count) {
  tagBITMAP geometry = {};
  Expect(GetObjectW(strip, sizeof geometry, &geometry) != 0, "a strip is a bitmap");
  const auto width = static_cast<LONGLONG>(first.bmWidth) * static_cast<LONGLONG>(count);
  if (width == 0 || first.bmHeight == 0) {
    Expect(geometry.bmWidth == 1 && geometry.bmHeight == 1, "a strip without a size is one pixel");
  } else {
    Expect(geometry.bmWidth == width && geometry.bmHeight == first.bmHeight, "images stand side by side in a strip");
  }
}

void LookAtStrips(CMMCObjectSet& set, const CMMCObjectIcon& first, std::size_t count) {
  HBITMAP smallHandle = nullptr;
  HBITMAP largeHandle = nullptr;
  set.GetIconBitmapImages(kKeyColour, smallHandle, largeHandle);
  const UniqueBitmap smallStrip(smallHandle);
  const UniqueBitmap largeStrip(largeHandle);
  Expect((smallHandle == nullptr) == (largeHandle == nullptr), "both strips are made or none");
  if (smallHandle != nullptr) {
    CheckStrip(smallHandle, first.GetColourBitmap(false), count);
    CheckStrip(largeHandle, first.GetColourBitmap(true), count);
  }
  int expected = 0;
  for (const __int64 cookie : set.GetIconFiles()) {
    int image = -1;
    Expect(set.GetIconFileImage(cookie, image) && image == expected++, "icons stand in the strips by their cookies");
  }
}

}  // namespace

void LookAtIcons(CMMCObjectSet& set) {
  const CMMCObjectIcon* first = nullptr;
  const std::list<__int64> cookies = set.GetIconFiles();
  for (const __int64 cookie : cookies) {
    const CMMCObjectIcon* icon = nullptr;
    Expect(set.GetIconFile(cookie, &icon) && icon != nullptr, "a listed icon file is there");
    LookAtPixels(*icon, true);
    LookAtPixels(*icon, false);
    if (first == nullptr) first = icon;
  }
  if (first != nullptr && IsModest(first->GetColourBitmap(true), cookies.size()) &&
      IsModest(first->GetColourBitmap(false), cookies.size())) {
    LookAtStrips(set, *first, cookies.size());
  }
}

}  // namespace ondrel::fuzz
