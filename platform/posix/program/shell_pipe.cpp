// Pipes, opened so that only those who are handed them have them.
#include "program/shell_pipe.h"

#include <fcntl.h>
#include <unistd.h>
#include <array>
#include <utility>

namespace ondrel::platform {

void PipeEnd::Take(int descriptor) {
  Close();
  m_descriptor = descriptor;
}

int PipeEnd::Release() { return std::exchange(m_descriptor, -1); }

void PipeEnd::Close() {
  if (m_descriptor != -1) close(m_descriptor);
  m_descriptor = -1;
}

bool ShellPipe::Open() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  reading.Take(ends[0]);
  writing.Take(ends[1]);
  for (PipeEnd* const end : {&reading, &writing}) {
    if (end->Get() > STDERR_FILENO) continue;
    const int moved = fcntl(end->Get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (moved == -1) return false;
    end->Take(moved);
  }
  return true;
}

bool StopWaiting(const PipeEnd& end) {
  const int flags = fcntl(end.Get(), F_GETFL);
  return flags != -1 && fcntl(end.Get(), F_SETFL, flags | O_NONBLOCK) == 0;
}

}  // namespace ondrel::platform
