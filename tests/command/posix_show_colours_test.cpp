// What `ondrel show` prints on a terminal, which on other systems no program can lend to a test.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;
using testing::Not;

/// What the command prints in a folder when its output is a terminal.
std::string ShownOnTerminal(const ProjectFolder& folder, std::map<std::string, std::string> environment) {
  environment.try_emplace("TERM", "xterm");
  environment.try_emplace("NO_COLOR", "");
  CommandLine commandLine;
  commandLine.program = "/usr/bin/script";  // runs a program on a terminal of its own
  commandLine.arguments = {"--quiet", "--return", "--command", std::string("'") + ONDREL_COMMAND + "' show console.xml",
                           "/dev/null"};
  commandLine.environment = std::move(environment);
  commandLine.workingFolder = folder.Path();
  const CommandResult result = RunCommand(commandLine);
  ExpectSuccess(result);
  return result.output;
}

TEST(PosixShowColours, AreThereOnATerminalUnlessTheEnvironmentSaysNo) {
  if (!std::filesystem::exists("/usr/bin/script")) GTEST_SKIP() << "no program here lends a terminal";
  const ProjectFolder folder;
  folder.WriteProject(
      R"(<Project><NodeGroup><Node Cookie="1" Name="a" Icon="0" Type="HTML"><MenuScript/><StyleSheet/></Node></NodeGroup></Project>)");
  EXPECT_THAT(ShownOnTerminal(folder, {}), HasSubstr("\x1B[32ma\x1B[0m"));
  const std::string plain = ShownOnTerminal(folder, {{"NO_COLOR", "0"}});
  EXPECT_THAT(plain, HasSubstr("a      HTML  1"));
  EXPECT_THAT(plain, Not(HasSubstr("\x1B")));
  EXPECT_THAT(ShownOnTerminal(folder, {{"TERM", "dumb"}}), Not(HasSubstr("\x1B")));
}

}  // namespace
}  // namespace ondrel::test
