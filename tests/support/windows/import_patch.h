// Puts a function of a test's own in the place of one that libraries import, for a while.
#pragma once

#include <initializer_list>
#include <vector>

#include <windows.h>

namespace ondrel::test {

/// While it lives, calls to an imported function go to the replacement, on every thread. Patches of one function end in
/// the reverse order of their beginning.
class ImportPatch {
 public:
  /// Libraries by their file names; null is the program itself.
  using Modules = std::initializer_list<const wchar_t*>;
  static constexpr Modules kProject = {nullptr, L"HostFramework.dll", L"Vellum.dll", L"Ondrel.dll"};

  /// For the calls from those of the modules that are loaded. `function` is its exported name, `replacement` a function
  /// of the same type and calling convention. Raises std::runtime_error when nobody imports the function.
  template <class Function>
  ImportPatch(const char* function, Function* replacement, Modules modules = kProject)
      : ImportPatch(function, reinterpret_cast<void*>(replacement), modules) {}
  ImportPatch(const char* function, void* replacement, Modules modules = kProject);
  ~ImportPatch();
  ImportPatch(const ImportPatch&) = delete;
  ImportPatch& operator=(const ImportPatch&) = delete;

  /// Whether anybody imports the function.
  static bool IsImported(const char* function, Modules modules = kProject);

  /// Where the calls went before: `patch.Original<UINT WINAPI(LPCWSTR)>()`.
  template <class Function>
  Function* Original() const {
    return reinterpret_cast<Function*>(m_places.front().original);
  }

 private:
  struct Place {
    void** entry;
    void* original;
  };

  std::vector<Place> m_places;  // never empty
};

}  // namespace ondrel::test
