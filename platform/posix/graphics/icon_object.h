// What an icon handle names.
#pragma once

#include "graphics/live_handle.h"
#include "icons/icon_image.h"

namespace ondrel::platform {

struct IconObject {
  IconImage image;
  LiveHandle<IconObject> live = {};
};

}  // namespace ondrel::platform
