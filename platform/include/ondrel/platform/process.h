// Contract: commands of the system's shell that are run as filters, bytes in and bytes out.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/platform/framework/string.h>

namespace ondrel::platform {

/// A command of the system's shell: /bin/sh -c, or cmd.exe /d /s /c on Windows.
struct ShellCommand {
  std::string text;  ///< In UTF-8.
  CString folder;    ///< That it is run in.
  /// Names and values, in UTF-8, beside the environment of this process and instead of its variables of the same names.
  /// Names are not empty and have no "=".
  std::vector<std::pair<std::string, std::string>> variables;
  std::vector<char> input;
  ULONGLONG largestOutput = 0;    ///< In bytes; a command that writes more is stopped.
  std::size_t keptErrors = 4096;  ///< How much of its standard error is kept, in bytes; the rest is read and dropped.
  std::optional<std::chrono::milliseconds> timeLimit;  ///< A command that takes longer is stopped.
};

struct ShellResult {
  enum class End {
    exited,      ///< `code` is its exit code.
    crashed,     ///< `code` is the signal that ended it, or on Windows the status of its fault.
    late,        ///< It was stopped at its time limit.
    tooLarge,    ///< It was stopped because it wrote too much.
    notStarted,  ///< `code` is the reason (ERROR_...).
  };

  End end = End::notStarted;
  DWORD code = 0;
  std::vector<char> output;  ///< All of its standard output when it exited.
  std::string errors;        ///< The first bytes of its standard error.
};

/// Runs a command, hands it the input and collects what it writes, all at the same time. Ends when the shell has ended
/// and everyone who had the command's standard output has closed it; whatever else the command started and left is
/// stopped then, as everything is that it started when it is stopped itself. On POSIX, programs that left its process
/// group go on, but are not waited for. That the command does not read its input is no failure. When the program is
/// ended meanwhile by a signal of the user's or by being closed, so is the command. At most one is run at a time.
/// Raises std::bad_alloc; the command is stopped then.
ShellResult RunShellCommand(const ShellCommand& command);

}  // namespace ondrel::platform
