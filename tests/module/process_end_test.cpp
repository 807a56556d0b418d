// The end of a process in which the library is still loaded.
#include <gtest/gtest.h>

#include <cstdlib>

#include "module/loaded_library.h"
#include "module/recorder/call_recorder.h"

namespace ondrel::test {
namespace {

TEST(UnloadDeathTest, IsDoneAtTheEndOfTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto exitWithLibrary = [] {
    const HINSTANCE library = AfxLoadLibrary(RecordedLibraryPath());
    PrintCallsAtProcessEnd();
    StartRecording();
    std::exit(library != nullptr ? 0 : 1);
  };
  EXPECT_EXIT(exitWithLibrary(), testing::ExitedWithCode(0),
              "^ExitInstance\nAfxLockTempMaps\nAfxUnlockTempMaps\nAfxWinTerm\nAfxTermExtensionModule\\(all\\)\n"
              "SysFreeString\\(Nodes\\)\nSysFreeString\\(Node\\)\n$");
}

}  // namespace
}  // namespace ondrel::test
