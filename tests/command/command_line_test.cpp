// The command line: help, version, wrong usage, and output that cannot be written.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(CommandLine, VersionPrintsNameAndNumber) {
  const CommandResult result = ProjectFolder().Run({"--version"});
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "ondrel 0.1.0\n");
}

TEST(CommandLine, HelpNamesTheCommandsAndTheExitCodes) {
  const CommandResult result = ProjectFolder().Run({"--help"});
  ExpectSuccess(result);
  for (const char* const part :
       {"compile", "check", "show", "diff", "extract", "report", "icon", "strips", "new", "add", "set", "move-down",
        "remove", "completion", "man", "Example", "Exit codes: 0 done, 1 failed, 2 wrong usage."}) {
    EXPECT_THAT(result.output, HasSubstr(part));
  }
}

TEST(CommandLine, EachCommandExplainsItself) {
  const ProjectFolder folder;
  const CommandResult compile = folder.Run({"compile", "--help"});
  ExpectSuccess(compile);
  for (const char* const part : {"ondrel compile", "PROJECT", "-o", "IMAGE", "Example", "Exit codes"}) {
    EXPECT_THAT(compile.output, HasSubstr(part));
  }
  const CommandResult show = folder.Run({"show", "--help"});
  ExpectSuccess(show);
  for (const char* const part : {"ondrel show", "FILE", "--json", "Example", "Exit codes"}) {
    EXPECT_THAT(show.output, HasSubstr(part));
  }
  const CommandResult icon = folder.Run({"icon", "--help"});
  ExpectSuccess(icon);
  for (const char* const part : {"ondrel icon", "FILE", ".exe", "-o", "PICTURE", "Example", "Exit codes"}) {
    EXPECT_THAT(icon.output, HasSubstr(part));
  }
  const CommandResult strips = folder.Run({"strips", "--help"});
  ExpectSuccess(strips);
  for (const char* const part :
       {"ondrel strips", "FILE", "--key RRGGBB", "--small", "--large", "Example", "Exit codes"}) {
    EXPECT_THAT(strips.output, HasSubstr(part));
  }
}

class WrongUsage : public testing::TestWithParam<std::vector<std::string>> {};

TEST_P(WrongUsage, IsOneLineAndAHintWithExitCode2) {
  const ProjectFolder folder;
  const CommandResult result = folder.Run(GetParam());
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, StartsWith("ondrel: "));
  EXPECT_THAT(result.errors, HasSubstr("\nTry 'ondrel"));
  EXPECT_THAT(result.errors, testing::EndsWith("--help'.\n"));
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 2) << result.errors;
  EXPECT_EQ(folder.Listing(), "");
}

std::vector<std::string> StripsWithKey(const std::string& key) { return {"strips", "a", "--key", key, "--small", "b"}; }

INSTANTIATE_TEST_SUITE_P(Icon, WrongUsage,
                         testing::Values(std::vector<std::string>{"icon"}, std::vector<std::string>{"icon", "a", "b"},
                                         std::vector<std::string>{"icon", "a", "-o"},
                                         std::vector<std::string>{"icon", "a", "--json"}));

INSTANTIATE_TEST_SUITE_P(Strips, WrongUsage,
                         testing::Values(std::vector<std::string>{"strips"}, std::vector<std::string>{"strips", "a"},
                                         std::vector<std::string>{"strips", "a", "--key", "FF00FF"},
                                         std::vector<std::string>{"strips", "a", "--small", "b"},
                                         std::vector<std::string>{"strips", "--key", "FF00FF", "--small", "b"},
                                         std::vector<std::string>{"strips", "a", "--small", "b", "--key"},
                                         std::vector<std::string>{"strips", "a", "--key", "FF00FF", "--small"},
                                         StripsWithKey(""), StripsWithKey("#"), StripsWithKey("FF00F"),
                                         StripsWithKey("FF00FFF"), StripsWithKey("##FF00FF"), StripsWithKey("FF00FG"),
                                         StripsWithKey("0xFF00"), StripsWithKey("-F00FF"), StripsWithKey(" FF00FF"),
                                         StripsWithKey("+F00FF"), StripsWithKey("red\n"),
                                         StripsWithKey(std::string(10'000, 'x'))));

INSTANTIATE_TEST_SUITE_P(CommandLine, WrongUsage,
                         testing::Values(std::vector<std::string>{}, std::vector<std::string>{"paint"},
                                         std::vector<std::string>{"compile"},
                                         std::vector<std::string>{"compile", "console.xml"},
                                         std::vector<std::string>{"compile", "-o", "console.img"},
                                         std::vector<std::string>{"compile", "console.xml", "-o"},
                                         std::vector<std::string>{"compile", "a.xml", "b.xml", "-o", "c.img"},
                                         std::vector<std::string>{"show"}, std::vector<std::string>{"show", "a", "b"},
                                         std::vector<std::string>{"show", "a", "--colour\n\x1B[31m"},
                                         std::vector<std::string>{"--json", "a"}));

TEST(CommandLine, AFileMayHaveTheNameOfACommand) {
  const ProjectFolder folder;
  folder.Write("compile", "<Project/>");
  ExpectSuccess(folder.Run({"show", "compile"}));
}

}  // namespace
}  // namespace ondrel::test
