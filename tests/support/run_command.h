// Running a program as its user would, and what came of it.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace ondrel::test {

struct CommandLine {
  std::filesystem::path program;
  std::vector<std::string> arguments{};              ///< Without the program's own name.
  std::map<std::string, std::string> environment{};  ///< Added to the environment of the test.
  std::filesystem::path workingFolder{};             ///< The test's own when it is empty.
  std::filesystem::path standardOutput{};            ///< Where the output goes instead of into the result.
  bool nobodyReads = false;                          ///< The output goes into a pipe that has no reader any more.
  std::optional<std::uint64_t> largestFile{};        ///< Off Windows: a limit, in bytes, of the files that it writes.
  bool withoutPrivileges = false;                    ///< Off Windows: run as a user who owns nothing.
  bool withoutUnnamedFiles = false;                  ///< Off Windows: no folder holds a file without a name.
  std::chrono::milliseconds timeLimit{30'000};       ///< After which the program is stopped.
};

struct CommandResult {
  std::optional<int> exitCode;  ///< None when the program crashed or was stopped.
  bool timedOut = false;
  std::string output;
  std::string errors;
  std::chrono::milliseconds duration{};
};

/// Runs a program without standard input and waits for its end. Raises std::runtime_error when it cannot be started.
CommandResult RunCommand(const CommandLine& commandLine);

}  // namespace ondrel::test
