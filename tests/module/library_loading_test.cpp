// Loading and unloading the library, as a host does it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

#include "module/loaded_library.h"

#include <ondrel/platform/framework/extension_module.h>
#include <ondrel/platform/framework/thread_data.h>

namespace ondrel::test {
namespace {

using platform::ExtensionModules;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::NotNull;

TEST(Library, IsInTheChainWhileItIsLoaded) {
  EXPECT_THAT(ExtensionModules(), IsEmpty());
  LoadedLibrary library(LibraryPath());
  ASSERT_TRUE(library.IsLoaded()) << "status " << LastStatus();
  EXPECT_THAT(ExtensionModules(), ElementsAre(library.Handle()));
  EXPECT_TRUE(library.Free());
  EXPECT_THAT(ExtensionModules(), IsEmpty());
}

TEST(Library, StartsOnceHoweverOftenItIsLoaded) {
  LoadedLibrary first(LibraryPath());
  LoadedLibrary second(LibraryPath());
  ASSERT_TRUE(first.IsLoaded());
  EXPECT_EQ(second.Handle(), first.Handle());
  const HINSTANCE handle = first.Handle();
  EXPECT_THAT(ExtensionModules(), ElementsAre(handle));
  EXPECT_TRUE(first.Free());
  EXPECT_THAT(ExtensionModules(), ElementsAre(handle));
  EXPECT_TRUE(second.Free());
  EXPECT_THAT(ExtensionModules(), IsEmpty());
}

TEST(Library, IsLoadedAndUnloadedAgainAndAgain) {
  for (int round = 0; round < 200; ++round) {
    LoadedLibrary library(LibraryPath());
    ASSERT_TRUE(library.IsLoaded()) << "in round " << round << ", status " << LastStatus();
    ASSERT_THAT(ExtensionModules(), ElementsAre(library.Handle())) << "in round " << round;
    ASSERT_TRUE(library.Free()) << "in round " << round;
    ASSERT_THAT(ExtensionModules(), IsEmpty()) << "in round " << round;
  }
}

TEST(Library, IsLoadedAndUnloadedByThreadsAtOnce) {
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([] {
      AFX_MODULE_STATE state;
      const AFX_MAINTAIN_STATE2 maintained(&state);
      for (int round = 0; round < 200; ++round) {
        LoadedLibrary library(LibraryPath());
        ASSERT_TRUE(library.IsLoaded()) << "in round " << round << ", status " << LastStatus();
        const std::vector<HMODULE> modules = ExtensionModules();
        ASSERT_EQ(std::count(modules.begin(), modules.end(), library.Handle()), 1) << "in round " << round;
        ASSERT_EQ(AfxGetModuleState(), &state) << "in round " << round;
        ASSERT_TRUE(library.Free()) << "in round " << round;
        ASSERT_EQ(AfxGetModuleState(), &state) << "in round " << round;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(ExtensionModules(), IsEmpty());
}

TEST(Library, LeavesTheHostsThreadAsItWas) {
  std::thread([] {
    AFX_MODULE_STATE state;
    AfxSetModuleState(&state);
    AfxLockTempMaps();
    AfxLockTempMaps();
    LoadedLibrary library(LibraryPath());
    ASSERT_TRUE(library.IsLoaded());
    EXPECT_EQ(AfxGetModuleState(), &state);
    EXPECT_TRUE(library.Free());
    EXPECT_EQ(AfxSetModuleState(nullptr), &state);
    EXPECT_EQ(state.m_pCurrentWinApp, nullptr);
    EXPECT_EQ(state.m_hCurrentInstanceHandle, nullptr);
    EXPECT_TRUE(AfxUnlockTempMaps());
    EXPECT_FALSE(AfxUnlockTempMaps());
  }).join();
}

TEST(Library, LeavesAThreadWithoutAModuleStateWithoutOne) {
  LoadedLibrary library(LibraryPath());
  ASSERT_TRUE(library.IsLoaded());
  EXPECT_EQ(AfxSetModuleState(nullptr), nullptr);
  EXPECT_TRUE(library.Free());
  EXPECT_EQ(AfxSetModuleState(nullptr), nullptr);
}

TEST(Library, IsNotInTheChainWithoutTheLoad) {
  const LoadedLibrary other(RecordedLibraryPath());
  LoadedLibrary library(LibraryPath());
  ASSERT_TRUE(other.IsLoaded());
  ASSERT_TRUE(library.IsLoaded());
  const HINSTANCE handle = library.Handle();
  EXPECT_THAT(ExtensionModules(), ElementsAre(handle, other.Handle()));
  EXPECT_TRUE(library.Free());
  EXPECT_THAT(ExtensionModules(), Not(Contains(handle)));
  EXPECT_THAT(ExtensionModules(), ElementsAre(other.Handle()));
}

TEST(Library, IsFoundWithEitherSeparator) {
  CString backslashes = LibraryPath();
  CString slashes = LibraryPath();
  backslashes.Replace('/', '\\');
  slashes.Replace('\\', '/');
  const LoadedLibrary first(backslashes);
  const LoadedLibrary second(slashes);
  EXPECT_THAT(first.Handle(), NotNull());
  EXPECT_EQ(second.Handle(), first.Handle());
}

TEST(LoadingAFile, ThatIsMissingTellsSo) {
  EXPECT_EQ(AfxLoadLibrary(LibraryPath() + _T(".missing")), nullptr);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
}

TEST(LoadingAFile, ThatIsNoLibraryTellsSo) {
  EXPECT_EQ(AfxLoadLibrary(platform::PathFromUtf8(ONDREL_SOURCE_DIR "/README.md")), nullptr);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_BAD_EXE_FORMAT));
}

TEST(LoadingAFile, WithoutAPathIsRefused) {
  EXPECT_EQ(AfxLoadLibrary(nullptr), nullptr);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST(FreeingALibrary, ThatIsNoneIsRefused) { EXPECT_FALSE(AfxFreeLibrary(nullptr)); }

}  // namespace
}  // namespace ondrel::test
