// How many of the system's drawing handles exist, for leak checks.
#pragma once

namespace ondrel::test {

struct LiveHandles {
  long bitmaps;
  long icons;
};

/// The handles that the program and the project's libraries have been given and have not let go of. Bitmaps and icons
/// inside other handles do not count.
LiveHandles CountLiveHandles();

}  // namespace ondrel::test
