// A drive that this system does not have.
#pragma once

#include <stdexcept>

#include <windows.h>

namespace ondrel::test {

/// Its letter. Raises std::runtime_error when there is a drive for each.
inline char MissingDrive() {
  for (wchar_t root[] = L"Y:\\"; root[0] > L'C'; --root[0]) {
    if (GetDriveTypeW(root) == DRIVE_NO_ROOT_DIR) return static_cast<char>(root[0]);
  }
  throw std::runtime_error("this system has a drive for each letter");
}

}  // namespace ondrel::test
