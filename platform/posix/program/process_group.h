// A started command with everything that it starts.
#pragma once

#include <sys/types.h>
#include <array>
#include <csignal>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/platform/process.h>

#include "program/shell_pipe.h"

namespace ondrel::platform {

/// The process of a shell and its process group. Whatever is left of the group when the object goes is killed. As long
/// as it lives, the signals with which users end programs end the group first.
class ProcessGroup {
 public:
  ProcessGroup() = default;
  ~ProcessGroup();
  ProcessGroup(const ProcessGroup&) = delete;
  ProcessGroup& operator=(const ProcessGroup&) = delete;

  /// Starts the shell with these ends as its standard streams. 0, or an errno value. To be called once.
  int Start(const ShellCommand& command, const PipeEnd& input, const PipeEnd& output, const PipeEnd& errors);
  /// Whether the shell has ended. It is still to be waited for then.
  bool HasEnded() const;
  /// Kills the whole group and waits for the shell; `result` tells how it ended.
  void Finish(ShellResult& result);
  /// Kills the whole group.
  void Stop() const noexcept;

 private:
  static constexpr std::array kEndingSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

  void ForwardSignals();
  void RestoreSignals() noexcept;
  int WaitForShell() noexcept;

  pid_t m_shell = -1;  ///< Also the number of the group; -1 when there is none (any more).
  std::array<struct sigaction, kEndingSignals.size()> m_formerActions{};
};

}  // namespace ondrel::platform
