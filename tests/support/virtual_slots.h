// Where a class keeps its virtual operations.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

namespace ondrel::test {

/// The slots of the destructor: one that ends the object, and one that also frees it.
inline constexpr std::ptrdiff_t kDestructorSlots = 2;

/// The slot of a virtual operation. In the calling convention of the compilers that build the library, a pointer to a
/// virtual member is one more than its offset, in bytes, in the table.
template <class Operation>
std::ptrdiff_t SlotOf(Operation operation) {
  std::ptrdiff_t pointer = 0;
  static_assert(sizeof operation >= sizeof pointer);
  std::memcpy(&pointer, &operation, sizeof pointer);
  EXPECT_EQ(pointer % static_cast<std::ptrdiff_t>(sizeof(void*)), 1) << "no virtual operation";
  return (pointer - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

}  // namespace ondrel::test
