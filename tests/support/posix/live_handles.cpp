#include "support/live_handles.h"

#include <ondrel/platform/graphics.h>

namespace ondrel::test {

LiveHandles CountLiveHandles() {
  const platform::LiveHandles counted = platform::CountLiveHandles();
  return {counted.bitmaps, counted.icons};
}

}  // namespace ondrel::test
