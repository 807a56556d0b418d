// Commands of the shell between pipes: what of them the command `ondrel` cannot show.
#include <ondrel/platform/process.h>

#include <string>

#include <gtest/gtest.h>

#include "filter_command.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

using platform::RunShellCommand;
using platform::ShellCommand;
using platform::ShellResult;

ShellCommand CommandIn(const TemporaryFolder& folder, const std::string& doings) {
  ShellCommand command;
  command.text = FilterCommand(doings);
  command.folder = Wide(folder.Path());
  command.largestOutput = 1'000'000;
  command.timeLimit = std::chrono::seconds(60);
  return command;
}

std::string Text(const std::vector<char>& bytes) { return {bytes.begin(), bytes.end()}; }

TEST(ShellCommand, GivesExitCodeOutputAndErrors) {
  const TemporaryFolder folder;
  ShellCommand command = CommandIn(folder, "copy x complain oh exit 3");
  command.input = {'a', '\0', 'b'};
  const ShellResult result = RunShellCommand(command);
  EXPECT_EQ(result.end, ShellResult::End::exited);
  EXPECT_EQ(result.code, 3U);
  EXPECT_EQ(Text(result.output), std::string("a\0b", 3));
  EXPECT_EQ(result.errors, "oh");
}

TEST(ShellCommand, MayWriteAsMuchAsIsAllowedAndNoMore) {
  const TemporaryFolder folder;
  ShellCommand command = CommandIn(folder, "write 300000");
  command.largestOutput = 300'000;
  const ShellResult whole = RunShellCommand(command);
  EXPECT_EQ(whole.end, ShellResult::End::exited);
  EXPECT_EQ(whole.output.size(), 300'000U);
  command.largestOutput = 299'999;
  EXPECT_EQ(RunShellCommand(command).end, ShellResult::End::tooLarge);
  command = CommandIn(folder, "drip x");  // without an end of its own
  command.largestOutput = 10;
  EXPECT_EQ(RunShellCommand(command).end, ShellResult::End::tooLarge);
}

TEST(ShellCommand, KeepsTheFirstOfWhatItSaid) {
  const TemporaryFolder folder;
  ShellCommand command = CommandIn(folder, "complain abc err 5000000 complain xyz");
  command.keptErrors = 5;
  const ShellResult result = RunShellCommand(command);
  EXPECT_EQ(result.end, ShellResult::End::exited);
  EXPECT_EQ(result.errors, "abcxx");
}

TEST(ShellCommand, IsStoppedAtItsTimeLimit) {
  const TemporaryFolder folder;
  ShellCommand command = CommandIn(folder, "sleep 60");
  command.timeLimit = std::chrono::milliseconds(200);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(RunShellCommand(command).end, ShellResult::End::late);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
}

TEST(ShellCommand, IsNotStartedInAFolderThatIsNotThere) {
  const TemporaryFolder folder;
  ShellCommand command = CommandIn(folder, "say x");
  command.folder = Wide(folder / "gone");
  const ShellResult result = RunShellCommand(command);
  EXPECT_EQ(result.end, ShellResult::End::notStarted);
  EXPECT_NE(result.code, DWORD{ERROR_SUCCESS});
  EXPECT_TRUE(result.output.empty());
}

TEST(ShellCommand, HasVariablesBesideThoseOfTheProgram) {
  const TemporaryFolder folder;
  ShellCommand command = CommandIn(folder, "variable ONDREL_TRIED say / variable PATH");
  command.variables = {{"ONDREL_TRIED", "a b=c"}, {"PATH", "mine"}};
  EXPECT_EQ(Text(RunShellCommand(command).output), "a b=c/mine");
}

}  // namespace
}  // namespace ondrel::test
