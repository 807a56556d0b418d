#include "support/posix/child_process.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>
#include <map>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "support/posix/unnamed_files.h"

namespace ondrel::test {
namespace {

constexpr uid_t kNobody = 65534;
constexpr int kCannotStart = 127;  // the exit code of a child that did not become the program

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
  if (ready && commandLine.withoutUnnamedFiles) ready = ForbidUnnamedFiles();
  if (ready && commandLine.withoutPrivileges) ready = setgid(kNobody) == 0 && setuid(kNobody) == 0;
  if (ready) execve(start.program.c_str(), start.argumentPointers.data(), start.environmentPointers.data());
  _exit(kCannotStart);
}

}  // namespace

ChildProcess::ChildProcess(const CommandLine& commandLine, int input, int output, int errors)
    : m_program(commandLine.program.string()) {
  const Start start(commandLine);
  m_id = fork();  // NOLINT(cppcoreguidelines-prefer-member-initializer): what the child needs is made before
  if (m_id == -1) throw std::system_error(errno, std::generic_category(), "fork");
  if (m_id == 0) BecomeProgram(start, commandLine, input, output, errors);
}

ChildProcess::~ChildProcess() {
  if (m_id == -1) return;
  kill(m_id, SIGKILL);
  while (waitpid(m_id, nullptr, 0) == -1 && errno == EINTR) {
  }
}

void ChildProcess::Send(int signal) const {
  if (kill(m_id, signal) != 0) throw std::system_error(errno, std::generic_category(), "kill");
}

bool ChildProcess::HasEnded() const {
  siginfo_t state = {};
  if (waitid(P_PID, static_cast<id_t>(m_id), &state, WEXITED | WNOHANG | WNOWAIT) != 0) {
    throw std::system_error(errno, std::generic_category(), "waitid");
  }
  return state.si_pid != 0;
}

std::optional<int> ChildProcess::Wait() {
  int status = 0;
  while (waitpid(m_id, &status, 0) == -1) {
    if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "waitpid");
  }
  m_id = -1;
  if (!WIFEXITED(status)) return std::nullopt;
  if (WEXITSTATUS(status) == kCannotStart) throw std::runtime_error("cannot start " + m_program);
  return WEXITSTATUS(status);
}

}  // namespace ondrel::test
