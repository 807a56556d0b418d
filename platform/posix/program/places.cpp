// What is at a path.
#include <filesystem>
#include <string>

#include <ondrel/platform/program.h>

#include "system/native_path.h"

namespace ondrel::platform {

PlaceKind KindOfPlace(const CString& path) {
  std::string native;
  if (!NativePath(path, native)) return PlaceKind::nothing;
  std::error_code ignored;
  const std::filesystem::file_status status = std::filesystem::status(native, ignored);
  if (!std::filesystem::exists(status)) return PlaceKind::nothing;
  if (std::filesystem::is_directory(status)) return PlaceKind::folder;
  return std::filesystem::is_regular_file(status) ? PlaceKind::file : PlaceKind::other;
}

bool IsSameFile(const CString& path, const CString& other) {
  std::string native;
  std::string otherNative;
  if (!NativePath(path, native) || !NativePath(other, otherNative)) return false;
  std::error_code ignored;
  return std::filesystem::equivalent(native, otherNative, ignored);
}

}  // namespace ondrel::platform
