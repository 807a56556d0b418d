// The recursive lock and its guard.
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

#include "support/failing_lock.h"
#include "support/raised.h"

#include <ondrel/platform/framework/exceptions.h>
#include <ondrel/platform/framework/sync.h>

namespace ondrel::test {
namespace {

// Whether another thread gets the lock only after `release` was called here.
template <class Release>
bool OtherThreadWaitsFor(CCriticalSection& section, Release release) {
  std::atomic<bool> released = false;
  bool waited = false;
  std::thread other([&] {
    const CSingleLock lock(&section, TRUE);
    waited = released;
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  released = true;
  release();
  other.join();
  return waited;
}

TEST(Lock, KeepsOtherThreadsOutUntilItIsReleased) {
  CCriticalSection section;
  CSingleLock lock(&section, TRUE);
  EXPECT_TRUE(OtherThreadWaitsFor(section, [&] { lock.Unlock(); }));
}

TEST(Lock, IsTakenAgainByItsOwnThreadAndReleasedAsOften) {
  CCriticalSection section;
  section.Lock();
  section.Lock();
  section.Unlock();
  EXPECT_TRUE(OtherThreadWaitsFor(section, [&] { section.Unlock(); }));
}

TEST(Lock, OfAGuardEndsWithAnException) {
  CCriticalSection section;
  EXPECT_TRUE(Raised<std::runtime_error>([&] {
    const CSingleLock lock(&section, TRUE);
    throw std::runtime_error("inside");
  }));
  bool taken = false;
  std::thread([&] {
    const CSingleLock lock(&section, TRUE);
    taken = lock.IsLocked() != FALSE;
  }).join();
  EXPECT_TRUE(taken);
}

TEST(Lock, KeepsACountOfTwoThreadsWhole) {
  CCriticalSection section;
  long count = 0;
  const auto work = [&] {
    for (int round = 0; round < 20000; ++round) {
      const CSingleLock outer(&section, TRUE);
      const CSingleLock inner(&section, TRUE);
      ++count;
    }
  };
  std::thread first(work);
  std::thread second(work);
  first.join();
  second.join();
  EXPECT_EQ(count, 40000);
}

TEST(Lock, ThatTheSystemCannotMakeRaisesItsStatus) {
  std::optional<COleException> fault;
  {
    const FailingLock failing;
    fault = Raised<COleException>([] { CCriticalSection section; });
  }
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_sc, HRESULT_FROM_WIN32(ERROR_NOT_ENOUGH_MEMORY));
  EXPECT_NO_THROW(CCriticalSection());
}

TEST(Guard, TakesTheLockOnceAndWhenAsked) {
  CCriticalSection section;
  CSingleLock lock(&section);
  EXPECT_FALSE(lock.IsLocked());
  EXPECT_FALSE(lock.Unlock());
  EXPECT_TRUE(lock.Lock());
  EXPECT_TRUE(lock.IsLocked());
  EXPECT_FALSE(lock.Lock());
  EXPECT_TRUE(lock.Unlock());
  EXPECT_FALSE(lock.Unlock());
  EXPECT_FALSE(lock.IsLocked());
  EXPECT_TRUE(lock.Lock());
}

TEST(Guard, NeedsALock) {
  EXPECT_TRUE(Raised<CInvalidArgException>([] { CSingleLock lock(nullptr); }));
}

}  // namespace
}  // namespace ondrel::test
