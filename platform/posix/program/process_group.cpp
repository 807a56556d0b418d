// The start of a shell as a group of its own, and the end of the group.
#include "program/process_group.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <atomic>
#include <cerrno>

#include "system/descriptor.h"
#include "system/native_path.h"

namespace ondrel::platform {
namespace {

constexpr const char* kShell = "/bin/sh";

std::atomic<pid_t> g_runningGroup = 0;
std::atomic<bool> g_isStarting = false;
std::atomic<int> g_heldSignal = 0;  // one that came while a group was started

// The user ends the program: so ends the command, which as a group of its own does not hear of it otherwise. The action
// has gone back to the system's own by now, and the signal that is raised comes when this function returns.
void EndGroupFirst(int signal) {
  if (g_isStarting) {
    g_heldSignal = signal;
    return;
  }
  if (g_runningGroup != 0) kill(-g_runningGroup, SIGKILL);
  raise(signal);
}

// The calls that give these an end give an error number, like those that use them; memory is what they can be short of.
class SpawnActions {
 public:
  SpawnActions() { posix_spawn_file_actions_init(&m_actions); }
  ~SpawnActions() { posix_spawn_file_actions_destroy(&m_actions); }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;

  int Hand(const PipeEnd& end, int stream) { return posix_spawn_file_actions_adddup2(&m_actions, end.Get(), stream); }
  int Enter(const char* folder) { return posix_spawn_file_actions_addchdir_np(&m_actions, folder); }
  const posix_spawn_file_actions_t* Get() const { return &m_actions; }

 private:
  posix_spawn_file_actions_t m_actions;
};

class SpawnAttributes {
 public:
  SpawnAttributes() {
    posix_spawnattr_init(&m_attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&m_attributes, &none);
    // What this program ignores for itself.
    sigset_t usual;
    sigemptyset(&usual);
    sigaddset(&usual, SIGXFSZ);
    sigaddset(&usual, SIGPIPE);
    posix_spawnattr_setsigdefault(&m_attributes, &usual);
    posix_spawnattr_setpgroup(&m_attributes, 0);
    posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~SpawnAttributes() { posix_spawnattr_destroy(&m_attributes); }
  SpawnAttributes(const SpawnAttributes&) = delete;
  SpawnAttributes& operator=(const SpawnAttributes&) = delete;

  const posix_spawnattr_t* Get() const { return &m_attributes; }

 private:
  posix_spawnattr_t m_attributes;
};

bool IsAdded(std::string_view variable, const ShellCommand& command) {
  const std::string_view name = variable.substr(0, variable.find('='));
  for (const auto& [added, value] : command.variables) {
    if (added == name) return true;
  }
  return false;
}

std::vector<std::string> EnvironmentOf(const ShellCommand& command) {
  std::vector<std::string> variables;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    if (!IsAdded(*variable, command)) variables.emplace_back(*variable);
  }
  for (const auto& [name, value] : command.variables) variables.push_back(name + '=' + value);
  return variables;
}

std::vector<char*> PointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

ProcessGroup::~ProcessGroup() {
  if (m_shell == -1) return;
  Stop();
  WaitForShell();
}

int ProcessGroup::Start(const ShellCommand& command, const PipeEnd& input, const PipeEnd& output,
                        const PipeEnd& errors) {
  std::string folder;
  if (!NativePath(command.folder, folder)) return ENOENT;
  SpawnActions actions;
  int error = actions.Hand(input, STDIN_FILENO);
  if (error == 0) error = actions.Hand(output, STDOUT_FILENO);
  if (error == 0) error = actions.Hand(errors, STDERR_FILENO);
  if (error == 0) error = actions.Enter(folder.c_str());
  if (error != 0) return error;

  const SpawnAttributes attributes;
  std::vector<std::string> arguments{kShell, "-c", command.text};
  std::vector<std::string> variables = EnvironmentOf(command);
  const std::vector<char*> argumentPointers = PointersTo(arguments);
  const std::vector<char*> variablePointers = PointersTo(variables);
  g_isStarting = true;
  ForwardSignals();
  error =
      posix_spawn(&m_shell, kShell, actions.Get(), attributes.Get(), argumentPointers.data(), variablePointers.data());
  if (error != 0) m_shell = -1;
  g_runningGroup = error == 0 ? m_shell : 0;
  g_isStarting = false;
  if (const int held = g_heldSignal.exchange(0); held != 0) EndGroupFirst(held);
  if (error != 0) RestoreSignals();
  return error;
}

bool ProcessGroup::HasEnded() const {
  siginfo_t state = {};
  const int called =
      Uninterrupted([&] { return waitid(P_PID, static_cast<id_t>(m_shell), &state, WEXITED | WNOHANG | WNOWAIT); });
  return called == -1 || state.si_pid != 0;
}

void ProcessGroup::Finish(ShellResult& result) {
  // The shell is not waited for before the rest is killed: until then nobody else can get the number of its group.
  Stop();
  const int status = WaitForShell();
  const bool isCrash = WIFSIGNALED(status);
  result.end = isCrash ? ShellResult::End::crashed : ShellResult::End::exited;
  result.code = static_cast<DWORD>(isCrash ? WTERMSIG(status) : WEXITSTATUS(status));
}

void ProcessGroup::Stop() const noexcept {
  if (m_shell != -1) kill(-m_shell, SIGKILL);
}

int ProcessGroup::WaitForShell() noexcept {
  int status = 0;
  Uninterrupted([&] { return waitpid(m_shell, &status, 0); });
  g_runningGroup = 0;
  m_shell = -1;
  RestoreSignals();
  return status;
}

void ProcessGroup::ForwardSignals() {
  for (std::size_t index = 0; index < kEndingSignals.size(); ++index) {
    struct sigaction action = {};
    sigaction(kEndingSignals[index], nullptr, &m_formerActions[index]);
    if (m_formerActions[index].sa_handler == SIG_IGN) continue;  // the user's wish: nohup
    action.sa_handler = EndGroupFirst;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(kEndingSignals[index], &action, nullptr);
  }
}

void ProcessGroup::RestoreSignals() noexcept {
  for (std::size_t index = 0; index < kEndingSignals.size(); ++index) {
    sigaction(kEndingSignals[index], &m_formerActions[index], nullptr);
  }
}

}  // namespace ondrel::platform
