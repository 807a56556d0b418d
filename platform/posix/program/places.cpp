// What is at a path.
#include <sys/stat.h>
#include <filesystem>
#include <string>

#include <ondrel/platform/program.h>

#include "system/native_path.h"

namespace ondrel::platform {
namespace {

bool Find(const CString& path, std::uint64_t& volume, std::uint64_t& number) {
  std::string native;
  struct stat status = {};
  if (!NativePath(path, native) || stat(native.c_str(), &status) != 0) return false;
  volume = status.st_dev;
  number = status.st_ino;
  return true;
}

}  // namespace

PlaceKind KindOfPlace(const CString& path) {
  std::string native;
  if (!NativePath(path, native)) return PlaceKind::nothing;
  std::error_code ignored;
  const std::filesystem::file_status status = std::filesystem::status(native, ignored);
  if (!std::filesystem::exists(status)) return PlaceKind::nothing;
  if (std::filesystem::is_directory(status)) return PlaceKind::folder;
  return std::filesystem::is_regular_file(status) ? PlaceKind::file : PlaceKind::other;
}

// A file is known by its numbers here, and nothing of it is kept open.
FoundFile::FoundFile(const CString& path) {
  if (Find(path, m_volume, m_number)) m_open = 0;
}

FoundFile::~FoundFile() = default;

bool FoundFile::IsAt(const CString& path) const {
  std::uint64_t volume = 0;
  std::uint64_t number = 0;
  return IsThere() && Find(path, volume, number) && volume == m_volume && number == m_number;
}

bool IsSameFile(const CString& path, const CString& other) { return FoundFile(path).IsAt(other); }

}  // namespace ondrel::platform
