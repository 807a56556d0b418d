#include "support/deadline.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <thread>

namespace ondrel::test {
namespace {

constexpr int kReturned = 0;
constexpr int kRaised = 1;

int WaitFor(pid_t child) {
  int end = 0;
  while (waitpid(child, &end, 0) < 0) {
    if (errno != EINTR) throw std::runtime_error("the child process is lost");
  }
  return end;
}

}  // namespace

bool EndsWithin(const std::function<void()>& work, std::chrono::milliseconds time) {
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("cannot start a process");
  if (child == 0) {
    // _exit, because whatever is to be done at the end of the test program is the parent's.
    try {
      work();
    } catch (...) {
      _exit(kRaised);
    }
    _exit(kReturned);
  }
  const auto deadline = std::chrono::steady_clock::now() + time;
  siginfo_t ended{};
  do {
    if (waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOHANG | WNOWAIT) != 0) {
      throw std::runtime_error("the child process is lost");
    }
    if (ended.si_pid == child) {
      const int end = WaitFor(child);
      if (WIFEXITED(end) && WEXITSTATUS(end) == kReturned) return true;
      throw std::runtime_error(WIFEXITED(end) ? "the work raised an exception" : "the work crashed");
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  } while (std::chrono::steady_clock::now() < deadline);
  kill(child, SIGKILL);
  WaitFor(child);
  return false;
}

}  // namespace ondrel::test
