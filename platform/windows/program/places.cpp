// What is at a path.
#include <memory>
#include <string>

#include <ondrel/platform/program.h>

#include "system/system_path.h"

namespace ondrel::platform {
namespace {

struct HandleCloser {
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

/// Opens what is there, or where it leads, to be asked about. Whoever has it open stays undisturbed.
UniqueHandle OpenToAsk(const CString& path) {
  std::wstring systemPath;
  if (SystemPath(path, systemPath) != ERROR_SUCCESS) return nullptr;
  constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE opened = CreateFileW(systemPath.c_str(), FILE_READ_ATTRIBUTES, kSharing, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);  // which opens folders, too
  return UniqueHandle(opened == INVALID_HANDLE_VALUE ? nullptr : opened);
}

}  // namespace

PlaceKind KindOfPlace(const CString& path) {
  if (path.IsEmpty()) return PlaceKind::nothing;
  std::wstring full;
  if (FullSystemPath(path, full) == ERROR_SUCCESS && IsDevicePath(full)) return PlaceKind::other;
  const UniqueHandle place = OpenToAsk(path);
  if (place == nullptr) return PlaceKind::nothing;
  if (GetFileType(place.get()) != FILE_TYPE_DISK) return PlaceKind::other;
  BY_HANDLE_FILE_INFORMATION found = {};
  if (!GetFileInformationByHandle(place.get(), &found)) return PlaceKind::nothing;
  return (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? PlaceKind::folder : PlaceKind::file;
}

bool IsSameFile(const CString& path, const CString& other) {
  // Both stay open until they are compared: the number of a file that is gone may be given to another one.
  const UniqueHandle handle = OpenToAsk(path);
  const UniqueHandle otherHandle = OpenToAsk(other);
  BY_HANDLE_FILE_INFORMATION found = {};
  BY_HANDLE_FILE_INFORMATION otherFound = {};
  if (handle == nullptr || otherHandle == nullptr || !GetFileInformationByHandle(handle.get(), &found) ||
      !GetFileInformationByHandle(otherHandle.get(), &otherFound)) {
    return false;
  }
  return found.dwVolumeSerialNumber == otherFound.dwVolumeSerialNumber &&
         found.nFileIndexHigh == otherFound.nFileIndexHigh && found.nFileIndexLow == otherFound.nFileIndexLow;
}

}  // namespace ondrel::platform
