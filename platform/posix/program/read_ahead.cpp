// The system's memory of files: what it keeps, and what it is asked to fetch.
#include <fcntl.h>
#include <sys/uio.h>
#include <algorithm>
#include <cerrno>

#include <ondrel/platform/os/file.h>
#include <ondrel/platform/program.h>

namespace ondrel::platform {
namespace {

/// A file that is open for reading, or none.
class OpenedFile {
 public:
  explicit OpenedFile(const CString& path) {
    if (OpenOsFile(path, OsAccess::read, OsSharing::everything, OsCreation::mustExist, m_file) != ERROR_SUCCESS) {
      m_file = kNoOsFile;
    }
  }
  ~OpenedFile() {
    if (m_file != kNoOsFile) CloseOsFile(m_file);
  }
  OpenedFile(const OpenedFile&) = delete;
  OpenedFile& operator=(const OpenedFile&) = delete;

  explicit operator bool() const { return m_file != kNoOsFile; }
  OsFile File() const { return m_file; }
  int Descriptor() const { return static_cast<int>(m_file); }

 private:
  OsFile m_file = kNoOsFile;
};

}  // namespace

bool IsLeftToDisk(const CString& path) {
  const OpenedFile file(path);
  if (!file) return false;
  char first = 0;
  const iovec target = {&first, sizeof first};
  return preadv2(file.Descriptor(), &target, 1, 0, RWF_NOWAIT) == -1 && errno == EAGAIN;
}

ULONGLONG BeginReading(const CString& path) {
  const OpenedFile file(path);
  ULONGLONG length = 0;
  if (!file || MeasureOsFile(file.File(), length) != ERROR_SUCCESS) return 0;
  // What is behind these bytes the system fetches by itself while they are read.
  constexpr ULONGLONG kMost = ULONGLONG{1} << 20;
  const ULONGLONG bytes = std::min(length, kMost);
  return posix_fadvise(file.Descriptor(), 0, static_cast<off_t>(bytes), POSIX_FADV_WILLNEED) == 0 ? bytes : 0;
}

}  // namespace ondrel::platform
