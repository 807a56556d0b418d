// Patches the library's import of the function.
#include "support/model/no_last_error.h"

#include <optional>

#include "support/windows/import_patch.h"

namespace {

DWORD WINAPI NoError() { return ERROR_SUCCESS; }

std::optional<ondrel::test::ImportPatch> patch;

}  // namespace

namespace ondrel::test {

NoLastError::NoLastError() { patch.emplace("GetLastError", &NoError, ImportPatch::Modules{L"Ondrel.dll"}); }
NoLastError::~NoLastError() { patch.reset(); }

}  // namespace ondrel::test
