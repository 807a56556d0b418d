// Counts in the binary forms: unsigned 64-bit numbers.
#pragma once

#include <algorithm>
#include <cstddef>

#include <ondrel/platform/vellum.h>

namespace ondrel {

inline void StoreCount(CVellum& archive, std::size_t count) { archive << static_cast<ULONGLONG>(count); }

/// A count is a claim of the data: no more than a little may be reserved on its word.
inline ULONGLONG LoadCount(CVellum& archive) {
  ULONGLONG count = 0;
  archive >> count;
  return count;
}

/// Makes room in a vector for as many more elements as nearly every record has, when the data claims so many; a list
/// that is longer grows as its elements arrive.
template <class Vector>
void ReserveSome(Vector& vector, ULONGLONG claimed) {
  constexpr ULONGLONG kSome = 8;
  vector.reserve(vector.size() + static_cast<std::size_t>(std::min(claimed, kSome)));
}

}  // namespace ondrel
