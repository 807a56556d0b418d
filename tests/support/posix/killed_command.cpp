#include "support/posix/killed_command.h"

#include <fcntl.h>
#include <unistd.h>
#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>

namespace ondrel::test {
namespace {

/// What a program without input and output has for both. Open for as long as the test program runs.
int NoStream() {
  static const int stream = open("/dev/null", O_RDWR | O_CLOEXEC);
  if (stream == -1) throw std::system_error(errno, std::generic_category(), "open");
  return stream;
}

}  // namespace

KilledCommand::KilledCommand(const CommandLine& commandLine)
    : m_process(commandLine, NoStream(), NoStream(), NoStream()), m_start(Clock::now()) {}

bool KilledCommand::IsWritingIn(const std::filesystem::path& folder) const {
  const std::string start = folder.string() + '/';
  const std::filesystem::path descriptors = "/proc/" + std::to_string(m_process.Id()) + "/fd";
  std::error_code gone;  // the program may end, or close a file, while it is looked at
  for (auto entry = std::filesystem::directory_iterator(descriptors, gone);
       !gone && entry != std::filesystem::directory_iterator(); entry.increment(gone)) {
    const std::string file = std::filesystem::read_symlink(entry->path(), gone).string();
    if (gone) {
      gone.clear();
      continue;
    }
    const std::string_view name(file);
    if (name.starts_with(start) && (name.ends_with(" (deleted)") || name.ends_with(".tmp"))) return true;
  }
  return false;
}

bool KilledCommand::WaitForWritingIn(const std::filesystem::path& folder) const {
  while (!IsWritingIn(folder)) {
    if (m_process.HasEnded()) return false;
  }
  return true;
}

void KilledCommand::WaitUntil(std::chrono::nanoseconds running) const {
  std::this_thread::sleep_until(m_start + running);
}

std::optional<int> KilledCommand::End(int signal) {
  m_process.Send(signal);
  return m_process.Wait();
}

}  // namespace ondrel::test
