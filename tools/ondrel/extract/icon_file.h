// Icon files made of the images that a definition keeps.
#pragma once

#include <string>

#include "icon_images.h"

namespace ondrel::command {

/// The bytes of an icon file with both images, from which every system makes them again where they are of 32 x 32 and
/// 16 x 16 pixels. An image that has none, or is wider or higher than an icon file says, is replaced by a transparent
/// one of its usual size. Raises the memory exception.
std::string IconFileBytes(const IconImages& images);

}  // namespace ondrel::command
