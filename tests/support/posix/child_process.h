// A program started by fork and exec.
#pragma once

#include <sys/types.h>
#include <optional>
#include <string>

#include "support/run_command.h"

namespace ondrel::test {

/// A running program, or one that has ended and has not been waited for. One that is left is killed.
class ChildProcess {
 public:
  /// Starts the program with these descriptors as its standard input, output and error stream. Raises
  /// std::system_error.
  ChildProcess(const CommandLine& commandLine, int input, int output, int errors);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t Id() const { return m_id; }
  void Send(int signal) const;
  /// Whether it has ended; it is still to be waited for then.
  bool HasEnded() const;
  /// Waits for its end. The exit code, or nothing when a signal ended it. Raises std::runtime_error when the program
  /// could not be started.
  std::optional<int> Wait();

 private:
  std::string m_program;
  pid_t m_id = -1;
};

}  // namespace ondrel::test
