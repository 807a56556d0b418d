// A started command with everything that it starts.
#pragma once

#include <string>

#include <ondrel/platform/process.h>

#include "program/handle.h"

namespace ondrel::platform {

/// A pipe, one end of which a command gets.
struct ShellPipe {
  UniqueHandle reading;
  UniqueHandle writing;

  /// Opens the pipe. ERROR_SUCCESS or the reason.
  DWORD Open();
};

/// The process of a shell in a job of its own, which ends when the object goes, and when this program ends.
class ShellProcess {
 public:
  /// Starts the shell with these handles as its standard streams, and no others. ERROR_SUCCESS or the reason. To be
  /// called once.
  DWORD Start(const ShellCommand& command, HANDLE input, HANDLE output, HANDLE errors);

  HANDLE Get() const { return m_process.get(); }
  /// Ends the shell and all that it started.
  void Stop() const noexcept { TerminateJobObject(m_job.get(), kStopped); }

 private:
  static constexpr UINT kStopped = 1;

  UniqueHandle m_job;
  UniqueHandle m_process;
};

}  // namespace ondrel::platform
