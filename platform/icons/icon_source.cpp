// Reading what an icon is made from.
#include "icons/icon_source.h"

#include <ondrel/platform/os/file.h>

#include "icons/icon_file.h"
#include "icons/icon_limits.h"

namespace ondrel::platform {
namespace {

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
IconStatus ReadIconBytes(OsFile file, std::vector<BYTE>& bytes) {
  DWORD status = ReadOnto(file, kIconFileHeaderBytes, bytes);
  if (status != ERROR_SUCCESS || !IsIconFile(bytes)) return {.file = status};
  ULONGLONG length = 0;
  status = MeasureOsFile(file, length);
  if (status != ERROR_SUCCESS) return {.file = status};
  if (length > kMostIconFileBytes) return {.icon = ERROR_INVALID_DATA};
  if (length > bytes.size()) status = ReadOnto(file, static_cast<UINT>(length - bytes.size()), bytes);
  return {.file = status};
}

}  // namespace

IconStatus ReadIconSource(LPCWSTR path, IconSource& source) {
  const OpenedFile file(path);
  if (file.Status() != ERROR_SUCCESS) return {.file = file.Status()};
  if (const IconStatus reading = ReadIconBytes(file.Handle(), source.bytes); !reading.IsSuccess()) return reading;
  return {.icon = ReadIconDirectory(source.bytes, source.entries)};
}

}  // namespace ondrel::platform
