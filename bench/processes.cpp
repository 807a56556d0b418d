#include "processes.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace ondrel::bench {
namespace {

void RequireSuccess(int error, const std::string& what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

class Descriptor {
 public:
  explicit Descriptor(int value) : m_value(value) {
    if (value == -1) throw std::system_error(errno, std::generic_category(), "a file cannot be opened");
  }
  ~Descriptor() { close(m_value); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int Value() const { return m_value; }

 private:
  int m_value;
};

/// Where a program's streams go, and where it runs.
class Surroundings {
 public:
  Surroundings(const Program& program, int output) {
    posix_spawn_file_actions_init(&m_actions);
    posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_addchdir_np(&m_actions, program.folder.c_str());
  }
  ~Surroundings() { posix_spawn_file_actions_destroy(&m_actions); }
  Surroundings(const Surroundings&) = delete;
  Surroundings& operator=(const Surroundings&) = delete;
  const posix_spawn_file_actions_t* Actions() const { return &m_actions; }

 private:
  posix_spawn_file_actions_t m_actions{};
};

double Run(const Program& program, int output) {
  std::vector<char*> arguments = {const_cast<char*>(program.path.c_str())};
  for (const std::string& argument : program.arguments) arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);
  const Surroundings surroundings(program, output);

  pid_t child = 0;
  int status = 0;
  const auto start = std::chrono::steady_clock::now();
  RequireSuccess(posix_spawn(&child, program.path.c_str(), surroundings.Actions(), nullptr, arguments.data(), environ),
                 program.path);
  while (waitpid(child, &status, 0) == -1) {
    if (errno != EINTR) RequireSuccess(errno, program.path);
  }
  const auto end = std::chrono::steady_clock::now();
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw std::runtime_error(program.path + " failed");
  return std::chrono::duration<double>(end - start).count();
}

}  // namespace

double SecondsOf(const Program& program) {
  const Descriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
  return Run(program, nowhere.Value());
}

std::string OutputOf(const Program& program) {
  const Descriptor file(
      open(std::filesystem::temp_directory_path().c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR));
  Run(program, file.Value());
  std::string output;
  std::array<char, 4096> block{};
  for (ssize_t count = 0;
       (count = pread(file.Value(), block.data(), block.size(), static_cast<off_t>(output.size()))) > 0;) {
    output.append(block.data(), static_cast<std::size_t>(count));
  }
  return output;
}

void SettleDisk() { sync(); }

void ForgetFiles(const std::filesystem::path& folder, bool all) {
  SettleDisk();
  if (all) {
    std::ofstream caches("/proc/sys/vm/drop_caches");
    constexpr const char* kContentsAndNames = "3";
    if (caches << kContentsAndNames && caches.flush()) return;
  }
  // Only the system's administrator may do that; anybody may for files of their own.
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    const Descriptor file(open(entry.path().c_str(), O_RDONLY | O_CLOEXEC));
    RequireSuccess(posix_fadvise(file.Value(), 0, 0, POSIX_FADV_DONTNEED), entry.path());
  }
}

}  // namespace ondrel::bench
