// Code files and places of kinds that Windows does not have: pipes in folders, and devices.
#include <filesystem>

#include <gtest/gtest.h>

#include "report_page.h"
#include "support/posix/process.h"

namespace ondrel::test {
namespace {

TEST(Report, APipeForACodeFileIsNotWaitedFor) {
  const ProjectFolder folder;
  folder.WriteProject(R"(<Project><FileGroup><File Cookie="1" Name="pipe"/></FileGroup></Project>)");
  MakeNamedPipe(folder / "pipe");
  const nlohmann::json expected = {{"state", "unreadable"}, {"reason", "it is no regular file; name a file on disk"}};
  EXPECT_EQ(ReportedData(folder, kProjectName)["codeFiles"][0]["contents"], expected);
}

TEST(BadReport, OverADevice) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  ExpectFailure(folder.Run({"report", kProjectName, "-o", "/dev/null"}), "/dev/null: it is no regular file; ",
                "0x80070005");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(BadReport, BeyondALimitOfSizeLeavesTheOldPage) {
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  folder.Write(kPageName, "old page");
  CommandLine commandLine = folder.Command({"report", kProjectName, "-o", kPageName});
  commandLine.largestFile = kLargeCodeFile / 2;
  ExpectFailure(RunCommand(commandLine), "page.html: the disk is full, or a limit of size is reached; ", "0x80070070");
  EXPECT_EQ(ReadBytes(folder / kPageName), "old page");
  EXPECT_EQ(folder.Listing(), "a.js\nconsole.xml\npage.html\n");
}

}  // namespace
}  // namespace ondrel::test
