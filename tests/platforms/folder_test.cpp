// The folder of the Windows build by itself: complete, and refused in an orderly way when it is not.
#include <gtest/gtest.h>

#include "platforms/two_platforms.h"

namespace ondrel::test {
namespace {

constexpr const char* kLibraries[] = {"Ondrel.dll",      "Vellum.dll",         "HostFramework.dll",
                                      "libstdc++-6.dll", "libgcc_s_seh-1.dll", "libwinpthread-1.dll"};

// The command with its libraries, but for one of them, somewhere else.
void CopyFolder(const TemporaryFolder& folder, const std::string& missing) {
  std::filesystem::copy_file(Platform::WindowsPrograms() / "ondrel.exe", folder / "ondrel.exe");
  for (const std::string library : kLibraries) {
    if (library != missing) std::filesystem::copy_file(Platform::WindowsPrograms() / library, folder / library);
  }
}

TEST(WindowsFolder, HasEverythingThatTheCommandNeeds) {
  const TemporaryFolder folder;
  CopyFolder(folder, "");
  const CommandResult result = Platform::WindowsIn(folder.Path()).Run("ondrel", {"--version"}, folder.Path());
  EXPECT_EQ(result.exitCode, 0) << Told(result);
  EXPECT_TRUE(result.output.starts_with("ondrel ")) << Told(result);
}

TEST(WindowsFolder, WithoutALibraryTheCommandDoesNotStart) {
  // STATUS_DLL_NOT_FOUND, of which a process here hands on the lowest byte.
  constexpr int kLibraryNotFound = 0xC0000135 & 0xFF;
  for (const std::string missing : {"Ondrel.dll", "Vellum.dll", "HostFramework.dll"}) {
    const TemporaryFolder folder;
    CopyFolder(folder, missing);
    const CommandResult result = Platform::WindowsIn(folder.Path()).Run("ondrel", {"--version"}, folder.Path());
    EXPECT_EQ(result.exitCode, kLibraryNotFound) << missing << ": " << Told(result);
    EXPECT_EQ(result.output, "") << missing;
    EXPECT_EQ(result.errors, "") << missing;
  }
}

}  // namespace
}  // namespace ondrel::test
