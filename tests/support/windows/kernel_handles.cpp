// The system's handles.
#include "support/kernel_handles.h"

#include <system_error>

namespace ondrel::test {
namespace {

[[noreturn]] void ThrowLastError() {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
}

KernelHandle Open(const std::filesystem::path& path, DWORD access, DWORD creation) {
  const HANDLE handle =
      CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, creation, 0, nullptr);
  if (handle == INVALID_HANDLE_VALUE) ThrowLastError();
  return KernelHandle(handle);
}

}  // namespace

bool IsOpen(HANDLE handle) {
  DWORD flags = 0;
  return GetHandleInformation(handle, &flags) != FALSE;
}

void CloseHandleOfSystem(HANDLE handle) { CloseHandle(handle); }

KernelHandle OpenToRead(const std::filesystem::path& path) { return Open(path, GENERIC_READ, OPEN_EXISTING); }

KernelHandle OpenToWrite(const std::filesystem::path& path) { return Open(path, GENERIC_WRITE, CREATE_ALWAYS); }

KernelPipe::KernelPipe() {
  HANDLE readingEnd = nullptr;
  HANDLE writingEnd = nullptr;
  if (!CreatePipe(&readingEnd, &writingEnd, nullptr, 0)) ThrowLastError();
  reading = KernelHandle(readingEnd);
  writing = KernelHandle(writingEnd);
}

const std::string kEndOfPipe = "0x8007006D";  // ERROR_BROKEN_PIPE

}  // namespace ondrel::test
