// Files that are no definition, with what Windows does not have: pipes in folders, drives that are out of reach, and
// the rights of users.
#include <filesystem>

#include <gtest/gtest.h>

#include "bad_file.h"
#include "support/posix/process.h"

namespace ondrel::test {
namespace {

TEST(BadFile, ADriveThatCannotBeReached) {
  ExpectAllFail(ProjectFolder(), "Q:\\console.xml",
                "Q:\\console.xml: the drive Q: cannot be reached from this system; ", "0x80070003");
}

TEST(BadFile, APipeThatNobodyWritesTo) {
  const ProjectFolder folder;
  MakeNamedPipe(folder / "pipe");
  ExpectAllFail(folder, "pipe", "pipe: it is no regular file; ", "0x80070005");
}

TEST(BadFile, AFileThatMayNotBeRead) {
  if (!CanDropPrivileges()) GTEST_SKIP() << "the test's user cannot run the command as another one";
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  std::filesystem::permissions(folder / kProjectName, std::filesystem::perms::owner_read);
  for (const auto& arguments : {std::vector<std::string>{"show", kProjectName},
                                std::vector<std::string>{"compile", kProjectName, "-o", kImageName}}) {
    CommandLine commandLine = folder.Command(arguments);
    commandLine.withoutPrivileges = true;
    ExpectFailure(RunCommand(commandLine), "console.xml: access is denied; ", "0x80070005");
  }
}

TEST(BadFile, APipeIsNotOpenedAsAnExternalEntity) {
  const ProjectFolder folder;
  MakeNamedPipe(folder / "pipe");  // opening it would wait for ever
  folder.WriteProject(ExternalEntityProject(folder / "pipe"));
  ExpectAllFail(folder, kProjectName, "console.xml:", "0x8007000D");
  folder.WriteProject(ExternalSubsetProject(folder / "pipe"));
  ExpectAllFail(folder, kProjectName, "console.xml:1: ", "0x8007000D");
}

}  // namespace
}  // namespace ondrel::test
