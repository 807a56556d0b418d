// Folders that cannot be written to, as only systems with links, rights and limits of that kind have them; and more
// files than are written in a test's time under Wine.
#include <filesystem>

#include <gtest/gtest.h>

#include "project_folder.h"
#include "support/posix/process.h"

namespace ondrel::test {
namespace {

void WriteLargeImage(const ProjectFolder& folder) {
  WriteLargeDefinition(folder);
  ExpectSuccess(folder.Compile());
}

constexpr const char* kLargeListing = "a.js\nconsole.img\nconsole.xml\n";

TEST(PosixExtract, AFolderThatMayNotBeWrittenTo) {
  if (!CanDropPrivileges()) GTEST_SKIP() << "the test's user cannot run the command as another one";
  const ProjectFolder folder;
  WriteLargeImage(folder);
  CommandLine commandLine = folder.Command({"extract", kImageName, "-d", "out"});
  commandLine.withoutPrivileges = true;
  ExpectFailure(RunCommand(commandLine), "out: access is denied; ", "0x80070005");
  EXPECT_EQ(folder.Listing(), kLargeListing);
}

TEST(PosixExtract, AFailureWhileItIsFilledLeavesNothing) {
  const ProjectFolder folder;
  WriteLargeImage(folder);
  CommandLine commandLine = folder.Command({"extract", kImageName, "-d", "out"});
  commandLine.largestFile = kLargeCodeFile / 2;
  ExpectFailure(RunCommand(commandLine), "out: the disk is full, or a limit of size is reached; ", "0x80070070");
  EXPECT_EQ(folder.Listing(), kLargeListing);
}

TEST(PosixExtract, ALinkIsNotFollowed) {
  const ProjectFolder folder;
  WriteLargeImage(folder);
  std::filesystem::create_directory(folder / "real");
  std::filesystem::create_directory_symlink("real", folder / "link");
  std::filesystem::create_symlink("nowhere", folder / "dangling");
  for (const char* const link : {"link", "dangling"}) {
    ExpectFailure(folder.Run({"extract", kImageName, "-d", link}), std::string(link) + ": it is a file or a link; ",
                  "0x80070050");
  }
  EXPECT_EQ(folder.Listing(), "a.js\nconsole.img\nconsole.xml\ndangling\nlink\nreal\n");
}

TEST(PosixExtract, TheEmptyFolderThatIsReplacedHandsItsPermissionsOn) {
  const ProjectFolder folder;
  WriteLargeImage(folder);
  std::filesystem::create_directory(folder / "out");
  std::filesystem::permissions(folder / "out", std::filesystem::perms::owner_all);
  ExpectSuccess(folder.Run({"extract", kImageName, "-d", "out"}));
  EXPECT_EQ(std::filesystem::status(folder / "out").permissions(), std::filesystem::perms::owner_all);
}

TEST(PosixExtract, NumbersAreAsLongAsThatOfTheLastCodeFile) {
  constexpr int kFiles = 10'000;
  const ProjectFolder folder;
  std::string text = "<Project><FileGroup>";
  for (int file = 1; file <= kFiles; ++file) {
    const std::string name = std::to_string(file) + ".js";
    text += "<File Cookie=\"" + std::to_string(file) + "\" Name=\"" + name + "\"/>";
    folder.Write(name, "");
  }
  folder.WriteProject(text + "</FileGroup></Project>");
  ExpectSuccess(folder.Compile());
  ExpectSuccess(folder.Run({"extract", kImageName, "-d", "out"}));
  ExpectSuccess(folder.Run({"compile", "out/project.xml", "-o", "again.img"}));
  EXPECT_TRUE(ReadBytes(folder / kImageName) == ReadBytes(folder / "again.img"));
  EXPECT_TRUE(std::filesystem::exists(folder / "out/code/00001-file-1.txt"));
  EXPECT_TRUE(std::filesystem::exists(folder / "out/code/10000-file-9999.txt"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "out/code"), {}), kFiles);
}

TEST(PosixExtract, ALineFeedInTheNameDoesNotBreakTheLine) {
  const ProjectFolder folder;
  WriteLargeImage(folder);
  const CommandResult result = folder.Run({"extract", kImageName, "-d", "a\n\x1B[31m"});
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "a\\n\\x1B[31m: 0 nodes, 0 dialogs, 0 icons, 1 code file; project.xml compiles to the same image\n");
  EXPECT_TRUE(std::filesystem::exists(folder / "a\n\x1B[31m/project.xml"));
}

}  // namespace
}  // namespace ondrel::test
