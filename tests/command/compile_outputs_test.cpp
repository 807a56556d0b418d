// What `ondrel compile` writes beside one image: several images, dependency files, lists of inputs.
#include <algorithm>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "filter_command.h"
#include "project_folder.h"
#include "support/archive_bytes.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// An icon, two code files, of which one lies elsewhere, and names that make would read as its own.
class ManyNames : public ProjectFolder {
 public:
  ManyNames() {
    Write("sub/con sole.xml", Lines({
                                  R"(<Project><FileGroup>)",
                                  R"(<Icon Cookie="7" Name="icons\top.ico"/>)",
                                  R"(<File Cookie="9" Name="b c#1.js"/>)",
                                  R"(<File Cookie="8" Name="a$$.js"/>)",
                                  R"(<File Cookie="6" Path="Q:\far\x.js"/>)",
                                  R"(</FileGroup></Project>)",
                              }));
    Write("sub/icons/top.ico", SmallIconFile());
    Write("sub/b c#1.js", "");
    Write("sub/a$$.js", "");
    Write("far/x.js", "");
  }
};

TEST(CompileDependencies, AreWrittenAsMakeReadsThem) {
  const ManyNames folder;
  ExpectSuccess(folder.Run(
      {"compile", "sub/con sole.xml", "-o", "my image.img", "--depfile", "image.d", "--map", "Q:\\far=far"}));
  EXPECT_EQ(ReadBytes(folder / "image.d"),
            "my\\ image.img: sub/con\\ sole.xml \\\n sub/icons/top.ico \\\n sub/b\\ c\\#1.js \\\n sub/a$$$$.js \\\n "
            "far/x.js\n");
}

TEST(CompileDependencies, OfAProjectWithoutFilesAreTheProject) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  ExpectSuccess(folder.Run({"compile", ".\\console.xml", "-o", ".\\c.img", "--depfile", "c.d"}));
  EXPECT_EQ(ReadBytes(folder / "c.d"), "./c.img: ./console.xml\n");
}

TEST(CompileDependencies, StayAsTheyWereWhenTheImageFails) {
  const ProjectFolder folder;
  folder.WriteProject(CodeProject({R"(Name="gone.js")"}));
  folder.Write("c.d", "old");
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", kImageName, "--depfile", "c.d"}),
                "console.xml:2: code file 1, \"gone.js\": there is no such file; ", "0x80070002");
  EXPECT_EQ(ReadBytes(folder / "c.d"), "old");
  EXPECT_EQ(folder.Listing(), "c.d\nconsole.xml\n");
}

class DependenciesOverAnotherFile : public testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(DependenciesOverAnotherFile, AreRefused) {
  const ProjectFolder folder;
  folder.WriteProject(CodeProject({R"(Name="a.js")"}));
  folder.Write("a.js", "run()");
  const auto [place, start] = GetParam();
  const std::string listing = folder.Listing();
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", kImageName, "--depfile", place}), start, "0x80070057");
  EXPECT_EQ(folder.Listing(), listing);
  EXPECT_EQ(ReadBytes(folder / "a.js"), "run()");
}

INSTANTIATE_TEST_SUITE_P(
    CompileDependencies, DependenciesOverAnotherFile,
    testing::Values(std::pair("a.js", "a.js: the dependency file would overwrite code file \"a.js\"; "),
                    std::pair("./console.xml", "./console.xml: the dependency file would overwrite the project; "),
                    std::pair("./console.img", "console.img: the image would overwrite the dependency file; ")));

TEST(CompileDependencies, IntoAMissingFolderLeaveTheImageAsItWas) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  folder.Write(kImageName, "old");
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", kImageName, "--depfile", "gone/c.d"}),
                "gone/c.d: its folder is not there; ", "0x80070003");
  EXPECT_EQ(ReadBytes(folder / kImageName), "old");
}

