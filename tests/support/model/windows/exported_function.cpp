#include "support/model/exported_function.h"

#include <stdexcept>

#include <ondrel/platform/types.h>

namespace ondrel::test {

void* ExportedFunction(const char* name) {
  const HMODULE library = GetModuleHandleW(L"Ondrel.dll");
  if (library == nullptr) throw std::runtime_error("Ondrel.dll is not loaded");
  return reinterpret_cast<void*>(GetProcAddress(library, name));
}

}  // namespace ondrel::test
