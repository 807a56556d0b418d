// Makes the system refuse to make locks, to test what becomes of the objects that need one.
#pragma once

namespace ondrel::test {

/// While it lives, the system has no memory for a new recursive lock of this program.
class FailingLock {
 public:
  FailingLock();
  ~FailingLock();
  FailingLock(const FailingLock&) = delete;
  FailingLock& operator=(const FailingLock&) = delete;
};

}  // namespace ondrel::test
