// Takes the place of the C++ runtime's functions of allocation themselves, in their library: those are shared by the
// program and all its libraries and call one another too, past any table of imports. The other forms (of arrays, of
// known size, and those that raise nothing) are defined to call these two.
#include "support/failing_allocation.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>

namespace ondrel::test {
namespace {

constexpr long kNever = std::numeric_limits<long>::max();
thread_local long allocationsLeft = kNever;
thread_local bool isLasting = false;
thread_local bool hasFailed = false;
thread_local long heldBlocks = 0;

/// Whether this allocation is to fail.
bool Fails() {
  if (allocationsLeft == kNever) return false;
  if (allocationsLeft > 0) {
    --allocationsLeft;
    return false;
  }
  if (!isLasting) allocationsLeft = kNever;
  hasFailed = true;
  return true;
}

void* Allocate(std::size_t size) {
  if (Fails()) throw std::bad_alloc();
  void* const block = std::malloc(size != 0 ? size : 1);
  if (block == nullptr) throw std::bad_alloc();
  ++heldBlocks;
  return block;
}

void Free(void* block) {
  if (block != nullptr) --heldBlocks;
  std::free(block);
}

/// mov rax, <address>; jmp rax
struct [[gnu::packed]] Jump {
  unsigned char load[2] = {0x48, 0xB8};
  void* address;
  unsigned char jump[2] = {0xFF, 0xE0};
};

void ReplaceRuntimeFunction(const char* name, void* replacement) {
  const HMODULE runtime = GetModuleHandleW(L"libstdc++-6.dll");
  void* const function = runtime != nullptr ? reinterpret_cast<void*>(GetProcAddress(runtime, name)) : nullptr;
  DWORD protection = 0;
  if (function == nullptr || !VirtualProtect(function, sizeof(Jump), PAGE_EXECUTE_READWRITE, &protection)) {
    throw std::runtime_error(std::string("the C++ runtime's function cannot be replaced: ") + name);
  }
  const Jump jump{.address = replacement};
  std::memcpy(function, &jump, sizeof jump);
  VirtualProtect(function, sizeof(Jump), protection, &protection);
  FlushInstructionCache(GetCurrentProcess(), function, sizeof(Jump));
}

/// Once and for good: without a failing allocation about, the replacements do what the functions did.
void ReplaceRuntimeFunctions() {
  static const bool areReplaced = [] {
    ReplaceRuntimeFunction("_ZdlPv", reinterpret_cast<void*>(Free));
    ReplaceRuntimeFunction("_Znwy", reinterpret_cast<void*>(Allocate));
    return true;
  }();
  static_cast<void>(areReplaced);
}

}  // namespace

FailingAllocation::FailingAllocation(long index, Shortage shortage) {
  ReplaceRuntimeFunctions();
  allocationsLeft = index;
  isLasting = shortage == Shortage::lasting;
  hasFailed = false;
}
FailingAllocation::~FailingAllocation() { allocationsLeft = kNever; }
bool FailingAllocation::HasFailed() const { return hasFailed; }

long CountHeldBlocks() {
  ReplaceRuntimeFunctions();
  return heldBlocks;
}

}  // namespace ondrel::test
