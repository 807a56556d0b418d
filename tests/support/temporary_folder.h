// A folder of a test's own, removed with everything in it when the test ends.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <ondrel/platform/framework/string.h>

namespace ondrel::test {

class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return m_path; }
  /// The path of a name in the folder. Names are UTF-8, here and below.
  std::filesystem::path operator/(std::string_view name) const;

  /// Writes a file, with the folders above it, and gives its path.
  std::filesystem::path Write(std::string_view name, std::string_view bytes) const;
  /// The names in the folder, with those in folders below it, sorted, "/" between their parts.
  std::string Listing() const;

 private:
  std::filesystem::path m_path;
};

/// A path from its text and back. The text is UTF-8 where the system's paths are not plain bytes; the functions of
/// std::filesystem that take and give narrow text lose characters there.
std::filesystem::path PathFrom(std::string_view utf8);
std::string Utf8(const std::filesystem::path& path);

/// A file's bytes.
std::string ReadBytes(const std::filesystem::path& path);
/// A path as the exported classes take it.
CString Wide(const std::filesystem::path& path);

}  // namespace ondrel::test
