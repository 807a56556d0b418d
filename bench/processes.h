// Other programs: run, timed, and what they leave on the disk.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace ondrel::bench {

struct Program {
  std::string path;
  std::vector<std::string> arguments;
  std::filesystem::path folder;  ///< Where it runs.
};

/// Runs a program, without input and with its output dropped; the seconds from its start to its end. Raises
/// std::runtime_error when it cannot be started or fails.
double SecondsOf(const Program& program);
/// The same for a program's output.
std::string OutputOf(const Program& program);

/// Brings everything written to the disk, so that no run pays for what another has written.
void SettleDisk();

/// Makes the system forget the contents of the files below a folder; with `all` those of every file, where it may.
void ForgetFiles(const std::filesystem::path& folder, bool all);

}  // namespace ondrel::bench
