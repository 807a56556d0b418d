// Places that an image cannot be written to, as only systems with devices, pipes, rights and limits of that kind have
// them.
#include <filesystem>

#include <gtest/gtest.h>

#include "project_folder.h"
#include "support/posix/process.h"

namespace ondrel::test {
namespace {

TEST(BadOutput, ADeviceIsNotReplaced) {
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", "/dev/null"}), "/dev/null: it is no regular file; ",
                "0x80070005");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(BadOutput, APipeIsNotWaitedFor) {
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  MakeNamedPipe(folder / "pipe");
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", "pipe"}), "pipe: it is no regular file; ", "0x80070005");
}

TEST(BadOutput, AFolderThatMayNotBeWrittenTo) {
  if (!CanDropPrivileges()) GTEST_SKIP() << "the test's user cannot run the command as another one";
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  CommandLine commandLine = folder.Command({"compile", kProjectName, "-o", kImageName});
  commandLine.withoutPrivileges = true;
  ExpectFailure(RunCommand(commandLine), "console.img: access is denied; ", "0x80070005");
  EXPECT_EQ(folder.Listing(), "a.js\nconsole.xml\n");
}

TEST(BadOutput, ALimitOfSizeLeavesTheOldImage) {
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  folder.Write(kImageName, "old image");
  CommandLine commandLine = folder.Command({"compile", kProjectName, "-o", kImageName});
  commandLine.largestFile = kLargeCodeFile / 2;
  ExpectFailure(RunCommand(commandLine), "console.img: the disk is full, or a limit of size is reached; ",
                "0x80070070");
  EXPECT_EQ(ReadBytes(folder / kImageName), "old image");
  EXPECT_EQ(folder.Listing(), "a.js\nconsole.img\nconsole.xml\n");
}

TEST(BadOutput, AFullDiskLeavesTheOldImage) {
  CommandLine attempt;
  attempt.program = "/usr/bin/unshare";
  attempt.arguments = {"-rm", "/bin/true"};
  if (!std::filesystem::exists(attempt.program) || RunCommand(attempt).exitCode != 0) {
    GTEST_SKIP() << "this system lets no test mount a disk of its own";
  }
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  std::filesystem::create_directory(folder / "disk");
  // The disk is seen by this shell and the command alone.
  CommandLine commandLine = folder.Command({"-rm", "/bin/sh", "-c",
                                            // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): one argument
                                            "mount -t tmpfs -o size=128k tmpfs disk && echo old > disk/console.img && "
                                            "{ \"$0\" compile console.xml -o disk/console.img; code=$?; } && "
                                            "ls -A disk >&2 && cat disk/console.img >&2 && exit $code",
                                            ONDREL_COMMAND});
  commandLine.program = attempt.program;
  const CommandResult result = RunCommand(commandLine);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors,
            "ondrel: disk/console.img: the disk is full, or a limit of size is reached; make room (0x80070070)\n"
            "console.img\n"
            "old\n");
}

}  // namespace
}  // namespace ondrel::test
