// The program's allocation functions, for all libraries in it. Only test programs that use FailingAllocation or
// AllocationPeak take them.
#include "support/failing_allocation.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

#include "support/posix/allocation_peak.h"

namespace {

constexpr long kNever = std::numeric_limits<long>::max();
thread_local long allocationsLeft = kNever;  // below 0 once one has failed

// What this thread has allocated and not freed since the count began; below 0 when it freed more.
thread_local long heldBytes = 0;
thread_local long mostHeldBytes = 0;

void* Allocate(std::size_t size) noexcept {
  if (allocationsLeft != kNever && allocationsLeft-- <= 0) {
    allocationsLeft = -1;
    return nullptr;
  }
  void* const block = std::malloc(size != 0 ? size : 1);
  heldBytes += static_cast<long>(malloc_usable_size(block));
  mostHeldBytes = std::max(mostHeldBytes, heldBytes);
  return block;
}

void Free(void* block) noexcept {
  heldBytes -= static_cast<long>(malloc_usable_size(block));
  std::free(block);
}

void* AllocateOrThrow(std::size_t size) {
  void* const block = Allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* block) noexcept { Free(block); }
void operator delete[](void* block) noexcept { Free(block); }
void operator delete(void* block, std::size_t) noexcept { Free(block); }
void operator delete[](void* block, std::size_t) noexcept { Free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { Free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { Free(block); }

namespace ondrel::test {

FailingAllocation::FailingAllocation(long index) { allocationsLeft = index; }
FailingAllocation::~FailingAllocation() { allocationsLeft = kNever; }
bool FailingAllocation::HasFailed() const { return allocationsLeft < 0; }

AllocationPeak::AllocationPeak() { heldBytes = mostHeldBytes = 0; }
long AllocationPeak::Bytes() const { return mostHeldBytes; }

}  // namespace ondrel::test
