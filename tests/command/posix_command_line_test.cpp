// The command line of a system whose file names are plain bytes, and its device that is always full.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

using testing::StartsWith;

TEST(CommandLine, AFileMayHaveANameThatIsNoUtf8) {
  const ProjectFolder folder;
  folder.Write("a\xFF.xml", "<Project/>");
  const CommandResult result = folder.Run({"show", "a\xFF.xml"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, StartsWith("a\xEF\xBF\xBD.xml: project"));
}

TEST(CommandLine, OutputThatCannotBeWrittenIsAFailure) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "this system has no /dev/full";
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
    commandLine.standardOutput = "/dev/full";
    ExpectFailure(RunCommand(commandLine), "standard output: it cannot be written", "0x8007001D");
  }
}

}  // namespace
}  // namespace ondrel::test
