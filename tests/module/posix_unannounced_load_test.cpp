// Loads of the library that the framework has no part in.
#include <gtest/gtest.h>

#include <vector>

#include "module/loaded_library.h"
#include "module/recorder/call_recorder.h"

#include <ondrel/platform/os/library.h>

namespace ondrel::test {
namespace {

TEST(RefusedLoadDeathTest, EndsTheProcessWithOneLineWhenItIsNotTheFrameworksLoad) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const FailingCall failing("SysAllocString(Nodes)");
  EXPECT_EXIT(platform::LoadOsLibrary(RecordedLibraryPath()), testing::ExitedWithCode(127),
              "^[^\n]*recorded_module[^\n]*: cannot start, status 0x8007000E\n$");
}

TEST(Load, ThatIsNotTheFrameworksStartsAndEndsTheLibraryToo) {
  const HMODULE library = platform::LoadOsLibrary(RecordedLibraryPath());
  ASSERT_NE(library, nullptr);
  EXPECT_EQ(platform::ExtensionModules(), std::vector<HMODULE>{library});
  EXPECT_TRUE(platform::FreeOsLibrary(library));
  EXPECT_EQ(platform::ExtensionModules(), std::vector<HMODULE>());
}

}  // namespace
}  // namespace ondrel::test
