// The first icon among the resources of a program.
//
// An icon is a group, a resource of type 14, and the images that it lists, resources of type 3. The group begins as an
// icon file does; for each image follow 14 bytes, which are those of an icon file up to the image's length, and then
// the number of its resource.
#pragma once

#include "icons/executable.h"
#include "icons/icon_source.h"

namespace ondrel::platform {

/// Reads the images of the icon that is stored first among the program's, in their order. Of a group or an image in
/// several languages the one that is stored first counts. What the tree of resources says about an image's length
/// decides; an image that is not in the file has no bytes.
///
/// The icon's status is ERROR_RESOURCE_DATA_NOT_FOUND for a program without an icon and for a group that lists none,
/// ERROR_INVALID_DATA for a damaged tree, a damaged group, and for more images than an icon may have. Raises
/// std::bad_alloc.
IconStatus ReadIconResources(const SourceFile& file, const Executable& program, IconSource& source);

}  // namespace ondrel::platform
