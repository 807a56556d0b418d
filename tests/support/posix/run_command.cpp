// Programs run by fork and exec, their output collected through pipes.
#include "support/run_command.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace ondrel::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr uid_t kNobody = 65534;
constexpr int kCannotStart = 127;  // the exit code of a child that did not become the program

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

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<std::string> Environment(const std::map<std::string, std::string>& added) {
  std::vector<std::string> variables;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string text = *variable;
    if (!added.contains(text.substr(0, text.find('=')))) variables.push_back(text);
  }
  for (const auto& [name, value] : added) variables.push_back(name + '=' + value);
  return variables;
}

/// Everything that the child needs, made before the fork: behind it only calls that are safe there are made.
struct Start {
  explicit Start(const CommandLine& commandLine)
      : program(commandLine.program.string()),
        folder(commandLine.workingFolder.string()),
        arguments(commandLine.arguments),
        environment(Environment(commandLine.environment)) {
    arguments.insert(arguments.begin(), program);
    argumentPointers = Pointers(arguments);
    environmentPointers = Pointers(environment);
  }

  std::string program;
  std::string folder;
  std::vector<std::string> arguments;
  std::vector<std::string> environment;
  std::vector<char*> argumentPointers;
  std::vector<char*> environmentPointers;
};

[[noreturn]] void BecomeProgram(const Start& start, const CommandLine& commandLine, int input, int output, int errors) {
  const bool redirected =
      dup2(input, STDIN_FILENO) != -1 && dup2(output, STDOUT_FILENO) != -1 && dup2(errors, STDERR_FILENO) != -1;
  bool ready = redirected && (start.folder.empty() || chdir(start.folder.c_str()) == 0);
  if (ready && commandLine.largestFile) {
    const rlimit limit{*commandLine.largestFile, *commandLine.largestFile};
    ready = setrlimit(RLIMIT_FSIZE, &limit) == 0;
  }
  if (ready && commandLine.withoutPrivileges) ready = setgid(kNobody) == 0 && setuid(kNobody) == 0;
  if (ready) execve(start.program.c_str(), start.argumentPointers.data(), start.environmentPointers.data());
  _exit(kCannotStart);
}

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
  const Start start(commandLine);
  Descriptor input(open("/dev/null", O_RDONLY | O_CLOEXEC));
  Pipe output;
  Pipe errors;
  if (!commandLine.standardOutput.empty()) {
    output.writing = Descriptor(open(commandLine.standardOutput.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666));
  }
  if (!input.IsOpen() || !output.writing.IsOpen()) ThrowErrno("open");

  const auto begin = Clock::now();
  const pid_t child = fork();
  if (child == -1) ThrowErrno("fork");
  if (child == 0) BecomeProgram(start, commandLine, input.Get(), output.writing.Get(), errors.writing.Get());
  output.writing.Close();
  errors.writing.Close();
  if (commandLine.nobodyReads) output.reading.Close();

  CommandResult result;
  result.timedOut = !Collect(output.reading, errors.reading, begin + commandLine.timeLimit, result);
  if (result.timedOut) kill(child, SIGKILL);
  int status = 0;
  while (waitpid(child, &status, 0) == -1) {
    if (errno != EINTR) ThrowErrno("waitpid");
  }
  result.duration = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin);
  if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
  if (result.exitCode == kCannotStart) throw std::runtime_error("cannot start " + start.program);
  return result;
}

}  // namespace ondrel::test
