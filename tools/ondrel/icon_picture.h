// A picture of an icon for people to look at.
#pragma once

#include <ondrel/MMCObjectIcon.h>

#include <ondrel/platform/picture.h>

#include "icon_images.h"

namespace ondrel::command {

/// From left to right, all at the top: the large image, its mask, the small image, its mask. A mask is white where the
/// icon is transparent and black elsewhere. An image has its stored colours, and its stored alpha when any of it is not
/// 0; otherwise it is transparent where its mask says so. What is left is transparent. Raises the memory exception.
platform::Picture PictureOf(const CMMCObjectIcon& icon);

/// One image alone, in the same colours. Without a pixel for an image without width and height.
platform::Picture PictureOf(const IconImage& image);

}  // namespace ondrel::command
