// Code files that cannot go into an image for reasons that Windows does not have: pipes in folders, drives and networks
// that are out of reach, and the rights of users.
#include <filesystem>

#include <gtest/gtest.h>

#include "bad_code_file.h"
#include "support/posix/process.h"

namespace ondrel::test {
namespace {

TEST(BadCodeFile, APipe) {
  const ProjectFolder folder;
  MakeNamedPipe(folder / "pipe");
  ExpectCodeFileRefused(folder, R"(Name="pipe")", "\"pipe\": it is no regular file; ", "0x80070005");
}

TEST(BadCodeFile, OnADriveThatCannotBeReached) {
  ExpectCodeFileRefused(ProjectFolder(), R"(Path="C:\code\b.js")",
                        "\"C:\\code\\b.js\": the drive C: cannot be reached from this system; ", "0x80070003");
}

TEST(BadCodeFile, InANetworkThatCannotBeReached) {
  ExpectCodeFileRefused(ProjectFolder(), R"(Path="\\server\share\b.js")",
                        "\"\\\\server\\share\\b.js\": the network path cannot be reached from this system; ",
                        "0x80070003");
}

TEST(BadCodeFile, WithoutPermission) {
  if (!CanDropPrivileges()) GTEST_SKIP() << "the test's user cannot run the command as another one";
  const ProjectFolder folder;
  folder.Write("secret.js", "x");
  std::filesystem::permissions(folder / "secret.js", std::filesystem::perms::owner_read);
  std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);  // so that the image could be written
  folder.WriteProject(R"(<Project><FileGroup><File Cookie="1" Name="secret.js"/></FileGroup></Project>)");
  CommandLine commandLine = folder.Command({"compile", kProjectName, "-o", kImageName});
  commandLine.withoutPrivileges = true;
  ExpectFailure(RunCommand(commandLine), "console.xml:1: code file 1, \"secret.js\": access is denied; ", "0x80070005");
  EXPECT_EQ(folder.Listing(), "console.xml\nsecret.js\n");
}

}  // namespace
}  // namespace ondrel::test
