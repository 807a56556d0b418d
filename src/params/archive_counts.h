// Counts in the binary forms: unsigned 64-bit numbers.
#pragma once

#include <cstddef>

#include <ondrel/platform/vellum.h>

namespace ondrel {

inline void StoreCount(CVellum& archive, std::size_t count) { archive << static_cast<ULONGLONG>(count); }

/// A count is a claim of the data: nothing may be reserved on its word.
inline ULONGLONG LoadCount(CVellum& archive) {
  ULONGLONG count = 0;
  archive >> count;
  return count;
}

}  // namespace ondrel
