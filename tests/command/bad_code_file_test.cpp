// Code files that cannot go into an image.
#include <filesystem>

#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

/// Compiles a project whose second code file, in line 3, has the given attributes.
void ExpectRefused(const ProjectFolder& folder, const std::string& attributes, const std::string& complaint,
                   const std::string& status) {
  folder.Write("a.js", "");
  folder.WriteProject(Lines({R"(<Project><FileGroup>)", R"(<File Cookie="1" Name="a.js"/>)",
                             "<File Cookie=\"2\" " + attributes + "/>", R"(</FileGroup></Project>)"}));
  folder.Write(kImageName, "old image");
  const std::string listing = folder.Listing();
  ExpectFailure(folder.Compile(), "console.xml:3: code file 2, " + complaint, status);
  EXPECT_EQ(ReadBytes(folder / kImageName), "old image");
  EXPECT_EQ(folder.Listing(), listing);
}

TEST(BadCodeFile, Missing) {
  ExpectRefused(ProjectFolder(), R"(Name="gone.js")", "\"gone.js\": there is no such file; ", "0x80070002");
}

TEST(BadCodeFile, InAMissingFolder) {
  ExpectRefused(ProjectFolder(), R"(Name="gone\b.js")", "\"gone\\b.js\": its folder is not there; ", "0x80070003");
}

TEST(BadCodeFile, AFolder) {
  const ProjectFolder folder;
  std::filesystem::create_directory(folder / "sub");
  ExpectRefused(folder, R"(Name="sub")", "\"sub\": it is a folder; ", "0x80070005");
}

TEST(BadCodeFile, TheProjectsOwnFolder) {
  ExpectRefused(ProjectFolder(), R"(Name="")", "\"\": it is a folder; ", "0x80070005");
}

TEST(BadCodeFile, APipe) {
  const ProjectFolder folder;
  if (!MakeNamedPipe(folder / "pipe")) GTEST_SKIP() << "this system has no pipes in its folders";
  ExpectRefused(folder, R"(Name="pipe")", "\"pipe\": it is no regular file; ", "0x80070005");
}

TEST(BadCodeFile, OnADriveThatCannotBeReached) {
  if (std::filesystem::path("C:\\").has_root_name()) GTEST_SKIP() << "this system has drives";
  ExpectRefused(ProjectFolder(), R"(Path="C:\code\b.js")",
                "\"C:\\code\\b.js\": the drive C: cannot be reached from this system; ", "0x80070003");
}

TEST(BadCodeFile, InANetworkThatCannotBeReached) {
  if (std::filesystem::path("C:\\").has_root_name()) GTEST_SKIP() << "this system has network paths";
  ExpectRefused(ProjectFolder(), R"(Path="\\server\share\b.js")",
                "\"\\\\server\\share\\b.js\": the network path cannot be reached from this system; ", "0x80070003");
}

TEST(BadCodeFile, TooLargeForAnImage) {
  const ProjectFolder folder;
  folder.Write("large.js", "");
  std::filesystem::resize_file(folder / "large.js", std::uintmax_t{1} << 32);  // a hole: it takes no room
  ExpectRefused(folder, R"(Name="large.js")", "\"large.js\": it has 4 GiB or more; ", "0x80070057");
}

TEST(BadCodeFile, WithoutPermission) {
  if (!CanDropPrivileges()) GTEST_SKIP() << "the test's user cannot run the command as another one";
  const ProjectFolder folder;
  folder.Write("secret.js", "x");
  std::filesystem::permissions(folder / "secret.js", std::filesystem::perms::owner_read);
  std::filesystem::permissions(folder.Path(), std::filesystem::perms::all);  // so that the image could be written
  folder.WriteProject(R"(<Project><FileGroup><File Cookie="1" Name="secret.js"/></FileGroup></Project>)");
  CommandLine commandLine = folder.Command({"compile", kProjectName, "-o", kImageName});
  commandLine.withoutPrivileges = true;
  ExpectFailure(RunCommand(commandLine), "console.xml:1: code file 1, \"secret.js\": access is denied; ", "0x80070005");
  EXPECT_EQ(folder.Listing(), "console.xml\nsecret.js\n");
}

}  // namespace
}  // namespace ondrel::test
