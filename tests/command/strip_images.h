// Object images of icons whose every pixel is known, and strips of them, for tests of `ondrel strips`.
#pragma once

#include <string>
#include <vector>

#include "project_folder.h"
#include "support/icon_bytes.h"
#include "support/png_pictures.h"

namespace ondrel::test {

inline constexpr const char* kSmallName = "small.png";
inline constexpr const char* kLargeName = "large.png";

/// An image of any size as an object image holds it: 32 bits per pixel, transparent where the mask says so.
std::string StoredBitmaps(const IconPicture& picture);

/// A definition of nothing but icon files, each of them the bytes of its four bitmaps. Cookies count from 1.
std::string IconImage(const std::vector<std::string>& icons);

/// Pictures side by side, each at its own width times its place, in a strip of the first one's height and its width
/// times their number; what does not fit is cut off. `key` is the colour of transparent pixels.
RgbaPicture StripOf(const std::vector<IconPicture>& pictures, const RgbaPixel& key);

/// Runs the command for both strips of a definition.
CommandResult RunStrips(const ProjectFolder& folder, const std::string& file, const std::string& key = "FF00FF");

}  // namespace ondrel::test
