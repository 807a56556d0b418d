// Changes the library's entry for the function among those that it imports.
#include "support/model/no_last_error.h"

#include <cstring>
#include <stdexcept>
#include <string>

#include <ondrel/platform/types.h>

namespace {

using GetLastErrorFunction = decltype(&GetLastError);

GetLastErrorFunction real = nullptr;

DWORD WINAPI NoError() { return ERROR_SUCCESS; }

/// What lies `offset` bytes behind the start of a loaded library.
template <class Type>
Type* At(HMODULE library, DWORD offset) {
  return reinterpret_cast<Type*>(reinterpret_cast<BYTE*>(library) + offset);
}

/// Where a loaded library keeps the address of a function that it imports by that name.
GetLastErrorFunction* ImportOf(HMODULE library, const char* function) {
  const auto* const start = At<const IMAGE_DOS_HEADER>(library, 0);
  const auto* const head = At<const IMAGE_NT_HEADERS>(library, static_cast<DWORD>(start->e_lfanew));
  const DWORD table = head->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (const auto* from = At<const IMAGE_IMPORT_DESCRIPTOR>(library, table); from->Name != 0; ++from) {
    const auto* name = At<const IMAGE_THUNK_DATA>(library, from->OriginalFirstThunk);
    auto* address = At<IMAGE_THUNK_DATA>(library, from->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* const imported = At<const IMAGE_IMPORT_BY_NAME>(library, static_cast<DWORD>(name->u1.AddressOfData));
      if (std::strcmp(reinterpret_cast<const char*>(imported->Name), function) == 0) {
        return reinterpret_cast<GetLastErrorFunction*>(&address->u1.Function);
      }
    }
  }
  throw std::runtime_error(std::string("the library does not import ") + function);
}

GetLastErrorFunction Exchange(GetLastErrorFunction replacement) {
  const HMODULE library = GetModuleHandleW(L"Ondrel.dll");
  if (library == nullptr) throw std::runtime_error("Ondrel.dll is not loaded");
  GetLastErrorFunction* const import = ImportOf(library, "GetLastError");
  DWORD protection = 0;
  if (!VirtualProtect(import, sizeof *import, PAGE_READWRITE, &protection)) {
    throw std::runtime_error("the library's imports cannot be changed");
  }
  const GetLastErrorFunction before = *import;
  *import = replacement;
  VirtualProtect(import, sizeof *import, protection, &protection);
  return before;
}

}  // namespace

namespace ondrel::test {

NoLastError::NoLastError() { real = Exchange(NoError); }
NoLastError::~NoLastError() { Exchange(real); }

}  // namespace ondrel::test
