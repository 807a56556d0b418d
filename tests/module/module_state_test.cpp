// Module states: each thread has its own, the program's at first.
#include <gtest/gtest.h>

#include <thread>

#include <ondrel/platform/framework/module_state.h>

namespace ondrel::test {
namespace {

TEST(ModuleState, OfAThreadIsTheProgramsAtFirst) {
  AFX_MODULE_STATE* ofMain = AfxGetModuleState();
  AFX_MODULE_STATE* ofOther = nullptr;
  AFX_MODULE_STATE state;
  const AFX_MAINTAIN_STATE2 maintained(&state);
  std::thread([&] { ofOther = AfxGetModuleState(); }).join();
  EXPECT_NE(ofMain, nullptr);
  EXPECT_EQ(ofOther, ofMain);
}

TEST(ModuleState, IsSetForTheCallingThreadAndThePreviousOneIsGiven) {
  AFX_MODULE_STATE* const programs = AfxGetModuleState();
  AFX_MODULE_STATE first;
  AFX_MODULE_STATE second;
  EXPECT_EQ(AfxSetModuleState(&first), nullptr);
  EXPECT_EQ(AfxGetModuleState(), &first);
  EXPECT_EQ(AfxSetModuleState(&second), &first);
  EXPECT_EQ(AfxGetModuleState(), &second);
  std::thread([&] {
    EXPECT_EQ(AfxSetModuleState(&first), nullptr);
    EXPECT_EQ(AfxGetModuleState(), &first);
  }).join();
  EXPECT_EQ(AfxSetModuleState(nullptr), &second);
  EXPECT_EQ(AfxGetModuleState(), programs);
}

TEST(ModuleState, IsMaintainedForAScope) {
  AFX_MODULE_STATE* const programs = AfxGetModuleState();
  AFX_MODULE_STATE outer;
  AFX_MODULE_STATE inner;
  {
    const AFX_MAINTAIN_STATE2 maintainedOuter(&outer);
    EXPECT_EQ(AfxGetModuleState(), &outer);
    {
      const AFX_MAINTAIN_STATE2 maintainedInner(&inner);
      EXPECT_EQ(AfxGetModuleState(), &inner);
    }
    EXPECT_EQ(AfxGetModuleState(), &outer);
  }
  EXPECT_EQ(AfxGetModuleState(), programs);
}

}  // namespace
}  // namespace ondrel::test
