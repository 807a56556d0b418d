// The framework's recursive lock and its guard.
#pragma once

#include <ondrel/platform/export.h>
#include <ondrel/platform/os/critical_section.h>
#include <ondrel/platform/types.h>

/// A lock that one thread at a time holds and may take again while it holds it.
class FRAMEWORK_API CCriticalSection {
 public:
  /// Raises COleException with the system's status when the lock cannot be made.
  CCriticalSection();
  ~CCriticalSection();
  CCriticalSection(const CCriticalSection&) = delete;
  CCriticalSection& operator=(const CCriticalSection&) = delete;

  void Lock();
  void Unlock();  ///< Requires that the calling thread holds the lock; undoes one Lock.

 private:
  ondrel::platform::OsCriticalSection m_section;
};

/// Holds a CCriticalSection until it is unlocked or the guard's life ends, by an exception too.
class FRAMEWORK_API CSingleLock {
 public:
  explicit CSingleLock(CCriticalSection* object, BOOL initialLock = FALSE);
  ~CSingleLock();
  CSingleLock(const CSingleLock&) = delete;
  CSingleLock& operator=(const CSingleLock&) = delete;

  BOOL Lock();            ///< TRUE. Taken once by a guard: a second call is refused with FALSE.
  BOOL Unlock();          ///< TRUE when this guard held the lock.
  BOOL IsLocked() const;  ///< TRUE while this guard holds the lock.

 private:
  CCriticalSection* m_object;
  bool m_acquired = false;
};
