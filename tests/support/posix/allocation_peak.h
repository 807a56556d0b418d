// How much memory a piece of work takes at most, counted by allocation: exact, the same under a sanitizer, and not
// hidden by what the program took before.
#pragma once

namespace ondrel::test {

/// Counts the allocations of the calling thread from its construction on. One at a time.
class AllocationPeak {
 public:
  AllocationPeak();
  AllocationPeak(const AllocationPeak&) = delete;
  AllocationPeak& operator=(const AllocationPeak&) = delete;

  /// The most that the thread has held at one time and did not hold before.
  long Bytes() const;
};

}  // namespace ondrel::test
