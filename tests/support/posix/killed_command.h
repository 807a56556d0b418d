// Running a program that is to be killed, and seeing how far it has come with the files that it writes.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>

#include "support/posix/child_process.h"
#include "support/run_command.h"

namespace ondrel::test {

/// A program without input whose output nobody sees.
class KilledCommand {
 public:
  explicit KilledCommand(const CommandLine& commandLine);

  std::chrono::nanoseconds Running() const { return Clock::now() - m_start; }
  /// Whether it has a file open in the folder that has no name, or one of its own that ends in ".tmp".
  bool IsWritingIn(const std::filesystem::path& folder) const;
  /// Returns as soon as it does so, or as it has ended: false then.
  bool WaitForWritingIn(const std::filesystem::path& folder) const;
  /// Returns when it has been running so long.
  void WaitUntil(std::chrono::nanoseconds running) const;

  /// Sends the signal and waits for the end. The exit code, or nothing when the signal ended it.
  std::optional<int> End(int signal);
  std::optional<int> Wait() { return m_process.Wait(); }

 private:
  using Clock = std::chrono::steady_clock;

  ChildProcess m_process;
  Clock::time_point m_start;
};

}  // namespace ondrel::test
