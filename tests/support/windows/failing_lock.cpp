#include "support/failing_lock.h"

#include <optional>

#include "support/windows/import_patch.h"

namespace ondrel::test {
namespace {

std::optional<ImportPatch> patch;

BOOL WINAPI FailToInitialize(LPCRITICAL_SECTION, DWORD) {
  SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  return FALSE;
}

}  // namespace

FailingLock::FailingLock() { patch.emplace("InitializeCriticalSectionAndSpinCount", FailToInitialize); }
FailingLock::~FailingLock() { patch.reset(); }

}  // namespace ondrel::test
