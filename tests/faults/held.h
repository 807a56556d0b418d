// What a test holds of the system: memory and drawing handles. A failure must leave none of it behind.
#pragma once

#include <ostream>

#include "support/failing_allocation.h"
#include "support/live_handles.h"

namespace ondrel::test {

struct Held {
  long blocks = 0;  ///< Of memory, taken by this thread.
  long bitmaps = 0;
  long icons = 0;

  bool operator==(const Held&) const = default;
};

inline Held CountHeld() {
  const LiveHandles handles = CountLiveHandles();
  return {CountHeldBlocks(), handles.bitmaps, handles.icons};
}

inline void PrintTo(const Held& held, std::ostream* out) {
  *out << held.blocks << " blocks, " << held.bitmaps << " bitmaps, " << held.icons << " icons";
}

}  // namespace ondrel::test
