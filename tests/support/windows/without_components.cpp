// Takes back what support/windows/main/components.cpp does once for the whole program.
#include "support/without_components.h"

#include <objbase.h>

#include <exception>

namespace ondrel::test {

WithoutComponents::WithoutComponents() { CoUninitialize(); }
WithoutComponents::~WithoutComponents() {
  if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) std::terminate();
}
HRESULT WithoutComponents::Status() { return CO_E_NOTINITIALIZED; }

}  // namespace ondrel::test
