// A set of 200 icon files of many forms, each with pixels of its own.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <ondrel/MMCObjectSet.h>

#include "support/model/hand_icons.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/png_bytes.h"
#include "support/temporary_folder.h"

namespace ondrel::test {

/// A form that a picture has in a file.
enum class StoredAs { uncompressed, png };

/// A picture of its own for every number. PNG pictures have 32 bits.
inline IconPicture NumberedPicture(int size, int bitsPerPixel, StoredAs form, std::uint32_t number) {
  if (form == StoredAs::png) {
    PngPicture png = PatternPng(size, size, PngColour::trueColourAlpha, 8);
    for (PngSamples& samples : png.samples) {
      for (const std::size_t part : {0, 1, 2})
        samples[part] = static_cast<std::uint16_t>((samples[part] + number) & 0xFF);
    }
    return Uncompressed(png);
  }
  IconPicture picture = PatternPicture(size, size, bitsPerPixel);
  for (PixelBytes& colour : picture.palette) {
    for (const std::size_t part : {0, 1, 2}) colour[part] = static_cast<std::uint8_t>(colour[part] + number);
  }
  for (std::size_t index = 0; index < picture.pixels.size() && picture.palette.empty(); ++index) {
    std::uint32_t& pixel = picture.pixels[index];
    pixel = (pixel + number * 0x00080808) & 0x00FFFFFF;
    // Image lists may make masks of alpha, so the two must not disagree.
    if (!picture.transparent[index]) pixel |= 0xFF000000;
  }
  return picture;
}

inline StoredImage StoredPicture(const IconPicture& picture, StoredAs form) {
  return form == StoredAs::png ? StoredPng(PngOf(picture)) : StoredImage(picture);
}

/// The set, and what its icons show, by cookie.
struct TwoHundredIcons {
  /// Each odd file is added with a cookie of the set's choice, the others are inserted with one of the test's. With
  /// `withPng` two of eight have PNG images, large or small.
  explicit TwoHundredIcons(bool withPng) {
    constexpr int kDepths[] = {1, 4, 8, 16, 24, 32, 32, 32};
    for (std::uint32_t number = 0; number < 200; ++number) {
      const int depth = kDepths[number % 8];
      const StoredAs largeForm = withPng && number % 8 == 6 ? StoredAs::png : StoredAs::uncompressed;
      const StoredAs smallForm = withPng && number % 8 >= 6 ? StoredAs::png : StoredAs::uncompressed;
      const IconPicture large = NumberedPicture(32, depth, largeForm, number);
      const IconPicture smallIcon = NumberedPicture(16, kDepths[number / 8 % 6], smallForm, number + 100);
      const CString path =
          Wide(m_folder.Write(std::to_string(number) + ".ico",
                              IconFileBytes({StoredPicture(smallIcon, smallForm), StoredPicture(large, largeForm)})));
      __int64 cookie = 5000 - 7 * static_cast<__int64>(number);
      if (number % 2 == 1) {
        EXPECT_EQ(set.AddIconFile(path, cookie), S_OK);
      } else {
        EXPECT_EQ(CMMCObjectSetProbe::InsertIconFile(set, path, cookie), S_OK);
      }
      images[cookie] = {ImageShown(large), ImageShown(smallIcon)};
    }
  }

  std::vector<HandImage> LargeImages() const {
    std::vector<HandImage> large;
    for (const auto& [cookie, icon] : images) large.push_back(icon.large);
    return large;
  }
  std::vector<HandImage> SmallImages() const {
    std::vector<HandImage> small;
    for (const auto& [cookie, icon] : images) small.push_back(icon.smallIcon);
    return small;
  }

  CMMCObjectSet set{LeaveToSet};
  std::map<__int64, HandIcon> images;

 private:
  TemporaryFolder m_folder;
};

}  // namespace ondrel::test
