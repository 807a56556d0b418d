// What a picture of an icon shows, by the rule for such pictures, computed from what the icon's file was made of.
#pragma once

#include <string>

#include "support/icon_bytes.h"
#include "support/png_pictures.h"

namespace ondrel::test {

inline constexpr int kLargeSize = 32;
inline constexpr int kSmallSize = 16;

/// An image of size x size pixels made from `picture`, by nearest neighbour where it has another size, and its mask to
/// the right of it.
RgbaPicture IconView(const IconPicture& picture, int size);

/// The parts of a picture that `ondrel icon` wrote.
RgbaPicture LargeView(const std::string& file);  ///< The large image and its mask.
RgbaPicture SmallView(const std::string& file);  ///< The small image and its mask, without what is below them.

/// A picture's pixels as a PNG image; alpha is as stored.
std::string PngImageBytes(const IconPicture& picture);

}  // namespace ondrel::test