TEST(CompileDependencies, OfANameWithALineEndAreRefused) {
  const ProjectFolder folder;
  folder.WriteProject(CodeProject({R"(Name="a&#10;b.js")"}));
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", kImageName, "--depfile", "c.d"}),
                "a\\nb.js: a dependency file cannot hold a name with a line end; ", "0x80070057");
  EXPECT_EQ(folder.Listing(), "console.xml\n");
}

TEST(CompileList, PrintsTheInputsAndWritesNothing) {
  const ManyNames folder;
  const std::string listing = folder.Listing();
  const CommandResult result =
      folder.Run({"compile", "--list", "sub/con sole.xml", "--map", "Q:\\far=far", "--filter", "*=exit 1"});
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "sub/con sole.xml\nsub/icons/top.ico\nsub/b c#1.js\nsub/a$$.js\nfar/x.js\n");
  EXPECT_EQ(folder.Listing(), listing);
}

TEST(CompileList, NamesFilesThatAreNotThereAndOnesThatAreNamedTwiceOnce) {
  const ProjectFolder folder;
  folder.Write("sub/console.xml",
               CodeProject({R"(Name="gone\a.js")", R"(Name="gone/a.js")", R"(Name="a&#10;&#x202E;.js")"}));
  const CommandResult result = folder.Run({"compile", "sub\\console.xml", "--list"});
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "sub/console.xml\nsub/gone/a.js\nsub/a\\n\\u202E.js\n");
}

TEST(CompileList, OfSeveralProjectsNamesAllInTheirOrder) {
  const ProjectFolder folder;
  folder.Write("b.xml", CodeProject({R"(Name="b.js")"}));
  folder.Write("a.xml", "<Project/>");
  const CommandResult result = folder.Run({"compile", "--list", "b.xml", "a.xml"});
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "b.xml\nb.js\na.xml\n");
}

TEST(CompileList, OfAProjectThatDoesNotLoadPrintsNothing) {
  const ProjectFolder folder;
  folder.Write("a.xml", "<Project/>");
  folder.WriteProject("<project/>");
  ExpectFailure(folder.Run({"compile", "--list", "a.xml", kProjectName}), "console.xml:1: the root element is ",
                "0x8007000D");
}

class SeveralProjects : public ProjectFolder {
 public:
  SeveralProjects() {
    Write("disks.xml", CodeProject({R"(Name="a.js")"}));
    Write("more/users.v2.xml", CodeProject({R"(Name="b.js")"}));
    Write("a.js", "A");
    Write("more/b.js", "B");
    std::filesystem::create_directory(*this / "images");
  }
};

TEST(CompileSeveral, WritesTheImageOfEachIntoTheFolder) {
  const SeveralProjects folder;
  const CommandResult result = folder.Run({"compile", "disks.xml", "more\\users.v2.xml", "-d", "images"});
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "images/disks.img: 0 nodes, 0 dialogs, 0 icons, 1 code file, 61 bytes\n"
            "images/users.v2.img: 0 nodes, 0 dialogs, 0 icons, 1 code file, 61 bytes\n");
  EXPECT_EQ(Hex(ReadBytes(folder / "images/disks.img")), Hex(CodeImage({{1, "A"}})));
  EXPECT_EQ(Hex(ReadBytes(folder / "images/users.v2.img")), Hex(CodeImage({{1, "B"}})));
}

TEST(CompileSeveral, OneProjectMayHaveAFolderToo) {
  const SeveralProjects folder;
  ExpectSuccess(folder.Run({"compile", "disks.xml", "--directory", "images/", "--depfile", "disks.d"}));
  EXPECT_EQ(ReadBytes(folder / "disks.d"), "images/disks.img: disks.xml \\\n a.js\n");
  folder.Write("plain", "<Project/>");
  folder.Write(".hidden", "<Project/>");
  ExpectSuccess(folder.Run({"compile", "plain", ".hidden", "-d", "images"}));
  EXPECT_THAT(folder.Listing(), HasSubstr("images/.hidden.img\nimages/disks.img\nimages/plain.img\n"));
}

TEST(CompileSeveral, TheFirstFailureEndsItAndEarlierImagesStay) {
  const SeveralProjects folder;
  folder.Write("bad.xml", "<project/>");
  folder.Write("images/bad.img", "old");
  const CommandResult result = folder.Run({"compile", "disks.xml", "bad.xml", "more/users.v2.xml", "-d", "images"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "images/disks.img: 0 nodes, 0 dialogs, 0 icons, 1 code file, 61 bytes\n");
  EXPECT_THAT(result.errors, StartsWith("ondrel: bad.xml:1: the root element is "));
  EXPECT_EQ(ReadBytes(folder / "images/bad.img"), "old");
  EXPECT_THAT(folder.Listing(), HasSubstr("images/bad.img\nimages/disks.img\nmore\n"));
}

TEST(CompileSeveral, TwoOfOneNameAreRefusedBeforeAnythingIsWritten) {
  const SeveralProjects folder;
  folder.Write("more/DISKS.txt", "<Project/>");
  const std::string listing = folder.Listing();
  ExpectFailure(folder.Run({"compile", "disks.xml", "more/DISKS.txt", "-d", "images"}),
                "more/DISKS.txt: its image would have the name of that of \"disks.xml\"; ", "0x80070057");
  EXPECT_EQ(folder.Listing(), listing);
}

TEST(CompileSeveral, AnImageOverALaterProjectIsRefused) {
  const SeveralProjects folder;
  folder.Write("last.img", "<Project/>");
  folder.Write("last.xml", "<Project/>");
  ExpectFailure(folder.Run({"compile", "disks.xml", "last.xml", "more/../last.img", "-d", "."}),
                "more/../last.img: its image would have the name of that of \"last.xml\"; ", "0x80070057");
  folder.Write("disks.img", "<Project/>");
  std::filesystem::create_hard_link(folder / "disks.img", folder / "other.xml");
  ExpectFailure(folder.Run({"compile", "disks.xml", "other.xml", "-d", "."}),
                "./disks.img: the image would overwrite a project; ", "0x80070057");
  EXPECT_EQ(ReadBytes(folder / "disks.img"), "<Project/>");
}

TEST(CompileSeveral, TheFolderMustBeThere) {
  const SeveralProjects folder;
  ExpectFailure(folder.Run({"compile", "disks.xml", "-d", "gone"}), "gone: there is no such folder; ", "0x80070003");
  ExpectFailure(folder.Run({"compile", "disks.xml", "-d", "a.js"}), "a.js: there is no such folder; ", "0x80070003");
  ExpectFailure(folder.Run({"compile", "disks.xml", "-d", ""}), "", "0x80070003");
}

TEST(CompileAgain, TheSameInputsGiveTheSameBytesWhereverAndWhenever) {
  const ProjectFolder folder;
  folder.WriteProject(Lines({
      R"(<Project><NodeGroup><Node Cookie="1" Name="&#xE9;" Icon="7" Type="List"><MenuScript File="9"/></Node></NodeGroup>)",
      R"(<FileGroup><Icon Cookie="7" Name="top.ico"/>)",
      R"(<File Cookie="9" Name="b.js"/><File Cookie="8" Name="A.js"/></FileGroup></Project>)",
  }));
  folder.Write("top.ico", SmallIconFile());
  folder.Write("b.js", "b");
  folder.Write("A.js", "a");
  const std::string filter = "a*=" + FilterCommand("copy x variable ONDREL_FILE variable ONDREL_COOKIE");
  CommandLine first = folder.Command({"compile", kProjectName, "-o", "1.img", "--filter", filter});
  first.environment = {{"TZ", "UTC"}, {"LANG", "C"}, {"LC_ALL", "C"}};
  ExpectSuccess(RunCommand(first));
  const ProjectFolder elsewhere;
  CommandLine second =
      elsewhere.Command({"compile", Utf8(folder / kProjectName), "-o", Utf8(folder / "2.img"), "--filter", filter});
  second.environment = {{"TZ", "Asia/Tokyo"}, {"LANG", "tr_TR.UTF-8"}, {"LC_ALL", "tr_TR.UTF-8"}};
  ExpectSuccess(RunCommand(second));
  EXPECT_THAT(ReadBytes(folder / "1.img"), HasSubstr("aA.js8"));
  EXPECT_EQ(Hex(ReadBytes(folder / "1.img")), Hex(ReadBytes(folder / "2.img")));
}

class WrongCompile : public testing::TestWithParam<std::vector<std::string>> {};

TEST_P(WrongCompile, IsWrongUsage) {
  const SeveralProjects folder;
  const std::string listing = folder.Listing();
  std::vector<std::string> arguments = GetParam();
  arguments.insert(arguments.begin(), "compile");
  const CommandResult result = folder.Run(arguments);
  EXPECT_EQ(result.exitCode, 2) << result.output;
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, StartsWith("ondrel: "));
  EXPECT_THAT(result.errors, testing::EndsWith("\nTry 'ondrel compile --help'.\n"));
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 2) << result.errors;
  EXPECT_EQ(folder.Listing(), listing);
}

