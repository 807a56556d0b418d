#include "support/posix/unnamed_files.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <cerrno>
#include <cstddef>
#include <exception>
#include <string>
#include <system_error>
#include <thread>

namespace ondrel::test {
namespace {

// The two halves of O_TMPFILE: the flag itself, and O_DIRECTORY, which other openings have as well.
constexpr unsigned kUnnamedFlag = O_TMPFILE & ~O_DIRECTORY;
constexpr unsigned kFlagsArgument = 2;  // of openat, by which the C library opens everything

}  // namespace

bool ForbidUnnamedFiles() noexcept {
  // The halves of an argument lie as the machine's bytes do, the lower first.
  constexpr auto kNumber = static_cast<unsigned>(offsetof(seccomp_data, nr));
  constexpr auto kFlags =
      static_cast<unsigned>(offsetof(seccomp_data, args)) + kFlagsArgument * static_cast<unsigned>(sizeof(__u64));
  sock_filter rules[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kNumber),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 3),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kFlags),
      BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, kUnnamedFlag, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EOPNOTSUPP),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog program{static_cast<unsigned short>(std::size(rules)), rules};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

void RunWithoutUnnamedFiles(const std::function<void()>& work) {
  std::exception_ptr raised;
  std::thread([&] {
    try {
      if (!ForbidUnnamedFiles()) throw std::system_error(errno, std::generic_category(), "prctl");
      work();
    } catch (...) {
      raised = std::current_exception();
    }
  }).join();
  if (raised) std::rethrow_exception(raised);
}

bool HoldsUnnamedFiles(const std::filesystem::path& folder) {
  const int file = open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
  if (file == -1) return false;
  struct stat status = {};
  const bool named = stat(("/proc/self/fd/" + std::to_string(file)).c_str(), &status) == 0;
  close(file);
  return named;
}

}  // namespace ondrel::test
