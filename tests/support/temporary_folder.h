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
  std::filesystem::path operator/(std::string_view name) const { return m_path / name; }

  /// Writes a file, with the folders above it, and gives its path.
  std::filesystem::path Write(std::string_view name, std::string_view bytes) const;
  /// The names in the folder, with those in folders below it, sorted, "/" between their parts.
  std::string Listing() const;

 private:
  std::filesystem::path m_path;
};

/// A file's bytes.
std::string ReadBytes(const std::filesystem::path& path);
/// A path as the exported classes take it.
CString Wide(const std::filesystem::path& path);

}  // namespace ondrel::test
