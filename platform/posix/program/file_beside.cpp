// A new file beside the place that it is to take, with the owner and permissions of the file that it replaces.
#include "program/file_beside.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <array>
#include <cerrno>
#include <climits>
#include <string>

#include <ondrel/platform/program.h>

#include "program/temporary_name.h"
#include "system/descriptor.h"
#include "system/native_path.h"

namespace ondrel::platform {
namespace {

constexpr int kMaxLinks = 40;          // as many as the system itself follows
constexpr int kMaxNameAttempts = 100;  // of names that are all taken
constexpr mode_t kNewFileMode = 0666;  // the process's mask takes away from it
constexpr mode_t kPrivateMode = 0600;
constexpr mode_t kPermissions = 0777;

// The folder of a path, with the separator behind it; empty for the working folder.
std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

// Follows the link at `path`, if there is one, and the link where that leads, to the end.
DWORD FollowLinks(std::string& path) {
  std::array<char, PATH_MAX> target;
  for (int links = 0; links <= kMaxLinks; ++links) {
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length == -1) return errno == EINVAL || errno == ENOENT ? ERROR_SUCCESS : OsErrorFromErrno(errno);
    const std::string next(target.data(), static_cast<std::size_t>(length));
    // The rest of this layer would take it for a separator, and so write to another place.
    if (next.find('\\') != std::string::npos) return ERROR_INVALID_NAME;
    path = next.front() == '/' ? next : FolderOf(path) + next;
  }
  return OsErrorFromErrno(ELOOP);
}

// A name for a file beside `target` that no other has.
std::string TemporaryName(const std::string& target) {
  const std::string ending = TemporaryEnding();
  const std::string folder = FolderOf(target);
  return folder + "." + target.substr(folder.size(), NAME_MAX - 1 - ending.size()) + ending;
}

// Gives a new file the owner and permissions of the one that it replaces, as far as the process may. Where it may not,
// the file stays more private than the old one: it was made for its owner alone.
void HandOn(const struct stat& replaced, int file) {
  mode_t mode = replaced.st_mode & kPermissions;
  if (fchown(file, static_cast<uid_t>(-1), replaced.st_gid) != 0) {
    // Another group gets no more than everyone has.
    mode &= ~static_cast<mode_t>(S_IRWXG) | ((mode & S_IRWXO) << 3);
  }
  [[maybe_unused]] const int chowned = fchown(file, replaced.st_uid, static_cast<gid_t>(-1));
  [[maybe_unused]] const int chmoded = fchmod(file, mode);
}

// A new file for writing in the folder of `target` that has no name yet and can be given one; -1 where there are no
// such files, or where it cannot be made for any other reason.
int CreateUnnamed(const std::string& target, mode_t mode) {
  const std::string folder = FolderOf(target);
  const int file = Uninterrupted(
      [&] { return open(folder.empty() ? "." : folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode); });
  struct stat status = {};
  if (file == -1 || stat(DescriptorPath(file).c_str(), &status) == 0) return file;
  close(file);
  return -1;
}

// Makes a new file for writing beside `target`, with the owner and permissions of `replaced` where it replaces one.
DWORD CreateBeside(const std::string& target, const struct stat* replaced, std::string& temporary, int& file) {
  const mode_t mode = replaced == nullptr ? kNewFileMode : kPrivateMode;
  file = CreateUnnamed(target, mode);
  for (int attempts = 0; file == -1; ++attempts) {
    if (attempts == kMaxNameAttempts) return ERROR_FILE_EXISTS;
    temporary = TemporaryName(target);
    file = Uninterrupted([&] { return open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode); });
    if (file == -1 && errno != EEXIST) return OsErrorFromErrno(errno);
  }
  if (replaced != nullptr) HandOn(*replaced, file);
  return ERROR_SUCCESS;
}

}  // namespace

DWORD CreateFileBeside(const CString& path, FileBeside& created) {
  std::string target;
  if (!NativePath(path, target)) return GetLastError();
  if (const DWORD code = FollowLinks(target); code != ERROR_SUCCESS) return code;
  struct stat status = {};
  const bool replaces = lstat(target.c_str(), &status) == 0;
  if (replaces && !S_ISREG(status.st_mode)) return ERROR_ACCESS_DENIED;
  if (target.back() == '/') return ERROR_PATH_NOT_FOUND;  // a folder that is not there
  std::string temporary;
  int file = -1;
  const DWORD code = CreateBeside(target, replaces ? &status : nullptr, temporary, file);
  // A missing name here is the folder's: the file itself is being made.
  if (code == ERROR_FILE_NOT_FOUND) return ERROR_PATH_NOT_FOUND;
  if (code != ERROR_SUCCESS) return code;
  try {
    created = {file, PathFromUtf8(target), PathFromUtf8(temporary)};
  } catch (...) {
    CloseOsFile(file);
    if (!temporary.empty()) unlink(temporary.c_str());
    throw;
  }
  return ERROR_SUCCESS;
}

DWORD PlaceUnnamedFile(OsFile file, const CString& place) {
  std::string target;
  if (!NativePath(place, target)) return GetLastError();
  DWORD code = ERROR_FILE_EXISTS;
  for (int attempts = 0; attempts < kMaxNameAttempts && code == ERROR_FILE_EXISTS; ++attempts) {
    code = ReplaceWithUnnamedOsFile(file, PathFromUtf8(TemporaryName(target)), place);
  }
  return code;
}

bool IsSameName(const CString& name, const CString& other) { return name == other; }

}  // namespace ondrel::platform
