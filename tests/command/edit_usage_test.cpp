// Wrong usage of the commands that change a project, and their help.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "edit_folder.h"

namespace ondrel::test {
namespace {

using Arguments = std::vector<std::string>;

class WrongEdit : public testing::TestWithParam<Arguments> {};

TEST_P(WrongEdit, IsOneLineAndAHintWithExitCode2) {
  const EditFolder folder;
  const auto files = folder.Files();
  const CommandResult result = folder.Run(GetParam());
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, testing::StartsWith("ondrel: "));
  EXPECT_THAT(result.errors, testing::HasSubstr("\nTry 'ondrel"));
  EXPECT_THAT(result.errors, testing::EndsWith("--help'.\n"));
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 2) << result.errors;
  EXPECT_TRUE(folder.Files() == files);
}

INSTANTIATE_TEST_SUITE_P(
    Edit, WrongEdit,
    testing::Values(
        Arguments{"new"}, Arguments{"new", "a", "b"}, Arguments{"new", "a", "--type", "list"},
        Arguments{"new", "a", "--no-scripts"}, Arguments{"new", "a", "--lossy"}, Arguments{"add"},
        Arguments{"add", "paint"}, Arguments{"add", "node"}, Arguments{"add", "node", kProjectName},
        Arguments{"add", "node", kProjectName, "x", "y"}, Arguments{"add", "dialog", kProjectName},
        Arguments{"add", "dialog", kProjectName, "x", "--parent", "0"}, Arguments{"add", "icon"},
        Arguments{"add", "icon", kProjectName}, Arguments{"add", "code", kProjectName}, Arguments{"set", kProjectName},
        Arguments{"set", kProjectName, "0"}, Arguments{"set", kProjectName, "0", "--dry-run"},
        Arguments{"set", kProjectName, "0", "--type", "tree\n"}, Arguments{"set", kProjectName, "0", "--type", ""},
        Arguments{"set", kProjectName, "0", "--script", "22", "--no-scripts"},
        Arguments{"set", kProjectName, "0", "--child-query", "Q=23", "--no-child-queries"},
        Arguments{"set", kProjectName, "0", "--render-query", "Q=23", "--no-render-queries"},
        Arguments{"set", kProjectName, "0", "--child-query", "23"},
        Arguments{"set", kProjectName, "0", "--child-query", "=23"},
        Arguments{"set", kProjectName, "0", "--render-query", "Q="}, Arguments{"set", kProjectName, "0", "--script"},
        Arguments{"set", kProjectName, "0", "--script", "22", "24"}, Arguments{"move-down", kProjectName},
        Arguments{"move-down", kProjectName, "0", "1"}, Arguments{"remove"}, Arguments{"remove", kProjectName},
        Arguments{"remove", kProjectName, "1", "2"}));

TEST(EditUsage, AHintNamesTheWholeCommand) {
  const CommandResult result = EditFolder().Run({"add", "node", kProjectName});
  EXPECT_THAT(result.errors, testing::EndsWith("\nTry 'ondrel add node --help'.\n"));
}

TEST(EditUsage, HelpNamesEachCommandAndItsOptions) {
  const ProjectFolder folder;
  const std::pair<Arguments, std::vector<std::string>> helps[] = {
      {{"--help"}, {"Edit:", "new ", "add ", "set ", "move-down ", "remove "}},
      {{"new", "--help"}, {"PROJECT", "--name NAME", "--type list|html|dialog", "--dry-run", "Example", "Exit codes"}},
      {{"add", "--help"}, {"node ", "dialog ", "icon ", "code ", "Example", "Exit codes"}},
      {{"add", "node", "--help"}, {"ondrel add node", "NAME", "--parent NODE", "--child-query TAG=FILE", "Example"}},
      {{"add", "dialog", "--help"}, {"ondrel add dialog", "--style-sheet FILE", "Example"}},
      {{"add", "icon", "--help"}, {"FILE", "--dry-run", "--lossy", "--raw-text", "Example"}},
      {{"add", "code", "--help"}, {"FILE", "Example"}},
      {{"set", "--help"}, {"NODE", "--script FILE", "--no-scripts", "--render-query TAG=FILE", "none", "Example"}},
      {{"move-down", "--help"}, {"NODE", "cookie", "Example"}},
      {{"remove", "--help"}, {"NODE", "--recursive", "Example"}}};
  for (const auto& [arguments, parts] : helps) {
    const CommandResult result = folder.Run(arguments);
    ExpectSuccess(result);
    for (const std::string& part : parts) EXPECT_THAT(result.output, testing::HasSubstr(part));
  }
}

TEST(EditUsage, OnlyProjectsAreEdited) {
  const EditFolder folder;
  ExpectSuccess(folder.Compile());
  const auto files = folder.Files();
  const std::vector<Arguments> commands = {{"add", "node", kImageName, "n"},
                                           {"add", "dialog", kImageName, "d"},
                                           {"add", "icon", kImageName, "a.ico"},
                                           {"add", "code", kImageName, "a.js"},
                                           {"set", kImageName, "0", "--name", "x"},
                                           {"move-down", kImageName, "0"},
                                           {"remove", kImageName, "0"}};
  for (const Arguments& arguments : commands) {
    ExpectFailure(folder.Run(arguments), "console.img: it is no project file, ", "0x8007000D");
  }
  for (Arguments arguments : commands) {
    std::replace(arguments.begin(), arguments.end(), std::string(kImageName), std::string("missing.xml"));
    ExpectFailure(folder.Run(arguments), "missing.xml: there is no such file; ", "0x80070002");
  }
  EXPECT_TRUE(folder.Files() == files);
}

TEST(EditUsage, AProjectThatDoesNotLoadIsExplainedAsElsewhere) {
  const EditFolder folder;
  folder.WriteProject("<Project>\n<NodeGroup>\n<Node/></NodeGroup></Project>");
  folder.ExpectRefused({"remove", kProjectName, "0"}, ":3: a node has no Cookie attribute; ", "0x8007000D");
}

}  // namespace
}  // namespace ondrel::test
