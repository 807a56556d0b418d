// Icons as only this system's own reader scales them, and what only systems with links, pipes, rights and limits of
// that kind have.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "icon_views.h"
#include "project_folder.h"
#include "support/posix/process.h"

namespace ondrel::test {
namespace {

TEST(Icon, AScaledImageIsPictured) {
  const IconPicture picture = PatternPicture(48, 20, 32);
  const ProjectFolder folder;
  folder.Write("disk.ico", IconFileBytes({picture}));
  ExpectSuccess(folder.Run({"icon", "disk.ico", "-o", "disk.png"}));
  const std::string file = ReadBytes(folder / "disk.png");
  EXPECT_TRUE(SamePicture(LargeView(file), IconView(picture, kLargeSize)));
  EXPECT_TRUE(SamePicture(SmallView(file), IconView(picture, kSmallSize)));
}

TEST(Icon, ALineFeedInANameDoesNotBreakTheLine) {
  const ProjectFolder folder;
  folder.Write("a\n\x1B[31m.ico", SmallIconFile());
  const CommandResult result = folder.Run({"icon", "a\n\x1B[31m.ico", "-o", "a\n.png"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::StartsWith("a\\n\\x1B[31m.ico: icon file, 2 images\n"));
  EXPECT_THAT(result.output, testing::EndsWith("\na\\n.png: 96 x 32 pixels\n"));
  EXPECT_TRUE(std::filesystem::exists(folder / "a\n.png"));
}

TEST(BadIconFile, APipeThatNobodyWritesTo) {
  const ProjectFolder folder;
  MakeNamedPipe(folder / "pipe");
  ExpectFailure(folder.Run({"icon", "pipe"}), "pipe: it is no regular file; ", "0x80070005");
}

TEST(BadIconFile, ADriveThatCannotBeReached) {
  ExpectFailure(ProjectFolder().Run({"icon", "Q:\\disk.ico"}),
                "Q:\\disk.ico: the drive Q: cannot be reached from this system; ", "0x80070003");
}

TEST(BadIconFile, AFileThatMayNotBeRead) {
  if (!CanDropPrivileges()) GTEST_SKIP() << "the test's user cannot run the command as another one";
  const ProjectFolder folder;
  std::filesystem::permissions(folder.Write("disk.ico", SmallIconFile()), std::filesystem::perms::owner_read);
  CommandLine commandLine = folder.Command({"icon", "disk.ico"});
  commandLine.withoutPrivileges = true;
  ExpectFailure(RunCommand(commandLine), "disk.ico: access is denied; ", "0x80070005");
}

/// The command in an address space of so many KiB. Its exit code is 99 where there is no room for the program itself.
CommandResult RunIn(const ProjectFolder& folder, int kibibytes, const std::string& file) {
  CommandLine commandLine =
      folder.Command({"-c", "ulimit -v \"$1\" && \"$0\" icon \"$2\"; code=$?; [ $code -lt 126 ] || code=99; exit $code",
                      ONDREL_COMMAND, std::to_string(kibibytes), file});
  commandLine.program = "/bin/sh";
  return RunCommand(commandLine);
}

TEST(BadIconFile, AFileThatMemoryHasNoRoomFor) {
  if (kSanitized) GTEST_SKIP() << "the sanitizers need an address space of their own";
  const ProjectFolder folder;
  folder.Write("disk.ico", SmallIconFile());
  // A file of the most bytes that an icon file may have; it could be read as well.
  // NOLINTNEXTLINE(bugprone-string-constructor): so many are meant
  folder.Write("long.ico", SmallIconFile() + std::string(31'000'000, '\0'));
  ExpectSuccess(folder.Run({"icon", "long.ico"}));

  constexpr int kStep = 4 * 1024;
  constexpr int kMost = 4 * 1024 * 1024;
  int enough = kStep;
  while (enough < kMost && RunIn(folder, enough, "disk.ico").exitCode != 0) enough += kStep;
  ASSERT_LT(enough, kMost);
  ExpectFailure(RunIn(folder, enough + kStep, "long.ico"), "long.ico: memory is short; ", "0x8007000E");
}

TEST(PosixBadIconPicture, OverALinkToItsFile) {
  const ProjectFolder folder;
  folder.Write("disk.ico", SmallIconFile());
  std::filesystem::create_symlink("disk.ico", folder / "disk.png");
  ExpectFailure(folder.Run({"icon", "disk.ico", "-o", "disk.png"}),
                "disk.png: the picture would overwrite the file of the icon; ", "0x80070057");
  ExpectFailure(folder.Run({"icon", "disk.png", "-o", "disk.ico"}),
                "disk.ico: the picture would overwrite the file of the icon; ", "0x80070057");
  EXPECT_EQ(ReadBytes(folder / "disk.ico"), SmallIconFile());
}

TEST(PosixBadIconPicture, OverADeviceOrAPipe) {
  const ProjectFolder folder;
  folder.Write("disk.ico", SmallIconFile());
  MakeNamedPipe(folder / "pipe");
  ExpectFailure(folder.Run({"icon", "disk.ico", "-o", "/dev/null"}), "/dev/null: it is no regular file; ",
                "0x80070005");
  ExpectFailure(folder.Run({"icon", "disk.ico", "-o", "pipe"}), "pipe: it is no regular file; ", "0x80070005");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(PosixBadIconPicture, ALimitOfSizeLeavesTheOldPicture) {
  const ProjectFolder folder;
  folder.Write("disk.ico", IconFileBytes({PatternPicture(32, 32, 32)}));
  folder.Write("disk.png", "old picture");
  CommandLine commandLine = folder.Command({"icon", "disk.ico", "-o", "disk.png"});
  commandLine.largestFile = 100;
  ExpectFailure(RunCommand(commandLine), "disk.png: the disk is full, or a limit of size is reached; ", "0x80070070");
  EXPECT_EQ(ReadBytes(folder / "disk.png"), "old picture");
  EXPECT_EQ(folder.Listing(), "disk.ico\ndisk.png\n");
}

}  // namespace
}  // namespace ondrel::test
