// Programs run as children of this process, their output collected through pipes.
#include "support/run_command.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

#include "support/posix/child_process.h"

namespace ondrel::test {
namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void ThrowErrno(const char* call) { throw std::system_error(errno, std::generic_category(), call); }

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
  Descriptor(Descriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
  }
  ~Descriptor() { Close(); }

  int Get() const { return m_descriptor; }
  bool IsOpen() const { return m_descriptor != -1; }
  void Close() {
    if (m_descriptor != -1) close(std::exchange(m_descriptor, -1));
  }

 private:
  int m_descriptor = -1;
};

struct Pipe {
  Pipe() {
    std::array<int, 2> ends;
    if (pipe2(ends.data(), O_CLOEXEC) != 0) ThrowErrno("pipe2");
    reading = Descriptor(ends[0]);
    writing = Descriptor(ends[1]);
  }
  Descriptor reading;
  Descriptor writing;
};

/// Reads what is there; false at the end.
bool ReadSome(const Descriptor& from, std::string& text) {
  std::array<char, 64 * 1024> buffer;
  const ssize_t count = read(from.Get(), buffer.data(), buffer.size());
  if (count > 0) text.append(buffer.data(), static_cast<std::size_t>(count));
  return count > 0 || (count == -1 && errno == EINTR);
}

/// Collects both streams until both end; false when the time is over before.
bool Collect(Descriptor& output, Descriptor& errors, Clock::time_point end, CommandResult& result) {
  while (output.IsOpen() || errors.IsOpen()) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    if (left <= 0) return false;
    std::array<pollfd, 2> polled{{{output.Get(), POLLIN, 0}, {errors.Get(), POLLIN, 0}}};
    if (poll(polled.data(), polled.size(), static_cast<int>(left)) == -1 && errno != EINTR) ThrowErrno("poll");
    if (polled[0].revents != 0 && !ReadSome(output, result.output)) output.Close();
    if (polled[1].revents != 0 && !ReadSome(errors, result.errors)) errors.Close();
  }
  return true;
}

}  // namespace

CommandResult RunCommand(const CommandLine& commandLine) {
  Descriptor input(open("/dev/null", O_RDONLY | O_CLOEXEC));
  Pipe output;
  Pipe errors;
  if (!commandLine.standardOutput.empty()) {
    output.writing = Descriptor(open(commandLine.standardOutput.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666));
  }
  if (!input.IsOpen() || !output.writing.IsOpen()) ThrowErrno("open");

  const auto begin = Clock::now();
  ChildProcess child(commandLine, input.Get(), output.writing.Get(), errors.writing.Get());
  output.writing.Close();
  errors.writing.Close();
  if (commandLine.nobodyReads) output.reading.Close();

  CommandResult result;
  result.timedOut = !Collect(output.reading, errors.reading, begin + commandLine.timeLimit, result);
  if (result.timedOut) child.Send(SIGKILL);
  result.exitCode = child.Wait();
  result.duration = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin);
  return result;
}

}  // namespace ondrel::test
