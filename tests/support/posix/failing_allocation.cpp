// The program's allocation functions, for all libraries in it. Only test programs that use FailingAllocation or
// AllocationPeak take them.
//
// The functions of the C library are defined here, before those of any library, so that every caller comes by. Behind
// them stand the library's own, or those of the sanitizer, which the program's would otherwise shut out: it keeps them
// reachable under names of their own. Nothing here may be instrumented, because the first calls come before the
// sanitizer is ready; and calls pass on to the sanitizer by a jump, because it tells by the return address who calls:
// what the dynamic linker takes and keeps is no leak.
#include "support/failing_allocation.h"

#include <malloc.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <new>

#include "support/posix/allocation_peak.h"

#define UNWATCHED __attribute__((no_sanitize("address", "thread", "undefined")))
#if __has_attribute(optimize)
#define JUMPS_ON UNWATCHED __attribute__((optimize("O2", "omit-frame-pointer")))
#else  // a compiler that only reads this file
#define JUMPS_ON UNWATCHED
#endif

extern "C" {
void* LibraryMalloc(std::size_t size) __asm__("__libc_malloc");
void* LibraryCalloc(std::size_t count, std::size_t size) __asm__("__libc_calloc");
void* LibraryRealloc(void* block, std::size_t size) __asm__("__libc_realloc");
void LibraryFree(void* block) __asm__("__libc_free");

// Null in a build without a sanitizer.
[[gnu::weak]] void* SanitizerMalloc(std::size_t size) __asm__("__interceptor_malloc");
[[gnu::weak]] void* SanitizerCalloc(std::size_t count, std::size_t size) __asm__("__interceptor_calloc");
[[gnu::weak]] void* SanitizerRealloc(void* block, std::size_t size) __asm__("__interceptor_realloc");
[[gnu::weak]] void SanitizerFree(void* block) __asm__("__interceptor_free");
}

namespace {

using ondrel::test::Shortage;

constexpr long kNever = std::numeric_limits<long>::max();
thread_local long allocationsLeft = kNever;
thread_local bool isLasting = false;
thread_local bool hasFailed = false;

// What this thread has allocated and not freed since the count began; below 0 when it freed more.
thread_local long heldBlocks = 0;
// Bytes are counted only once somebody asks: a sanitizer does not tell the sizes of the blocks that it gives before it
// is ready.
thread_local bool countsBytes = false;
thread_local long heldBytes = 0;
thread_local long mostHeldBytes = 0;

/// Whether this allocation is to fail.
UNWATCHED bool Fails() {
  if (allocationsLeft == kNever) return false;
  if (allocationsLeft > 0) {
    --allocationsLeft;
    return false;
  }
  if (!isLasting) allocationsLeft = kNever;
  hasFailed = true;
  errno = ENOMEM;
  return true;
}

// The four below count before the call, so that nothing is left to do after it; a call that finds no memory, which no
// test brings about, would be counted wrongly. Bytes can be counted only after it.

UNWATCHED void* BytesTaken(void* block) {
  if (block == nullptr) return block;
  heldBytes += static_cast<long>(malloc_usable_size(block));
  mostHeldBytes = std::max(mostHeldBytes, heldBytes);
  return block;
}

UNWATCHED void GivenBack(void* block) {
  if (block == nullptr) return;
  --heldBlocks;
  if (countsBytes) heldBytes -= static_cast<long>(malloc_usable_size(block));
}

void* AllocateOrThrow(std::size_t size) {
  void* const block = std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

extern "C" {

JUMPS_ON void* malloc(std::size_t size) {
  if (Fails()) return nullptr;
  ++heldBlocks;
  const auto next = SanitizerMalloc != nullptr ? SanitizerMalloc : LibraryMalloc;
  return countsBytes ? BytesTaken(next(size)) : next(size);
}

JUMPS_ON void* calloc(std::size_t count, std::size_t size) {
  if (Fails()) return nullptr;
  ++heldBlocks;
  const auto next = SanitizerCalloc != nullptr ? SanitizerCalloc : LibraryCalloc;
  return countsBytes ? BytesTaken(next(count, size)) : next(count, size);
}

JUMPS_ON void* realloc(void* block, std::size_t size) {
  if (Fails()) return nullptr;
  GivenBack(block);
  if (block == nullptr || size != 0) ++heldBlocks;  // without a size it only frees
  const auto next = SanitizerRealloc != nullptr ? SanitizerRealloc : LibraryRealloc;
  return countsBytes ? BytesTaken(next(block, size)) : next(block, size);
}

JUMPS_ON void free(void* block) {
  GivenBack(block);
  const auto next = SanitizerFree != nullptr ? SanitizerFree : LibraryFree;
  next(block);
}

}  // extern "C"

// These, too, because a sanitizer has its own, which do not come by above.
void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return std::malloc(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return std::malloc(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { std::free(block); }

namespace ondrel::test {

FailingAllocation::FailingAllocation(long index, Shortage shortage) {
  allocationsLeft = index;
  isLasting = shortage == Shortage::lasting;
  hasFailed = false;
}
FailingAllocation::~FailingAllocation() { allocationsLeft = kNever; }
bool FailingAllocation::HasFailed() const { return hasFailed; }

long CountHeldBlocks() { return heldBlocks; }

AllocationPeak::AllocationPeak() {
  countsBytes = true;
  heldBytes = mostHeldBytes = 0;
}
long AllocationPeak::Bytes() const { return mostHeldBytes; }

}  // namespace ondrel::test
