// Makes a chosen allocation of the calling thread fail, to test what is left when memory runs short.
#pragma once

namespace ondrel::test {

/// While it lives, the allocation number `index` (from 0) of this thread and all later ones fail.
class FailingAllocation {
 public:
  explicit FailingAllocation(long index);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  /// Whether an allocation has failed.
  bool HasFailed() const;
};

}  // namespace ondrel::test
