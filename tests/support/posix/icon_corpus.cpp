// The corpus, taken from packages with wrestool.
#include "support/posix/icon_corpus.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "support/posix/package_tools.h"

namespace ondrel::test {
namespace {

namespace fs = std::filesystem;

// What scripts/install-deps installs for their icons alone, and Wine's programs, which are there anyway.
constexpr const char* kPackages[] = {"nsis-common", "transmission-common", "cgit", "win32-loader", "libwine"};

constexpr const char* kIconGroup = "14";  // the number of this type of resource
constexpr std::string_view kIconFileEnding = ".ico";

bool IsProgram(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  char mark[2] = {};
  return file.read(mark, sizeof mark) && mark[0] == 'M' && mark[1] == 'Z';
}

std::vector<fs::path> Sorted(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

// A value in a line like "--type=14 --name='CDROM' --language=0 [...]".
std::string Value(const std::string& line, const std::string& option) {
  const std::size_t start = line.find("--" + option + "=");
  if (start == std::string::npos) throw std::runtime_error("wrestool lists no " + option + ": " + line);
  const std::size_t value = start + option.size() + 3;
  std::string text = line.substr(value, line.find(' ', value) - value);
  std::erase(text, '\'');
  return text;
}

}  // namespace

IconCorpus::IconCorpus() {
  std::vector<fs::path> programs;
  for (const char* const package : kPackages) {
    for (const fs::path& path : PackageFiles(package)) {
      if (path.extension() == kIconFileEnding) m_iconFiles.push_back(path);
      if (IsProgram(path)) programs.push_back(path);
    }
  }
  TakeOutIcons(programs);
}

void IconCorpus::TakeOutIcons(const std::vector<fs::path>& programs) {
  // wrestool names what it takes out after the program's own name alone, which several can share.
  const fs::path icons = m_folder / "icons";
  fs::create_directory(icons);
  std::vector<std::string> arguments = {"--extract", "--type", kIconGroup, "--output", icons.string()};
  std::vector<std::string> names;
  for (const fs::path& program : programs) {
    names.push_back(std::to_string(names.size()) + "-" + program.filename().string());
    fs::create_symlink(program, m_folder / names.back());
    arguments.push_back(names.back());
  }
  RunTool(kWrestool, arguments, m_folder.Path(), OnFailure::ignore);  // it fails for programs without any resource

  m_programIcons = Sorted(icons);
  const fs::path firstIcons = m_folder / "first";
  fs::create_directory(firstIcons);
  for (std::size_t index = 0; index < programs.size(); ++index) {
    const std::string start = names[index] + "_" + kIconGroup + "_";
    const bool hasIcon = std::any_of(m_programIcons.begin(), m_programIcons.end(), [&start](const fs::path& icon) {
      return icon.filename().string().starts_with(start);
    });
    if (!hasIcon) continue;
    const std::string listed = RunTool(kWrestool, {"--list", "--type", kIconGroup, names[index]}, m_folder.Path());
    const std::string first = listed.substr(0, listed.find('\n'));
    const fs::path icon = firstIcons / (names[index] + std::string(kIconFileEnding));
    RunTool(kWrestool,
            {"--extract", "--type", kIconGroup, "--name", Value(first, "name"), "--language", Value(first, "language"),
             "--output", icon.string(), names[index]},
            m_folder.Path());
    m_programs.push_back({programs[index], icon});
  }
}

const IconCorpus& WholeIconCorpus() {
  static const IconCorpus corpus;
  return corpus;
}

}  // namespace ondrel::test
