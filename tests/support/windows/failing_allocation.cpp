// Takes the place of the C++ runtime's allocation function itself, in its library: that one is shared by the program
// and all its libraries and calls itself too, past any table of imports. The other forms (of arrays, and those that
// raise nothing) are defined to call this one.
#include "support/failing_allocation.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

namespace ondrel::test {
namespace {

constexpr long kNever = std::numeric_limits<long>::max();
thread_local long allocationsLeft = kNever;  // below 0 once one has failed

void* Allocate(std::size_t size) {
  if (allocationsLeft != kNever && allocationsLeft-- <= 0) {
    allocationsLeft = -1;
    throw std::bad_alloc();
  }
  void* const block = std::malloc(size != 0 ? size : 1);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

/// mov rax, <address>; jmp rax
struct [[gnu::packed]] Jump {
  unsigned char load[2] = {0x48, 0xB8};
  void* address;
  unsigned char jump[2] = {0xFF, 0xE0};
};

void ReplaceRuntimeFunction() {
  const HMODULE runtime = GetModuleHandleW(L"libstdc++-6.dll");
  void* const function = runtime != nullptr ? reinterpret_cast<void*>(GetProcAddress(runtime, "_Znwy")) : nullptr;
  DWORD protection = 0;
  if (function == nullptr || !VirtualProtect(function, sizeof(Jump), PAGE_EXECUTE_READWRITE, &protection)) {
    throw std::runtime_error("the allocation function of the C++ runtime cannot be replaced");
  }
  const Jump jump{.address = reinterpret_cast<void*>(Allocate)};
  std::memcpy(function, &jump, sizeof jump);
  VirtualProtect(function, sizeof(Jump), protection, &protection);
  FlushInstructionCache(GetCurrentProcess(), function, sizeof(Jump));
}

}  // namespace

FailingAllocation::FailingAllocation(long index) {
  // Once and for good: without a failing allocation about, the replacement does what the function did.
  static const bool isReplaced = (ReplaceRuntimeFunction(), true);
  static_cast<void>(isReplaced);
  allocationsLeft = index;
}
FailingAllocation::~FailingAllocation() { allocationsLeft = kNever; }
bool FailingAllocation::HasFailed() const { return allocationsLeft < 0; }

}  // namespace ondrel::test
