// Icons as they come in the wild: the icon files and the programs of some of the distribution's packages.
#pragma once

#include <filesystem>
#include <vector>

#include "support/temporary_folder.h"

namespace ondrel::test {

/// A program or library with at least one icon.
struct ProgramWithIcon {
  std::filesystem::path path;
  std::filesystem::path firstIcon;  ///< The first that it stores, taken out into an icon file by wrestool.
};

class IconCorpus {
 public:
  /// Raises std::runtime_error when a package is not installed or wrestool fails.
  IconCorpus();

  const std::vector<std::filesystem::path>& IconFiles() const { return m_iconFiles; }
  const std::vector<ProgramWithIcon>& Programs() const { return m_programs; }
  /// Icon files made by wrestool of every icon of these programs, the first ones among them.
  const std::vector<std::filesystem::path>& ProgramIcons() const { return m_programIcons; }

 private:
  void TakeOutIcons(const std::vector<std::filesystem::path>& programs);

  TemporaryFolder m_folder;
  std::vector<std::filesystem::path> m_iconFiles;
  std::vector<ProgramWithIcon> m_programs;
  std::vector<std::filesystem::path> m_programIcons;
};

/// The corpus of this test program, made on first use.
const IconCorpus& WholeIconCorpus();

}  // namespace ondrel::test
