#include "support/temporary_folder.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include <ondrel/platform/program.h>

namespace ondrel::test {

TemporaryFolder::TemporaryFolder() {
  std::random_device random;
  do {
    m_path = std::filesystem::temp_directory_path() / ("ondrel-test-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(m_path));
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

std::filesystem::path TemporaryFolder::operator/(std::string_view name) const { return m_path / PathFrom(name); }

std::filesystem::path TemporaryFolder::Write(std::string_view name, std::string_view bytes) const {
  const std::filesystem::path path = *this / name;
  std::filesystem::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) throw std::runtime_error("cannot write " + Utf8(path));
  return path;
}

std::string TemporaryFolder::Listing() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(m_path)) {
    std::string name = Utf8(entry.path().lexically_relative(m_path));
    std::replace(name.begin(), name.end(), static_cast<char>(std::filesystem::path::preferred_separator), '/');
    names.push_back(std::move(name));
  }
  std::sort(names.begin(), names.end());
  std::string listing;
  for (const std::string& name : names) listing += name + '\n';
  return listing;
}

std::string ReadBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + Utf8(path));
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return std::move(bytes).str();
}

std::filesystem::path PathFrom(std::string_view utf8) { return std::u8string(utf8.begin(), utf8.end()); }

std::string Utf8(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

CString Wide(const std::filesystem::path& path) { return platform::PathFromUtf8(Utf8(path)); }

}  // namespace ondrel::test
