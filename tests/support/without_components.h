// A system whose components nobody has made usable.
#pragma once

#include <ondrel/platform/types.h>

namespace ondrel::test {

/// While it lives, no thread of the program can make components where the system lets only those do so that have asked
/// for it. Requires that no component is held. To be made on the thread that runs the tests.
class WithoutComponents {
 public:
  WithoutComponents();
  ~WithoutComponents();
  WithoutComponents(const WithoutComponents&) = delete;
  WithoutComponents& operator=(const WithoutComponents&) = delete;

  /// What the making of a component gives meanwhile.
  static HRESULT Status();
};

}  // namespace ondrel::test