std::vector<std::string> WithImage(std::vector<std::string> further) {
  further.insert(further.begin(), {"disks.xml", "-o", "images/x.img"});
  return further;
}

INSTANTIATE_TEST_SUITE_P(
    Compile, WrongCompile,
    testing::Values(WithImage({"--filter", "*.js"}), WithImage({"--filter", "=cat"}), WithImage({"--filter", "*.js="}),
                    WithImage({"--filter", ""}), WithImage({"--filter"}), WithImage({"--map", "Q:\\icons"}),
                    WithImage({"--map", "=assets"}), WithImage({"--map", "Q:\\icons="}), WithImage({"--timeout", "0"}),
                    WithImage({"--timeout", "000"}), WithImage({"--timeout", "-1"}), WithImage({"--timeout", "1.5"}),
                    WithImage({"--timeout", ""}), WithImage({"--timeout", "1000000000"}),
                    WithImage({"--timeout", "ten"}), WithImage({"--filter", std::string(10'000, '*') + "\x1B"}),
                    WithImage({"more/users.v2.xml"}), WithImage({"-d", "images"}), WithImage({"--depfile"}),
                    std::vector<std::string>{"--list"}, std::vector<std::string>{"disks.xml", "--depfile", "x.d"},
                    std::vector<std::string>{"disks.xml", "more/users.v2.xml", "-d", "images", "--depfile", "x.d"}));

}  // namespace
}  // namespace ondrel::test
