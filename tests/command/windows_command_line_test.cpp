// The command line of a system whose file names are wide text, and output that nobody reads.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

TEST(CommandLine, OutputThatNobodyReadsIsAFailure) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  folder.Write("disk.ico", SmallIconFile());
  folder.Write("icons.xml", R"(<Project><FileGroup><Icon Cookie="1" Name="disk.ico"/></FileGroup></Project>)");
  for (const auto& arguments :
       {std::vector<std::string>{"show", kProjectName}, std::vector<std::string>{"show", "--json", kProjectName},
        std::vector<std::string>{"--help"}, std::vector<std::string>{"compile", kProjectName, "-o", kImageName},
        std::vector<std::string>{"icon", "disk.ico"},
        std::vector<std::string>{"strips", "icons.xml", "--key", "FF00FF", "--small", "small.png"}}) {
    CommandLine commandLine = folder.Command(arguments);
    commandLine.nobodyReads = true;
    ExpectFailure(RunCommand(commandLine), "standard output: it cannot be written", "0x8007001D");
  }
}

TEST(CommandLine, AFileMayHaveHalfASurrogatePairInItsName) {
  // Such a name can be given, and is no reason to stumble.
  ExpectFailure(ProjectFolder().Show("a\xED\xA0\x80.xml"), "a\xEF\xBF\xBD.xml: there is no such file; ", "0x80070002");
}

TEST(CommandLine, ArgumentsArriveAsTheyAre) {
  const ProjectFolder folder;
  // What programs on Windows take apart themselves: blanks, quotation marks, and backslashes before them.
  for (const std::string name : {"a b.xml", "a\\b c\\", "a\\\\\"b\\\" c", " ", "\t", "^%PATH%&!"}) {
    const CommandResult result = folder.Show(name);
    EXPECT_EQ(result.exitCode, 1);
    std::string shown = name;
    if (shown == "\t") shown = "\\t";
    EXPECT_THAT(result.errors, testing::StartsWith("ondrel: " + shown + ": ")) << name;
  }
}

}  // namespace
}  // namespace ondrel::test
