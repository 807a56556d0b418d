// The programs of this system's build and those of the Windows build, run on the same files.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "support/run_command.h"
#include "support/temporary_folder.h"

namespace ondrel::test {

/// A build whose programs can be run here.
class Platform {
 public:
  static Platform Native();
  /// The Windows build, under Wine. Raises std::runtime_error when it has not been built.
  static Platform Windows();
  /// The same, its programs and libraries taken from another folder.
  static Platform WindowsIn(const std::filesystem::path& programs);
  /// Where the Windows build's programs and libraries are.
  static std::filesystem::path WindowsPrograms();

  const std::string& Name() const { return m_name; }
  /// Runs one of the build's programs, by its name without any ending, in a folder.
  CommandResult Run(const std::string& program, std::vector<std::string> arguments,
                    const std::filesystem::path& folder) const;

 private:
  Platform(std::string name, std::filesystem::path programs, std::filesystem::path runner, std::string ending);

  std::string m_name;
  std::filesystem::path m_programs;
  std::filesystem::path m_runner;
  std::string m_ending;
};

/// Both, native first.
const std::array<Platform, 2>& Platforms();

/// As a test prints it: exit code, output and errors.
std::string Told(const CommandResult& result);

}  // namespace ondrel::test
