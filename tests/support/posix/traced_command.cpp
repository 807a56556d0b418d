#include "support/posix/traced_command.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstdint>
#include <stdexcept>
#include <system_error>

#include "support/posix/child_process.h"

namespace ondrel::test {
namespace {

/// A file without a name for what a program prints.
class PrintedText {
 public:
  PrintedText() : m_file(memfd_create("printed", MFD_CLOEXEC)) {
    if (m_file == -1) throw std::system_error(errno, std::generic_category(), "memfd_create");
  }
  ~PrintedText() { close(m_file); }
  PrintedText(const PrintedText&) = delete;
  PrintedText& operator=(const PrintedText&) = delete;

  int Descriptor() const { return m_file; }
  std::string Text() const {
    std::string text(static_cast<std::size_t>(lseek(m_file, 0, SEEK_END)), '\0');
    if (pread(m_file, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size())) {
      throw std::system_error(errno, std::generic_category(), "pread");
    }
    return text;
  }

 private:
  int m_file;
};

/// The program, behind a shell that stops itself before it becomes the program.
CommandLine Stopped(CommandLine commandLine) {
  commandLine.arguments.insert(commandLine.arguments.begin(),
                               {"-c", "kill -STOP $$; exec \"$@\"", "sh", commandLine.program.string()});
  commandLine.program = "/bin/sh";
  return commandLine;
}

/// A program stopped at each of its calls of the system.
class Tracee {
 public:
  explicit Tracee(pid_t id) : m_id(id) {
    if (WaitForStop() != SIGSTOP) throw std::runtime_error("the shell does not stop");
  }

  /// False where this is not allowed.
  bool Begin() const {
    if (ptrace(PTRACE_SEIZE, m_id, nullptr, PTRACE_O_TRACESYSGOOD) != 0) return false;
    if (kill(m_id, SIGCONT) != 0) throw std::system_error(errno, std::generic_category(), "kill");
    return true;
  }
  void End() const { ptrace(PTRACE_DETACH, m_id, nullptr, nullptr); }

  /// Goes on to the next opening of a file; false when the program has come to its end.
  bool GoToOpening(std::string& path, int& flags) const {
    for (;;) {
      const int signal = WaitForStop();
      if (signal == 0) return false;
      if (signal == (SIGTRAP | kSystemCall)) {
        if (ReadOpening(path, flags)) return true;
        Continue(0);
      } else {
        // A signal of the program's own goes on to it; the stops of tracing itself do not.
        Continue(signal == SIGTRAP || signal == SIGSTOP || signal == SIGCONT ? 0 : signal);
      }
    }
  }
  void Continue(int signal) const {
    const auto handed = static_cast<std::uintptr_t>(signal);
    ptrace(PTRACE_SYSCALL, m_id, nullptr, reinterpret_cast<void*>(handed));  // NOLINT(performance-no-int-to-ptr)
  }

 private:
  static constexpr int kSystemCall = 0x80;

  /// The signal that it was stopped by, 0 when it has ended; it is still to be waited for then.
  int WaitForStop() const {
    siginfo_t state = {};
    while (waitid(P_PID, static_cast<id_t>(m_id), &state, WEXITED | WSTOPPED | WNOWAIT) != 0) {
      if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "waitid");
    }
    if (state.si_code == CLD_EXITED || state.si_code == CLD_KILLED || state.si_code == CLD_DUMPED) return 0;
    int status = 0;
    if (waitpid(m_id, &status, WUNTRACED) != m_id) throw std::system_error(errno, std::generic_category(), "waitpid");
    return WSTOPSIG(status);
  }

  bool ReadOpening(std::string& path, int& flags) const {
    __ptrace_syscall_info call = {};
    auto* const size = reinterpret_cast<void*>(sizeof call);  // NOLINT(performance-no-int-to-ptr)
    if (ptrace(PTRACE_GET_SYSCALL_INFO, m_id, size, &call) <= 0) return false;
    if (call.op != PTRACE_SYSCALL_INFO_ENTRY || call.entry.nr != SYS_openat) return false;
    path = ReadText(call.entry.args[1]);
    flags = static_cast<int>(call.entry.args[2]);
    return true;
  }

  /// Zero-terminated text in the program's memory, read no further than it surely is there.
  std::string ReadText(std::uint64_t address) const {
    std::string text;
    while (text.size() < PATH_MAX) {
      char unit = 0;
      iovec here{&unit, 1};
      iovec there{reinterpret_cast<void*>(address + text.size()), 1};  // NOLINT(performance-no-int-to-ptr)
      if (process_vm_readv(m_id, &here, 1, &there, 1, 0) != 1 || unit == 0) break;
      text += unit;
    }
    return text;
  }

  pid_t m_id;
};

}  // namespace

std::optional<CommandResult> RunWithChange(const CommandLine& commandLine, const OpeningChoice& isChosen,
                                           const std::function<void()>& change) {
  const auto start = std::chrono::steady_clock::now();
  const PrintedText output;
  const PrintedText errors;
  ChildProcess process(Stopped(commandLine), output.Descriptor(), output.Descriptor(), errors.Descriptor());
  const Tracee tracee(process.Id());
  if (!tracee.Begin()) return std::nullopt;
  bool isChanged = false;
  std::string path;
  int flags = 0;
  while (!isChanged && tracee.GoToOpening(path, flags)) {
    if (isChosen(path, flags)) {
      change();
      isChanged = true;
    } else {
      tracee.Continue(0);
    }
  }
  if (!isChanged) throw std::runtime_error("the program never came to that file: " + errors.Text());
  tracee.End();
  CommandResult result;
  result.exitCode = process.Wait();
  result.output = output.Text();
  result.errors = errors.Text();
  result.duration = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
  return result;
}

bool MakesFile(const std::string&, int flags) { return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE; }

}  // namespace ondrel::test
