// Edits of projects that change meanwhile, which only these systems show to a test, and of projects behind links and
// permissions that users of Windows seldom have.
#include <sys/stat.h>
#include <filesystem>

#include <gtest/gtest.h>

#include "edit_folder.h"
#include "support/posix/process.h"
#include "support/posix/traced_command.h"

namespace ondrel::test {
namespace {

namespace fs = std::filesystem;

/// Runs an edit that is refused because of what `change` does when `isChosen` says so. Afterwards nothing is in the
/// folder but what was there, and what the change left.
void ExpectRefusedAfter(const EditFolder& folder, const std::vector<std::string>& arguments,
                        const OpeningChoice& isChosen, const std::function<void()>& change, std::string_view complaint,
                        std::string_view status) {
  std::map<std::string, std::string> files;
  const auto result = RunWithChange(folder.Command(arguments), isChosen, [&] {
    change();
    files = folder.Files();
  });
  if (!result) GTEST_SKIP() << "this system lets no test trace a program";
  ExpectFailure(*result, complaint, status);
  EXPECT_TRUE(folder.Files() == files) << folder.Listing();
}

TEST(EditMeanwhile, AFileThatAnotherProgramHasWrittenStaysAsThatLeftIt) {
  const EditFolder folder;
  const std::string text = ReadBytes(folder / kProjectName);
  // Longer, shorter, and as long as before.
  std::string other = text;
  other.replace(other.find("Events"), 6, "events");
  for (const std::string& written : {text + "\n", text.substr(0, 10), other}) {
    folder.WriteProject(text);
    ExpectRefusedAfter(
        folder, {"set", kProjectName, "0", "--name", "x"}, MakesFile, [&] { folder.WriteProject(written); },
        "console.xml: another program has changed the file meanwhile, so it stays as it is now; try again",
        "0x80070021");
    EXPECT_EQ(ReadBytes(folder / kProjectName), written);
  }
}

TEST(EditMeanwhile, AFileThatIsGoneIsNotMadeAgain) {
  const EditFolder folder;
  ExpectRefusedAfter(
      folder, {"remove", kProjectName, "4"}, MakesFile, [&] { fs::remove(folder / kProjectName); },
      "console.xml: there is no such file; ", "0x80070002");
}

TEST(EditMeanwhile, AFileThatIsWrittenAgainWithTheSameBytesIsReplaced) {
  const EditFolder folder;
  const std::string text = ReadBytes(folder / kProjectName);
  const auto result = RunWithChange(folder.Command({"remove", kProjectName, "4"}), MakesFile, [&] {
    fs::remove(folder / kProjectName);
    folder.WriteProject(text);
  });
  if (!result) GTEST_SKIP() << "this system lets no test trace a program";
  ExpectSuccess(*result);
  EXPECT_EQ(folder.Tree(), Lines({"0 Console", "  1 Disks", "    3 Volumes", "  2 Events"}));
}

TEST(EditMeanwhile, ANewProjectDoesNotReplaceAFileThatHasCome) {
  const EditFolder folder;
  fs::remove(folder / kProjectName);
  ExpectRefusedAfter(
      folder, {"new", kProjectName}, MakesFile, [&] { folder.WriteProject("other"); },
      "console.xml: there is something by that name already; ", kAlreadyExistsText);
}

TEST(EditMeanwhile, AProjectThatWouldNotLoadAgainIsNotWritten) {
  const EditFolder folder;
  int readings = 0;
  ExpectRefusedAfter(
      folder, {"remove", kProjectName, "4"},
      [&](const std::string& path, int) { return path.ends_with("disk.ico") && ++readings == 2; },
      [&] { folder.Write("icons/disk.ico", "no icon"); },
      "console.xml: the project would not load again, so it stays as it is: console.xml:", "0x8007000D");
}

TEST(EditOfALink, StaysALinkAndChangesTheFile) {
  const EditFolder folder;
  fs::create_symlink(kProjectName, folder / "link.xml");
  const CommandResult result = folder.Run({"set", "link.xml", "0", "--name", "x"});
  ExpectSuccess(result);
  EXPECT_EQ(fs::read_symlink(folder / "link.xml"), kProjectName);
  EXPECT_EQ(folder.Object("0")["name"], "x");
}

TEST(EditOfALink, AFileIsNamedFromTheProjectsFolderThoughThatHasAnotherName) {
  const EditFolder folder;
  folder.Write("real/console.xml", "<Project/>");
  folder.Write("real/sub/a.js", "a");
  fs::create_directory_symlink("real", folder / "linked");
  const CommandResult added = folder.Run({"add", "code", "linked/console.xml", "real/sub/a.js"});
  ExpectSuccess(added);
  EXPECT_TRUE(added.output.ends_with(": sub\\a.js\n")) << added.output;
  ExpectFailure(folder.Run({"add", "code", "real/console.xml", "linked/sub/a.js"}),
                "real/console.xml: code file \"sub\\a.js\" is in the project already, with the cookie ",
                kAlreadyExistsText);
}

TEST(EditOfALink, AFileIsFoundByWhateverLeadsToIt) {
  const EditFolder folder;
  fs::create_symlink("scripts/b.js", folder / "other.js");
  fs::create_hard_link(folder / "queries/q.xml", folder / "hard.xml");
  folder.ExpectEdit({"set", kProjectName, "1", "--script", "other.js", "--script", "hard.xml"}, "node 1: Disks\n");
  EXPECT_EQ(folder.Object("1")["scripts"], nlohmann::json({"24", "23"}));
}

TEST(EditRights, AreHandedOn) {
  const EditFolder folder;
  ASSERT_EQ(chmod((folder / kProjectName).c_str(), 0640), 0);
  folder.ExpectEdit({"remove", kProjectName, "4"}, "removed node 4: Quotas\n");
  struct stat status = {};
  ASSERT_EQ(stat((folder / kProjectName).c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST(EditRights, AFileThatMayOnlyBeReadIsNotReplaced) {
  if (!CanDropPrivileges()) GTEST_SKIP() << "the test's user cannot run the command as another one";
  const EditFolder folder;
  // Anyone may make files in the folder, and so replace this one.
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  const auto files = folder.Files();
  CommandLine commandLine = folder.Command({"remove", kProjectName, "4"});
  commandLine.withoutPrivileges = true;
  ExpectFailure(RunCommand(commandLine), "console.xml: access is denied; check its permissions", "0x80070005");
  EXPECT_TRUE(folder.Files() == files);
  commandLine.arguments.emplace_back("--dry-run");
  ExpectSuccess(RunCommand(commandLine));
  ASSERT_EQ(chmod((folder / kProjectName).c_str(), 0666), 0);
  commandLine.arguments.pop_back();
  ExpectSuccess(RunCommand(commandLine));
}

TEST(EditRights, AFolderThatTakesNoFilesIsToldAndNothingChanges) {
  if (!CanDropPrivileges()) GTEST_SKIP() << "the test's user cannot run the command as another one";
  const EditFolder folder;
  ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
  ASSERT_EQ(chmod((folder / kProjectName).c_str(), 0666), 0);
  const auto files = folder.Files();
  CommandLine commandLine = folder.Command({"remove", kProjectName, "4"});
  commandLine.withoutPrivileges = true;
  ExpectFailure(RunCommand(commandLine), "console.xml: access is denied; ", "0x80070005");
  EXPECT_TRUE(folder.Files() == files);
}

TEST(EditOfOddFiles, APipeIsNoProjectAndNoCodeFile) {
  const EditFolder folder;
  MakeNamedPipe(folder / "pipe");
  ExpectFailure(folder.Run({"remove", "pipe", "0"}), "pipe: it is no regular file; ", "0x80070005");
  ExpectFailure(folder.Run({"new", "pipe"}), "pipe: there is something by that name already; ", kAlreadyExistsText);
  folder.ExpectRefused({"add", "code", kProjectName, "pipe"}, ": code file \"pipe\": it is no regular file; ",
                       "0x80070005");
}

TEST(EditOfOddFiles, ANameThatIsNoUtf8IsRefused) {
  const EditFolder folder;
  folder.Write("bad\xFF.js", "b");
  folder.ExpectRefused({"add", "code", kProjectName, "bad\xFF.js"},
                       ": the path \"bad\xEF\xBF\xBD.js\" is no UTF-8; write it in UTF-8", kInvalidText);
  folder.ExpectRefused({"set", kProjectName, "0", "--name", "bad\xFF"},
                       ": the name \"bad\xEF\xBF\xBD\" is no UTF-8; write it in UTF-8", kInvalidText);
  folder.Write("bell\x07.js", "b");
  folder.ExpectRefused({"add", "code", kProjectName, "bell\x07.js"},
                       ": the path \"bell\\x07.js\" has the character U+0007, which a project file cannot hold; ",
                       kInvalidText);
}

TEST(EditOfOddFiles, AFullDiskLeavesTheProject) {
  const EditFolder folder;
  const auto files = folder.Files();
  CommandLine commandLine = folder.Command({"remove", kProjectName, "4"});
  commandLine.largestFile = 100;
  ExpectFailure(RunCommand(commandLine), "console.xml: the disk is full, ", "0x80070070");
  EXPECT_TRUE(folder.Files() == files);
}

}  // namespace
}  // namespace ondrel::test
