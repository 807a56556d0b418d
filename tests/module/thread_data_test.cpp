// What the framework keeps for each thread: locks of the temporary handle maps, and the end of it.
#include <gtest/gtest.h>

#include <thread>

#include <ondrel/platform/framework/module_state.h>
#include <ondrel/platform/framework/thread_data.h>

namespace ondrel::test {
namespace {

/// Runs `work` on a thread of its own, so that it finds nothing of other tests and leaves nothing.
template <class Work>
void OnNewThread(Work work) {
  std::thread(work).join();
}

TEST(TempMaps, AreLockedAsOftenAsTheyWereLocked) {
  OnNewThread([] {
    AfxLockTempMaps();
    AfxLockTempMaps();
    AfxLockTempMaps();
    EXPECT_TRUE(AfxUnlockTempMaps());
    EXPECT_TRUE(AfxUnlockTempMaps());
    EXPECT_FALSE(AfxUnlockTempMaps());
  });
}

TEST(TempMaps, AreNotLockedLessThanNotAtAll) {
  OnNewThread([] {
    EXPECT_FALSE(AfxUnlockTempMaps());
    EXPECT_FALSE(AfxUnlockTempMaps());
    AfxLockTempMaps();
    AfxLockTempMaps();
    EXPECT_TRUE(AfxUnlockTempMaps());
    EXPECT_FALSE(AfxUnlockTempMaps());
  });
}

TEST(TempMaps, AreLockedByEachThreadForItself) {
  OnNewThread([] {
    AfxLockTempMaps();
    AfxLockTempMaps();
    OnNewThread([] { EXPECT_FALSE(AfxUnlockTempMaps()); });
    EXPECT_TRUE(AfxUnlockTempMaps());
  });
}

TEST(ThreadEnd, UndoesEveryLockOfTheThread) {
  OnNewThread([] {
    AfxLockTempMaps();
    AfxLockTempMaps();
    AfxTermThread();
    AfxLockTempMaps();
    EXPECT_FALSE(AfxUnlockTempMaps());
  });
}

TEST(ThreadEnd, LeavesTheModuleStateOfTheModuleThatIsNamed) {
  OnNewThread([] {
    AFX_MODULE_STATE state;
    AFX_MODULE_STATE other;
    state.m_hCurrentInstanceHandle = reinterpret_cast<HINSTANCE>(&state);
    other.m_hCurrentInstanceHandle = reinterpret_cast<HINSTANCE>(&other);
    AfxSetModuleState(&state);
    AfxTermThread(other.m_hCurrentInstanceHandle);
    EXPECT_EQ(AfxGetModuleState(), &state);
    AfxTermThread(state.m_hCurrentInstanceHandle);
    EXPECT_EQ(AfxSetModuleState(nullptr), nullptr);
  });
}

TEST(ThreadEnd, LeavesEveryModuleStateWhenNoModuleIsNamed) {
  OnNewThread([] {
    AFX_MODULE_STATE state;
    state.m_hCurrentInstanceHandle = reinterpret_cast<HINSTANCE>(&state);
    AfxSetModuleState(&state);
    AfxTermThread();
    EXPECT_EQ(AfxSetModuleState(nullptr), nullptr);
  });
}

}  // namespace
}  // namespace ondrel::test
