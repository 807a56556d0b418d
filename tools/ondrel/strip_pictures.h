// Pictures of a definition's icons side by side, as hosts are given them.
#pragma once

#include <ondrel/platform/picture.h>

#include "definition_file.h"

namespace ondrel::command {

struct StripPictures {
  platform::Picture smallIcons;
  platform::Picture largeIcons;
};

/// Has the set make its two strips, transparent pixels in the colour `key`, 0x00BBGGRR. Raises Failure for a definition
/// without icon files, and for one whose strips would be no pictures.
StripPictures MakeStripPictures(Definition& definition, DWORD key);

}  // namespace ondrel::command
