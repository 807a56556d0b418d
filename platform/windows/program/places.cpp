// What is at a path.
#include <string>

#include <ondrel/platform/program.h>

#include "program/handle.h"
#include "system/system_path.h"

namespace ondrel::platform {
namespace {

/// Opens what is there, or where it leads, to be asked about. Whoever has it open stays undisturbed.
UniqueHandle OpenToAsk(const CString& path) {
  std::wstring systemPath;
  if (SystemPath(path, systemPath) != ERROR_SUCCESS) return nullptr;
  constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE opened = CreateFileW(systemPath.c_str(), FILE_READ_ATTRIBUTES, kSharing, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);  // which opens folders, too
  return UniqueHandle(opened == INVALID_HANDLE_VALUE ? nullptr : opened);
}

/// The numbers by which the system knows an open file; false when it does not tell, or nothing is open.
bool AskForNumbers(const UniqueHandle& handle, std::uint64_t& volume, std::uint64_t& number) {
  constexpr int kBitsOfHalf = 32;
  BY_HANDLE_FILE_INFORMATION found = {};
  if (handle == nullptr || !GetFileInformationByHandle(handle.get(), &found)) return false;
  volume = found.dwVolumeSerialNumber;
  number = std::uint64_t{found.nFileIndexHigh} << kBitsOfHalf | found.nFileIndexLow;
  return true;
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

// It stays open until it is compared: the number of a file that is gone may be given to another one.
FoundFile::FoundFile(const CString& path) {
  UniqueHandle handle = OpenToAsk(path);
  if (AskForNumbers(handle, m_volume, m_number)) m_open = reinterpret_cast<std::intptr_t>(handle.release());
}

FoundFile::~FoundFile() {
  if (IsThere()) CloseHandle(reinterpret_cast<HANDLE>(m_open));
}

bool FoundFile::IsAt(const CString& path) const {
  if (!IsThere()) return false;
  const UniqueHandle handle = OpenToAsk(path);
  std::uint64_t volume = 0;
  std::uint64_t number = 0;
  return AskForNumbers(handle, volume, number) && volume == m_volume && number == m_number;
}

bool IsSameFile(const CString& path, const CString& other) { return FoundFile(path).IsAt(other); }

}  // namespace ondrel::platform
