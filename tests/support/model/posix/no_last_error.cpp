// Stands before the function of the same name, for all libraries in the program.
#include "support/model/no_last_error.h"

#include <dlfcn.h>

#include <atomic>
#include <cstdlib>

#include <ondrel/platform/types.h>

namespace {

std::atomic<bool> silent = false;

using GetLastErrorFunction = DWORD (*)();

GetLastErrorFunction Real() {
  void* const found = dlsym(RTLD_NEXT, "_Z12GetLastErrorv");  // the name as the compiler writes it
  if (found == nullptr) std::abort();
  return reinterpret_cast<GetLastErrorFunction>(found);
}

}  // namespace

DWORD GetLastError() {
  if (silent) return ERROR_SUCCESS;
  static const GetLastErrorFunction real = Real();
  return real();
}

namespace ondrel::test {

NoLastError::NoLastError() { silent = true; }
NoLastError::~NoLastError() { silent = false; }

}  // namespace ondrel::test
