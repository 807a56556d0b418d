// How many bitmap and icon handles exist.
#include "graphics/live_handle.h"

#include "graphics/bitmap_object.h"
#include "graphics/icon_object.h"

namespace ondrel::platform {

LiveHandles CountLiveHandles() { return {LiveHandle<BitmapObject>::Count(), LiveHandle<IconObject>::Count()}; }

}  // namespace ondrel::platform
