// How much memory a piece of work takes at most, of all kinds, as the system counts it. Under a sanitizer, which keeps
// memory of its own, the count says little.
#pragma once

namespace ondrel::test {

/// Counts the memory of the process from its construction on. One at a time. Raises std::runtime_error.
class MemoryPeak {
 public:
  MemoryPeak();
  MemoryPeak(const MemoryPeak&) = delete;
  MemoryPeak& operator=(const MemoryPeak&) = delete;

  /// The most that the process has held at one time, less what it held before.
  long Kibibytes() const;

 private:
  long m_before;
};

}  // namespace ondrel::test
