#include "support/model/lock_watch.h"

#include <chrono>

#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

/// Far more than taking a free lock needs on a busy machine.
constexpr std::chrono::seconds kDeadline{20};

}  // namespace

LockWatch::LockWatch() : m_thread([this] { Watch(); }) {}

LockWatch::~LockWatch() {
  {
    const std::lock_guard guard(m_mutex);
    m_ends = true;
  }
  m_changed.notify_all();
  m_thread.join();
}

bool LockWatch::IsFree(const CMMCObjectSet& set) {
  CCriticalSection& lock = CMMCObjectSetProbe::Lock(set);
  std::unique_lock guard(m_mutex);
  m_asked = &lock;
  m_changed.notify_all();
  const auto answered = [this] { return m_asked == nullptr; };
  if (m_changed.wait_for(guard, kDeadline, answered)) return true;
  // Nobody else uses the set, so it is this thread that has the lock, and may let go of it.
  do {
    lock.Unlock();
  } while (!m_changed.wait_for(guard, std::chrono::seconds(1), answered));
  return false;
}

void LockWatch::Watch() {
  std::unique_lock guard(m_mutex);
  for (;;) {
    m_changed.wait(guard, [this] { return m_ends || m_asked != nullptr; });
    if (m_ends) return;
    CCriticalSection* const lock = m_asked;
    guard.unlock();
    lock->Lock();
    lock->Unlock();
    guard.lock();
    m_asked = nullptr;
    m_changed.notify_all();
  }
}

}  // namespace ondrel::test
