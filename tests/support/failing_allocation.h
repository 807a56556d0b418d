// Makes chosen allocations of the calling thread fail, to test what is left when memory runs short, and counts what it
// holds, to find what a failure leaves behind.
//
// Off Windows every allocation counts and can fail: those of the C library, which other libraries use (Expat, libpng,
// zlib), as well as operator new; in builds with a sanitizer, too, whose allocator then stands behind. On Windows only
// operator new does, of the program and of all libraries that share its C++ runtime.
#pragma once

namespace ondrel::test {

/// Which allocations fail, from the chosen one on.
enum class Shortage {
  lasting,  ///< That one and all later ones.
  passing,  ///< That one alone, as when another program has taken much for a moment.
};

/// While it lives, the allocation number `index` (from 0) of this thread fails. One at a time.
class FailingAllocation {
 public:
  explicit FailingAllocation(long index, Shortage shortage = Shortage::lasting);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  /// Whether an allocation has failed.
  bool HasFailed() const;
};

/// How many blocks of memory this thread has taken less those that it has given back, of the allocations that can fail.
/// Only the difference of two counts says something.
long CountHeldBlocks();

}  // namespace ondrel::test
