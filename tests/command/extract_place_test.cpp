// Where `ondrel extract` writes, and where it does not.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

class ExtractPlace : public testing::Test {
 protected:
  ExtractPlace() {
    folder.WriteProject(R"(<Project><FileGroup><File Cookie="1" Name="a.js"/></FileGroup></Project>)");
    folder.Write("a.js", "code");
    ExpectSuccess(folder.Compile());
    before = folder.Listing();
  }

  void ExpectRefusal(const std::string& place, const std::string& complaint, const char* status) const {
    ExpectFailure(folder.Run({"extract", kImageName, "-d", place}), complaint, status);
    EXPECT_EQ(folder.Listing(), before);
  }

  const ProjectFolder folder;
  std::string before;
};

TEST_F(ExtractPlace, AFolderThatHoldsAnything) {
  folder.Write("out/.kept", "");
  before = folder.Listing();
  ExpectRefusal("out", "out: the folder is not empty; name one that is, ", "0x800710D3");
  ExpectRefusal("out/", "out/: the folder is not empty; ", "0x800710D3");
}

TEST_F(ExtractPlace, AFile) {
  ExpectRefusal("a.js", "a.js: it is a file or a link; name a folder ", "0x80070050");
  EXPECT_EQ(ReadBytes(folder / "a.js"), "code");
}

TEST_F(ExtractPlace, TheImageItself) {
  ExpectRefusal(kImageName, "console.img: it is a file or a link; ", "0x80070050");
}

TEST_F(ExtractPlace, AFolderInAMissingFolder) {
  ExpectRefusal("gone/out", "gone/out: its folder is not there; check the name or make the folder ", "0x80070003");
}

TEST_F(ExtractPlace, TheWorkingFolder) {
  std::filesystem::create_directory(folder / "here");
  before = folder.Listing();
  CommandLine commandLine = folder.Command({"extract", "../console.img", "-d", "."});
  commandLine.workingFolder = folder / "here";
  ExpectFailure(RunCommand(commandLine), ".: it is the working folder, which cannot be replaced; ", "0x80070057");
  EXPECT_EQ(folder.Listing(), before);
}

TEST_F(ExtractPlace, NoName) { ExpectRefusal("", "the name is empty; ", "0x80070003"); }

TEST_F(ExtractPlace, AProjectIsNoImage) {
  ExpectFailure(folder.Run({"extract", kProjectName, "-d", "out"}),
                "console.xml: it is a project file, whose files are on disk already; name an object image ",
                "0x8007000D");
  EXPECT_EQ(folder.Listing(), before);
}

TEST_F(ExtractPlace, AnImageThatIsNotThere) {
  ExpectFailure(folder.Run({"extract", "gone.img", "-d", "out"}), "gone.img: there is no such file; ", "0x80070002");
  EXPECT_EQ(folder.Listing(), before);
}

TEST_F(ExtractPlace, ANameBeyondAsciiInAFolderOfSuchAName) {
  std::filesystem::create_directory(folder / "\xC3\xA4");
  const CommandResult result = folder.Run({"extract", kImageName, "-d", "\xC3\xA4/\xE2\x82\xAC"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::StartsWith("\xC3\xA4/\xE2\x82\xAC: 0 nodes, "));
  EXPECT_EQ(ReadBytes(folder / "\xC3\xA4/\xE2\x82\xAC/code/0001-file-1.txt"), "code");
}

TEST_F(ExtractPlace, WithoutAFolderTheUsageIsWrong) {
  const CommandResult result = folder.Run({"extract", kImageName});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.errors, testing::HasSubstr("--directory"));
  EXPECT_EQ(folder.Listing(), before);
}

}  // namespace
}  // namespace ondrel::test
