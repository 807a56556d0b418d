#include "support/model/exported_function.h"

#include <dlfcn.h>

#include <memory>
#include <stdexcept>

namespace ondrel::test {

void* ExportedFunction(const char* name) {
  const auto close = [](void* library) { dlclose(library); };
  const std::unique_ptr<void, decltype(close)> library(dlopen(ONDREL_LIBRARY, RTLD_LAZY | RTLD_NOLOAD), close);
  if (library == nullptr) throw std::runtime_error(ONDREL_LIBRARY " is not loaded");
  return dlsym(library.get(), name);
}

}  // namespace ondrel::test
