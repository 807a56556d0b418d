// The program's allocation functions, for all libraries in it. Only test programs that use FailingAllocation take them.
#include "support/failing_allocation.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr long kNever = std::numeric_limits<long>::max();
thread_local long allocationsLeft = kNever;  // below 0 once one has failed

void* Allocate(std::size_t size) noexcept {
  if (allocationsLeft != kNever && allocationsLeft-- <= 0) {
    allocationsLeft = -1;
    return nullptr;
  }
  return std::malloc(size != 0 ? size : 1);
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
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { std::free(block); }

namespace ondrel::test {

FailingAllocation::FailingAllocation(long index) { allocationsLeft = index; }
FailingAllocation::~FailingAllocation() { allocationsLeft = kNever; }
bool FailingAllocation::HasFailed() const { return allocationsLeft < 0; }

}  // namespace ondrel::test
