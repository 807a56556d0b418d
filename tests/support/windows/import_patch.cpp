#include "support/windows/import_patch.h"

#include <cstring>
#include <stdexcept>
#include <string>

namespace ondrel::test {
namespace {

/// What lies `offset` bytes into a loaded module.
template <class Part>
Part* At(HMODULE module, std::size_t offset) {
  return reinterpret_cast<Part*>(reinterpret_cast<char*>(module) + offset);
}

/// The entries of a module's import tables that hold the address of the function.
void FindEntries(HMODULE module, const char* function, std::vector<void**>& entries) {
  const auto* const dosHeader = At<IMAGE_DOS_HEADER>(module, 0);
  const auto* const headers = At<IMAGE_NT_HEADERS>(module, static_cast<std::size_t>(dosHeader->e_lfanew));
  const IMAGE_DATA_DIRECTORY& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  if (directory.Size == 0) return;
  const auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress);
  for (; library->Name != 0; ++library) {
    // The first table keeps the names; the loader has put the addresses into the second.
    const auto* name = At<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
    auto* address = At<IMAGE_THUNK_DATA>(module, library->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* const import = At<IMAGE_IMPORT_BY_NAME>(module, name->u1.AddressOfData);
      if (std::strcmp(reinterpret_cast<const char*>(import->Name), function) != 0) continue;
      entries.push_back(reinterpret_cast<void**>(&address->u1.Function));
    }
  }
}

std::vector<void**> Entries(const char* function, ImportPatch::Modules modules) {
  std::vector<void**> entries;
  for (const wchar_t* const name : modules) {
    if (const HMODULE module = GetModuleHandleW(name); module != nullptr) FindEntries(module, function, entries);
  }
  return entries;
}

bool Put(void** entry, void* address) {
  DWORD protection = 0;
  if (!VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection)) return false;
  *entry = address;
  return VirtualProtect(entry, sizeof *entry, protection, &protection) != FALSE;
}

}  // namespace

bool ImportPatch::IsImported(const char* function, Modules modules) { return !Entries(function, modules).empty(); }

ImportPatch::ImportPatch(const char* function, void* replacement, Modules modules) {
  for (void** const entry : Entries(function, modules)) m_places.push_back({entry, *entry});
  if (m_places.empty()) throw std::runtime_error(std::string("nobody imports ") + function);
  for (const Place& place : m_places) {
    if (!Put(place.entry, replacement)) throw std::runtime_error(std::string("cannot replace ") + function);
  }
}

ImportPatch::~ImportPatch() {
  for (const Place& place : m_places) Put(place.entry, place.original);
}

}  // namespace ondrel::test
