// The two image strips of a set's icons, and what is in them.
#pragma once

#include <string>

#include <gtest/gtest.h>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/model/hand_bytes.h"
#include "support/model/hand_icons.h"

namespace ondrel::test {

/// The colour that stands for transparent pixels.
inline constexpr DWORD kKey = 0x00FF00FF;
/// Another one, whose three channels all differ.
inline constexpr DWORD kDistinctKey = 0x00A1B2C3;

/// Loads an icon file of that cookie from the bytes of its bitmaps.
inline void InsertRecord(CMMCObjectSet& set, __int64 cookie, const std::string& icon) {
  LoadingArchive archive(Cookie(cookie) + icon);
  set.DeserializeIconFile(*archive);
}

/// The two strips of a set; their handles are deleted with them.
struct Strips {
  explicit Strips(CMMCObjectSet& set, DWORD colour = kKey) {
    HBITMAP smallBitmap = nullptr;
    HBITMAP largeBitmap = nullptr;
    set.GetIconBitmapImages(colour, smallBitmap, largeBitmap);
    smallIcon.reset(smallBitmap);
    large.reset(largeBitmap);
  }
  platform::UniqueBitmap smallIcon;
  platform::UniqueBitmap large;
};

inline BITMAP Geometry(const platform::UniqueBitmap& bitmap) {
  BITMAP geometry = {};
  EXPECT_NE(GetObjectW(bitmap.get(), sizeof geometry, &geometry), 0);
  return geometry;
}

inline std::string Pixels(const platform::UniqueBitmap& bitmap) {
  const BITMAP geometry = Geometry(bitmap);
  std::string bytes(static_cast<std::size_t>(geometry.bmWidthBytes) * static_cast<std::size_t>(geometry.bmHeight), '?');
  EXPECT_EQ(GetBitmapBits(bitmap.get(), static_cast<LONG>(bytes.size()), bytes.data()),
            static_cast<LONG>(bytes.size()));
  return bytes;
}

/// Three bytes of a 32-bit strip as a colour.
inline DWORD ColourAt(const std::string& pixels, int width, int x, int y) {
  const auto* const pixel = reinterpret_cast<const unsigned char*>(pixels.data()) + 4 * (y * width + x);
  return DWORD{pixel[0]} << 16 | DWORD{pixel[1]} << 8 | DWORD{pixel[2]};
}

/// Whether a strip has this geometry and these bytes.
inline testing::AssertionResult IsStrip(const platform::UniqueBitmap& strip, const HandBitmap& expected) {
  if (strip == nullptr) return testing::AssertionFailure() << "there is no strip";
  const BITMAP geometry = Geometry(strip);
  if (geometry.bmWidth != expected.width || geometry.bmHeight != expected.height || geometry.bmPlanes != 1 ||
      geometry.bmBitsPixel != expected.depth || geometry.bmWidthBytes != expected.rowBytes) {
    return testing::AssertionFailure() << geometry.bmWidth << " x " << geometry.bmHeight << " x "
                                       << geometry.bmBitsPixel << " bits, not " << expected.width << " x "
                                       << expected.height << " x " << expected.depth;
  }
  const std::string pixels = Pixels(strip);
  if (pixels.size() != expected.bytes.size()) return testing::AssertionFailure() << pixels.size() << " bytes";
  for (std::size_t place = 0; place < pixels.size(); ++place) {
    if (pixels[place] == expected.bytes[place]) continue;
    const auto rowBytes = static_cast<std::size_t>(expected.rowBytes);
    return testing::AssertionFailure() << "byte " << place % rowBytes << " of row " << place / rowBytes << " is "
                                       << Hex(pixels.substr(place, 1)) << ", not "
                                       << Hex(expected.bytes.substr(place, 1));
  }
  return testing::AssertionSuccess();
}

/// The image index of an icon file; -99 when it has none.
inline int IndexOf(const CMMCObjectSet& set, __int64 cookie) {
  int image = -99;
  set.GetIconFileImage(cookie, image);
  return image;
}

}  // namespace ondrel::test
