// What an icon handle names.
#pragma once

#include "graphics/icon_image.h"
#include "graphics/live_handle.h"

namespace ondrel::platform {

struct IconObject {
  IconImage image;
  LiveHandle<IconObject> live = {};
};

}  // namespace ondrel::platform
