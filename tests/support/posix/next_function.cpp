#include "support/posix/next_function.h"

#include <dlfcn.h>

#include <stdexcept>
#include <string>

namespace ondrel::test {

void* NextFunction(const char* name) {
  void* const function = dlsym(RTLD_NEXT, name);
  if (function == nullptr) throw std::runtime_error(std::string("no library has ") + name);
  return function;
}

}  // namespace ondrel::test
