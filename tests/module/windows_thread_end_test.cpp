// The end of a thread, of which the system tells the library.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "module/loaded_library.h"
#include "module/recorder/call_recorder.h"

namespace ondrel::test {
namespace {

TEST(ThreadsEnd, IsToldToTheLibrary) {
  const LoadedLibrary library(RecordedLibraryPath());
  ASSERT_TRUE(library.IsLoaded());
  std::thread([] { StartRecording(); }).join();
  std::vector<std::string> names;
  for (const RecordedCall& call : RecordedCalls()) names.push_back(call.name);
  EXPECT_THAT(names, testing::ElementsAre("AfxLockTempMaps", "AfxUnlockTempMaps", "AfxTermThread"));
  EXPECT_EQ(RecordedCalls().back().instance, library.Handle());
}

}  // namespace
}  // namespace ondrel::test
