// A command of the shell between three pipes, all of which are served at the same time.
#include <ondrel/platform/process.h>

#include <poll.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>

#include <ondrel/platform/kernel_file.h>

#include "program/process_group.h"
#include "program/shell_pipe.h"
#include "system/descriptor.h"
#include "system/os_error.h"

namespace ondrel::platform {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

constexpr std::size_t kBlock = std::size_t{64} * 1024;  // as much as a pipe holds

/// The streams of a running command, as this program has them.
class ShellStreams {
 public:
  ShellStreams(const ShellCommand& command, ShellResult& result) : m_command(command), m_result(result) {}

  /// Starts the command. 0, or an errno value.
  int Start(ProcessGroup& group) {
    ShellPipe input;
    ShellPipe output;
    ShellPipe errors;
    if (!input.Open() || !output.Open() || !errors.Open()) return errno;
    if (const int error = group.Start(m_command, input.reading, output.writing, errors.writing); error != 0) {
      return error;
    }
    m_input.Take(input.writing.Release());
    m_output.Take(output.reading.Release());
    m_errors.Take(errors.reading.Release());
    return StopWaiting(m_input) && StopWaiting(m_output) && StopWaiting(m_errors) ? 0 : errno;
  }

  bool HasOutput() const { return m_output.IsOpen(); }
  bool IsTooLarge() const { return m_result.output.size() > m_command.largestOutput; }

  /// Moves what can be moved, after a wait for it of at most `milliseconds`; without an end for -1.
  void Serve(int milliseconds) {
    if (m_input.IsOpen() && m_given == m_command.input.size()) m_input.Close();
    std::array<pollfd, 3> polled{
        {{m_input.Get(), POLLOUT, 0}, {m_output.Get(), POLLIN, 0}, {m_errors.Get(), POLLIN, 0}}};
    if (poll(polled.data(), polled.size(), milliseconds) <= 0) return;
    if (polled[0].revents != 0) Give();
    if (polled[1].revents != 0) ReadOutput();
    if (polled[2].revents != 0) ReadErrors();
  }

 private:
  void Give() {
    const auto count = static_cast<DWORD>(std::min(m_command.input.size() - m_given, kBlock));
    DWORD given = 0;
    // It knows how to write to a pipe that nobody reads without the signal that would end this program.
    const BOOL written = WriteFile(reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(m_input.Get())),
                                   m_command.input.data() + m_given, count, &given, nullptr);
    m_given += given;
    if (!written && GetLastError() == ERROR_NO_DATA) m_input.Close();
  }

  /// Up to a block; nothing at the end of the stream, which is closed then.
  std::size_t Read(PipeEnd& stream) {
    const ssize_t count = Uninterrupted([&] { return read(stream.Get(), m_block.data(), m_block.size()); });
    if (count > 0) return static_cast<std::size_t>(count);
    if (count == 0 || errno != EAGAIN) stream.Close();
    return 0;
  }

  void ReadOutput() {
    const std::size_t count = Read(m_output);
    m_result.output.insert(m_result.output.end(), m_block.data(), m_block.data() + count);
  }

  void ReadErrors() {
    const std::size_t count = Read(m_errors);
    const std::size_t room = m_command.keptErrors - m_result.errors.size();
    m_result.errors.append(m_block.data(), std::min(count, room));
  }

  const ShellCommand& m_command;
  ShellResult& m_result;
  PipeEnd m_input;
  PipeEnd m_output;
  PipeEnd m_errors;
  std::size_t m_given = 0;  ///< Of the input.
  std::array<char, kBlock> m_block;
};

/// For how long to wait for something to move: until `end`, but no longer than `most`. -1 for without an end.
int WaitTime(const std::optional<Clock::time_point>& end, std::optional<Milliseconds> most) {
  Milliseconds left = most.value_or(Milliseconds::max());
  if (end) left = std::min(left, std::chrono::ceil<Milliseconds>(*end - Clock::now()));
  if (left == Milliseconds::max()) return -1;
  return static_cast<int>(std::clamp<Milliseconds::rep>(left.count(), 0, std::numeric_limits<int>::max()));
}

/// Serves the streams until the output is at its end and the shell, too.
ShellResult::End Attend(const ShellCommand& command, ShellStreams& streams, const ProcessGroup& group) {
  constexpr Milliseconds kFirstLook{1};
  constexpr Milliseconds kLongestPause{32};
  std::optional<Clock::time_point> end;
  if (command.timeLimit) end = Clock::now() + *command.timeLimit;
  // No stream tells that the shell has ended. With its output at the end it mostly has; the others are looked after.
  Milliseconds pause = kFirstLook;
  while (streams.HasOutput() || !group.HasEnded()) {
    if (streams.HasOutput()) {
      streams.Serve(WaitTime(end, std::nullopt));
    } else {
      streams.Serve(WaitTime(end, pause));
      pause = std::min(pause * 2, kLongestPause);
    }
    if (streams.IsTooLarge()) return ShellResult::End::tooLarge;
    if (end && Clock::now() >= *end) return ShellResult::End::late;
  }
  streams.Serve(0);  // what it said at last
  return ShellResult::End::exited;
}

}  // namespace

ShellResult RunShellCommand(const ShellCommand& command) {
  ShellResult result;
  ProcessGroup group;
  ShellStreams streams(command, result);
  if (const int error = streams.Start(group); error != 0) {
    result.code = OsErrorFromErrno(error);
    return result;
  }
  const ShellResult::End end = Attend(command, streams, group);
  group.Finish(result);
  if (end != ShellResult::End::exited) result.end = end;
  return result;
}

}  // namespace ondrel::platform
