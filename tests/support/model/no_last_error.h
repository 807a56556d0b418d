// Makes the system keep its reasons to itself, to test what the library makes of a failure without one.
#pragma once

namespace ondrel::test {

/// While it lives, GetLastError gives ERROR_SUCCESS to the library.
class NoLastError {
 public:
  NoLastError();
  ~NoLastError();
  NoLastError(const NoLastError&) = delete;
  NoLastError& operator=(const NoLastError&) = delete;
};

}  // namespace ondrel::test
