// What an image of an image list shows.
#pragma once

#include <string>

#include <gtest/gtest.h>

#include <ondrel/platform/framework/image_list.h>
#include <ondrel/platform/graphics.h>

#include "support/model/hand_icons.h"

namespace ondrel::test {

/// Both bitmaps of an image; empty when there is none.
struct ListedImage {
  BITMAP geometry = {};
  std::string colour = {};
  std::string mask = {};

  /// A pixel as 0x00BBGGRR.
  DWORD ColourAt(int x, int y) const {
    const auto part = [&](int number) {
      const auto offset = static_cast<std::size_t>(y * geometry.bmWidthBytes + 4 * x + number);
      return DWORD{static_cast<unsigned char>(colour.at(offset))};
    };
    return part(0) << 16 | part(1) << 8 | part(2);
  }
};

inline ListedImage ImageOf(const CImageList& list, int index) {
  const auto bytesOf = [](const platform::UniqueBitmap& bitmap, BITMAP& geometry) {
    if (GetObjectW(bitmap.get(), sizeof geometry, &geometry) == 0) return std::string();
    std::string bytes(static_cast<std::size_t>(geometry.bmWidthBytes * geometry.bmHeight), '?');
    GetBitmapBits(bitmap.get(), static_cast<LONG>(bytes.size()), bytes.data());
    return bytes;
  };
  const platform::UniqueIcon icon(ImageList_GetIcon(list.GetSafeHandle(), index, 0));
  ICONINFO info = {};
  if (!GetIconInfo(icon.get(), &info)) return {};
  const platform::UniqueBitmap colour(info.hbmColor);
  const platform::UniqueBitmap mask(info.hbmMask);
  ListedImage image;
  BITMAP ofMask = {};
  image.colour = bytesOf(colour, image.geometry);
  image.mask = bytesOf(mask, ofMask);
  return image;
}

/// Whether an image of a list shows the picture: its mask, and the colours of its opaque pixels. A system may blacken
/// the others and lose alpha.
inline testing::AssertionResult IsListed(const CImageList& list, int index, const HandImage& expected) {
  const ListedImage image = ImageOf(list, index);
  if (image.geometry.bmWidth != expected.colour.width || image.geometry.bmHeight != expected.colour.height) {
    return testing::AssertionFailure() << "image " << index << " has " << image.geometry.bmWidth << " x "
                                       << image.geometry.bmHeight << " pixels";
  }
  if (image.mask != expected.mask.bytes) return testing::AssertionFailure() << "image " << index << " has another mask";
  for (int y = 0; y < expected.colour.height; ++y) {
    for (int x = 0; x < expected.colour.width; ++x) {
      if (expected.mask.Colour(x, y) != 0 || image.ColourAt(x, y) == expected.colour.Colour(x, y)) continue;
      return testing::AssertionFailure() << "image " << index << " at " << x << ", " << y << " is "
                                         << image.ColourAt(x, y) << ", not " << expected.colour.Colour(x, y);
    }
  }
  return testing::AssertionSuccess();
}

}  // namespace ondrel::test
