// Icons out of files.
#include <memory>
#include <new>
#include <vector>

#include <ondrel/platform/os/file.h>

#include "graphics/icon_file.h"
#include "graphics/icon_limits.h"
#include "graphics/icon_object.h"

namespace ondrel::platform {
namespace {

constexpr UINT kFileUnreadable = 0xFFFFFFFF;
constexpr LONG kLargeIconSize = 32;
constexpr LONG kSmallIconSize = 16;

class OpenedFile {
 public:
  explicit OpenedFile(LPCWSTR path)
      : m_status(OpenOsFile(path, OsAccess::read, OsSharing::everything, OsCreation::mustExist, m_file)) {}
  ~OpenedFile() {
    if (m_status == ERROR_SUCCESS) CloseOsFile(m_file);
  }
  OpenedFile(const OpenedFile&) = delete;
  OpenedFile& operator=(const OpenedFile&) = delete;

  DWORD Status() const { return m_status; }
  OsFile Handle() const { return m_file; }

 private:
  OsFile m_file = kNoOsFile;
  DWORD m_status;
};

/// What happened to the file, and what to the icon in it, which is not looked for in a file that cannot be read.
struct ExtractionStatus {
  bool IsSuccess() const { return file == ERROR_SUCCESS && icon == ERROR_SUCCESS; }

  DWORD file = ERROR_SUCCESS;
  DWORD icon = ERROR_SUCCESS;
};

/// Appends up to `count` bytes; fewer at the end of the file.
DWORD ReadOnto(OsFile file, UINT count, std::vector<BYTE>& bytes) {
  const std::size_t before = bytes.size();
  bytes.resize(before + count);
  UINT read = 0;
  const DWORD status = ReadOsFile(file, bytes.data() + before, count, read);
  bytes.resize(before + read);
  return status;
}

/// Reads as much of a file as its icon needs: of an icon file the whole, of any other only what tells it is none. A
/// file that begins as an icon file and is longer than any is a damaged icon.
ExtractionStatus ReadIconBytes(OsFile file, std::vector<BYTE>& bytes) {
  DWORD status = ReadOnto(file, kIconFileHeaderBytes, bytes);
  if (status != ERROR_SUCCESS || !IsIconFile(bytes)) return {.file = status};
  ULONGLONG length = 0;
  status = MeasureOsFile(file, length);
  if (status != ERROR_SUCCESS) return {.file = status};
  if (length > kMostIconFileBytes) return {.icon = ERROR_INVALID_DATA};
  if (length > bytes.size()) status = ReadOnto(file, static_cast<UINT>(length - bytes.size()), bytes);
  return {.file = status};
}

DWORD MakeIcon(const std::vector<IconEntry>& entries, LONG size, std::unique_ptr<IconObject>& icon) {
  icon = std::make_unique<IconObject>();
  return DecodeIconEntry(ChooseIconEntry(entries, size), size, icon->image);
}

ExtractionStatus ExtractFirstIcon(LPCWSTR path, HICON* large, HICON* small) {
  const OpenedFile file(path);
  if (file.Status() != ERROR_SUCCESS) return {.file = file.Status()};
  std::vector<BYTE> bytes;
  if (const ExtractionStatus reading = ReadIconBytes(file.Handle(), bytes); !reading.IsSuccess()) return reading;

  std::vector<IconEntry> entries;
  std::unique_ptr<IconObject> largeIcon;
  std::unique_ptr<IconObject> smallIcon;
  DWORD status = ReadIconDirectory(bytes, entries);
  if (status == ERROR_SUCCESS && large != nullptr) status = MakeIcon(entries, kLargeIconSize, largeIcon);
  if (status == ERROR_SUCCESS && small != nullptr) status = MakeIcon(entries, kSmallIconSize, smallIcon);
  if (status != ERROR_SUCCESS) return {.icon = status};
  if (large != nullptr) *large = largeIcon.release();
  if (small != nullptr) *small = smallIcon.release();
  return {};
}

}  // namespace
}  // namespace ondrel::platform

UINT ExtractIconExW(LPCWSTR path, int index, HICON* large, HICON* small, UINT count) {
  using namespace ondrel::platform;
  if (path == nullptr || index != 0 || count != 1) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  if (large != nullptr) *large = nullptr;
  if (small != nullptr) *small = nullptr;
  ExtractionStatus status;
  try {
    status = ExtractFirstIcon(path, large, small);
  } catch (const std::bad_alloc&) {
    status.icon = ERROR_OUTOFMEMORY;
  }
  if (status.file != ERROR_SUCCESS) {
    SetLastError(status.file);
    return kFileUnreadable;
  }
  if (status.icon != ERROR_SUCCESS) {
    SetLastError(status.icon);
    return 0;
  }
  return 1;
}
