#include "platforms/two_platforms.h"

#include <stdexcept>
#include <utility>

namespace ondrel::test {

namespace {

constexpr std::chrono::minutes kTimeLimit{2};  // the first program under Wine makes its prefix

}  // namespace

Platform::Platform(std::string name, std::filesystem::path programs, std::filesystem::path runner, std::string ending)
    : m_name(std::move(name)),
      m_programs(std::move(programs)),
      m_runner(std::move(runner)),
      m_ending(std::move(ending)) {}

Platform Platform::Native() { return {"Linux", std::filesystem::path(ONDREL_COMMAND).parent_path(), {}, ""}; }

std::filesystem::path Platform::WindowsPrograms() {
  return std::filesystem::path(ONDREL_SOURCE_DIR) / "build/windows/bin";
}

Platform Platform::WindowsIn(const std::filesystem::path& programs) {
  return {"Windows", programs, std::filesystem::path(ONDREL_SOURCE_DIR) / "scripts/wine", ".exe"};
}

Platform Platform::Windows() {
  const std::filesystem::path programs = WindowsPrograms();
  if (!std::filesystem::exists(programs / "ondrel.exe")) {
    throw std::runtime_error("build the preset windows first: there is no ondrel.exe in " + programs.string());
  }
  return WindowsIn(programs);
}

CommandResult Platform::Run(const std::string& program, std::vector<std::string> arguments,
                            const std::filesystem::path& folder) const {
  CommandLine commandLine{.program = m_programs / (program + m_ending), .workingFolder = folder};
  if (!m_runner.empty()) {
    arguments.insert(arguments.begin(), commandLine.program.string());
    commandLine.program = m_runner;
  }
  commandLine.arguments = std::move(arguments);
  commandLine.timeLimit = kTimeLimit;
  return RunCommand(commandLine);
}

const std::array<Platform, 2>& Platforms() {
  static const std::array<Platform, 2> platforms{Platform::Native(), Platform::Windows()};
  return platforms;
}

std::string Told(const CommandResult& result) {
  const std::string code = result.exitCode ? std::to_string(*result.exitCode) : "none";
  return "exit code " + code + "\n" + result.output + result.errors;
}

}  // namespace ondrel::test
