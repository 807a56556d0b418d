// Handles that carry file descriptors.
#include "support/kernel_handles.h"

#include <fcntl.h>
#include <unistd.h>
#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>

namespace ondrel::test {
namespace {

constexpr mode_t kNewFileMode = 0666;

KernelHandle HandleOf(int descriptor) {
  if (descriptor == -1) throw std::system_error(errno, std::generic_category());
  return KernelHandle(reinterpret_cast<HANDLE>(std::intptr_t{descriptor}));
}

int DescriptorOf(HANDLE handle) { return static_cast<int>(reinterpret_cast<std::intptr_t>(handle)); }

}  // namespace

bool IsOpen(HANDLE handle) { return fcntl(DescriptorOf(handle), F_GETFD) != -1; }

void CloseHandleOfSystem(HANDLE handle) { close(DescriptorOf(handle)); }

KernelHandle OpenToRead(const std::filesystem::path& path) {
  return HandleOf(open(path.c_str(), O_RDONLY | O_CLOEXEC));
}

KernelHandle OpenToWrite(const std::filesystem::path& path) {
  return HandleOf(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kNewFileMode));
}

KernelPipe::KernelPipe() {
  std::array<int, 2> ends;
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category());
  reading = HandleOf(ends[0]);
  writing = HandleOf(ends[1]);
}

const std::string kEndOfPipe = "nothing";

}  // namespace ondrel::test
