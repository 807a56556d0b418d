// `ondrel compile --filter`: code files that go through a command.
#include <algorithm>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "filter_command.h"
#include "project_folder.h"
#include "support/archive_bytes.h"

namespace ondrel::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::chrono::milliseconds kSoon{20'000};  // long before what a filter would sleep

/// Compiles with further arguments.
CommandResult CompileWith(const ProjectFolder& folder, std::vector<std::string> further) {
  further.insert(further.begin(), {"compile", kProjectName, "-o", kImageName});
  return folder.Run(std::move(further));
}

CommandResult CompileThrough(const ProjectFolder& folder, const std::string& glob, const std::string& doings) {
  return CompileWith(folder, {"--filter", glob + '=' + FilterCommand(doings)});
}

std::string ImageHex(const ProjectFolder& folder) { return Hex(ReadBytes(folder / kImageName)); }

/// A project of one code file, and an old image.
class OneFile : public ProjectFolder {
 public:
  OneFile() {
    WriteProject(CodeProject({R"(Name="a.js")"}));
    Write("a.js", "run()");
    Write(kImageName, "old");
  }
};

/// The compile failed with one line about the file, and the image is the old one.
void ExpectFilterFailure(const OneFile& folder, const CommandResult& result, const std::string& start,
                         const std::string& status) {
  EXPECT_EQ(result.exitCode, 1) << result.errors;
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, StartsWith("ondrel: console.xml:2: code file 1, \"a.js\": its filter " + start));
  EXPECT_THAT(result.errors, EndsWith(" (" + status + ")\n"));
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
  EXPECT_LT(result.duration, kSoon);
  EXPECT_EQ(ReadBytes(folder / kImageName), "old");
  EXPECT_EQ(folder.Listing(), "a.js\nconsole.img\nconsole.xml\n");
}

TEST(CompileFilter, TheImageHoldsWhatTheCommandWrites) {
  const OneFile folder;
  const CommandResult result = CompileThrough(folder, "*.js", "say head+0A copy x say +00+FFtail");
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "console.img: 0 nodes, 0 dialogs, 0 icons, 1 code file, 76 bytes\n");
  EXPECT_EQ(ImageHex(folder), Hex(CodeImage({{1, std::string("head\nrun()\0\xFFtail", 16)}})));
}

TEST(CompileFilter, TheFirstThatMatchesIsTheFilesAndOthersStayAsTheyAre) {
  const ProjectFolder folder;
  folder.WriteProject(CodeProject({R"(Name="a.js")", R"(Name="sub\b.js")", R"(Name="c.css")"}));
  folder.Write("a.js", "A");
  folder.Write("sub/b.js", "B");
  folder.Write("c.css", "C");
  ExpectSuccess(CompileWith(folder, {"--filter", "sub/*=" + FilterCommand("say first copy x"), "--filter",
                                     "*.js=" + FilterCommand("say second copy x")}));
  EXPECT_EQ(ImageHex(folder), Hex(CodeImage({{1, "secondA"}, {3, "C"}, {2, "firstB"}})));
}

TEST(CompileFilter, AFileMayBeEmptyAndBecomeEmpty) {
  const OneFile folder;
  folder.Write("a.js", "");
  ExpectSuccess(CompileThrough(folder, "*", "copy x say more"));
  EXPECT_EQ(ImageHex(folder), Hex(CodeImage({{1, "more"}})));
  folder.Write("a.js", "run()");
  ExpectSuccess(CompileThrough(folder, "*", "copy"));  // half a pair: it does nothing
  EXPECT_EQ(ImageHex(folder), Hex(CodeImage({{1, ""}})));
}

TEST(CompileFilter, MegabytesGoBothWaysAtTheSameTime) {
  const OneFile folder;
  const std::string contents(8'000'000, 'y');
  folder.Write("a.js", contents);
  ExpectSuccess(CompileThrough(folder, "*.js", "write 3000000 err 3000000 copy x err 3000000"));
  EXPECT_TRUE(ReadBytes(folder / kImageName) == CodeImage({{1, std::string(3'000'000, 'x') + contents}}));
}

TEST(CompileFilter, ACommandNeedNotReadItsInput) {
  const OneFile folder;
  folder.Write("a.js", std::string(3'000'000, 'y'));
  ExpectSuccess(CompileThrough(folder, "*.js", "say short"));
  EXPECT_EQ(ImageHex(folder), Hex(CodeImage({{1, "short"}})));
}

TEST(CompileFilter, TheCommandKnowsItsFileAndTheFolders) {
  const ProjectFolder folder;
  const ProjectFolder other;
  folder.WriteProject(
      CodeProject({R"(Name="sub\b.js")", R"(Name="sub\c.js")", "Path=\"" + Utf8(other.Write("far.js", "")) + '"'}));
  folder.Write("sub/b.js", "");
  folder.Write("sub/c.js", "");
  const auto variable = [&](const std::string& glob, const std::string& name) {
    ExpectSuccess(CompileThrough(folder, glob, "say +3C variable " + name + " say +3E"));
    const std::string image = ReadBytes(folder / kImageName);
    const std::size_t start = image.find('<');
    return image.substr(start, image.find('>', start) + 1 - start);
  };
  EXPECT_THAT(variable("b.js", "ONDREL_FILE"), testing::AnyOf("<sub/b.js>", "<sub\\b.js>"));
  EXPECT_EQ(variable("c.js", "ONDREL_COOKIE"), "<2>");
  EXPECT_THAT(variable("far.js", "ONDREL_FILE"), EndsWith("far.js>"));
  EXPECT_EQ(variable("far.js", "ONDREL_NOTHING"), "<(none)>");
  const std::string folders = variable("c.js", "ONDREL_FOLDERS");
  EXPECT_THAT(folders, HasSubstr("sub\\\n"));
  EXPECT_THAT(folders, testing::AnyOf(StartsWith("<1 "), HasSubstr("\n1 ")));
  EXPECT_THAT(folders, testing::AnyOf(StartsWith("<3 "), HasSubstr("\n3 ")));
  EXPECT_EQ(std::count(folders.begin(), folders.end(), '\n'), 2) << folders;
}

TEST(CompileFilter, APathWithoutAFolderTakesNoVariableOfTheSystem) {
  const ProjectFolder folder;
  folder.WriteProject(CodeProject({R"(Path="PATH")", R"(Name="a.js")"}));
  folder.Write("PATH", "");
  folder.Write("a.js", "");
  ExpectSuccess(CompileThrough(folder, "a.js", "variable PATH"));
  EXPECT_NE(ImageHex(folder), Hex(CodeImage({{1, ""}, {2, "1"}})));
  EXPECT_NE(ImageHex(folder), Hex(CodeImage({{2, "1"}, {1, ""}})));
}

TEST(CompileFilter, FoldersBeyondWhatAnEnvironmentHoldsAreLeftOut) {
  const ProjectFolder folder;
  std::vector<std::string> files;
  for (int index = 0; index < 200; ++index) {
    const std::string name = "folder" + std::to_string(index) + std::string(100, 'x') + "/a.js";
    folder.Write(name, "");
    files.push_back("Name=\"" + name + '"');
  }
  folder.WriteProject(CodeProject(files));
  ExpectSuccess(CompileThrough(folder, "folder7x*/a.js", "variable ONDREL_FOLDERS variable ONDREL_COOKIE"));
  EXPECT_THAT(ReadBytes(folder / kImageName), HasSubstr("(none)8"));
}

TEST(CompileFilter, TheCommandRunsInTheProjectsFolder) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  folder.Write("sub/console.xml", CodeProject({R"(Name="a.js")"}));
  folder.Write("sub/a.js", "");
  const CommandResult result =
      folder.Run({"compile", "sub/console.xml", "-o", kImageName, "--filter", "*=cd>here.txt"});
  ExpectSuccess(result);
  EXPECT_EQ(folder.Listing(), "console.img\nconsole.xml\nsub\nsub/a.js\nsub/console.xml\nsub/here.txt\n");
}

TEST(BadFilter, ThatFailsSaysWhatItSaidFirst) {
  const OneFile folder;
  ExpectFilterFailure(folder, CompileThrough(folder, "*", "say half complain +0D+0A+20bad+20code+0D+0Amore exit 3"),
                      "ended with exit code 3 and said \"bad code\"; correct the command or the file", "0x80004005");
}

TEST(BadFilter, ThatFailsWithoutAWord) {
  const OneFile folder;
  ExpectFilterFailure(folder, CompileThrough(folder, "*", "exit 1"), "ended with exit code 1; ", "0x80004005");
}

TEST(BadFilter, ThatMovesTheTerminalIsShownInEscapes) {
  const OneFile folder;
  ExpectFilterFailure(folder, CompileThrough(folder, "*", "complain +1B[2Jx+07+FF exit 1"),
                      "ended with exit code 1 and said \"\\x1B[2Jx\\x07", "0x80004005");
}

TEST(BadFilter, ThatSaysMuchIsCutShort) {
  const OneFile folder;
  const CommandResult result = CompileThrough(folder, "*", "err 3000000 exit 1");
  ExpectFilterFailure(folder, result, "ended with exit code 1 and said \"xxx", "0x80004005");
  EXPECT_LT(result.errors.size(), 500U);
}

TEST(BadFilter, ThatIsNotThere) {
  const OneFile folder;
  ExpectFilterFailure(folder, CompileWith(folder, {"--filter", "*=no-such-command-anywhere"}), "ended with exit code ",
                      "0x80004005");
}

TEST(BadFilter, ThatHangsIsStopped) {
  const OneFile folder;
  ExpectFilterFailure(
      folder, CompileWith(folder, {"--timeout", "1", "--filter", "*=" + FilterCommand("say half sleep 60")}),
      "was stopped after 1 second; give it more time with --timeout, or correct the command", "0x800705B4");
}

TEST(BadFilter, ThatNeverEndsItsOutputIsStopped) {
  const OneFile folder;
  ExpectFilterFailure(folder, CompileWith(folder, {"--timeout", "2", "--filter", "*=" + FilterCommand("drip x")}),
                      "was stopped after 2 seconds; ", "0x800705B4");
}

TEST(BadFilter, OfAFileThatIsNotThereIsNotRun) {
  const OneFile folder;
  folder.WriteProject(CodeProject({R"(Name="gone.js")"}));
  ExpectFailure(CompileThrough(folder, "*", "say text"),
                "console.xml:2: code file 1, \"gone.js\": there is no such file; ", "0x80070002");
}

TEST(CompileFilter, OfSeveralFilesTheFirstThatFailsEndsTheCompile) {
  const OneFile folder;
  folder.WriteProject(CodeProject({R"(Name="a.js")", R"(Name="gone.js")"}));
  ExpectFilterFailure(folder, CompileThrough(folder, "a.js", "exit 9"), "ended with exit code 9; ", "0x80004005");
}

struct GlobCase {
  const char* glob;
  const char* matched;  ///< The cookies of the files that go through the filter.
};

class FilterPattern : public testing::TestWithParam<GlobCase> {};

TEST_P(FilterPattern, ChoosesFiles) {
  const std::vector<std::string> names{"a.js", "lib/a.JS", "lib/deep/b.js", "lib/[x].css", "\xF0\x9F\x98\x80.js"};
  const ProjectFolder folder;
  std::vector<std::string> files;
  for (const std::string& name : names) {
    folder.Write(name, "-");
    files.push_back("Name=\"" + name + '"');
  }
  folder.WriteProject(CodeProject(files));
  ExpectSuccess(CompileThrough(folder, GetParam().glob, "variable ONDREL_COOKIE"));
  const std::string image = ReadBytes(folder / kImageName);
  for (std::size_t index = 0; index < names.size(); ++index) {
    const std::string cookie = std::to_string(index + 1);
    const bool expected = std::string_view(GetParam().matched).find(cookie) != std::string_view::npos;
    EXPECT_EQ(image.find(std::string("\x01\0\0\0", 4) + cookie) != std::string::npos, expected) << names[index];
  }
}

INSTANTIATE_TEST_SUITE_P(CompileFilter, FilterPattern,
                         testing::Values(GlobCase{"*.js", "1235"}, GlobCase{"A.JS", "12"}, GlobCase{"lib/*", "24"},
                                         GlobCase{"lib\\*.js", "2"}, GlobCase{"lib/**", "234"},
                                         GlobCase{"**/*.js", "1235"}, GlobCase{"lib/**/*.js", "23"},
                                         GlobCase{"**b.js", "3"}, GlobCase{"*/a.js", "2"}, GlobCase{"?.js", "1235"},
                                         GlobCase{"??js", "1235"}, GlobCase{"[a-b].js", "123"},
                                         GlobCase{"[!a].js", "35"}, GlobCase{"[^ab].js", "5"},
                                         GlobCase{"[[]x[]].css", "4"}, GlobCase{"[x].css", ""}, GlobCase{"[x", ""},
                                         GlobCase{"lib?a.js", ""}, GlobCase{"lib[/]a.js", ""}, GlobCase{"*", "12345"},
                                         GlobCase{"js", ""}, GlobCase{"lib/deep/", ""}, GlobCase{"/a.js", ""},
                                         GlobCase{"**", "12345"}, GlobCase{"a.js*", "12"}));

TEST(CompileFilter, APatternOfManyStarsIsComparedAtOnce) {
  const ProjectFolder folder;
  const std::string name = std::string(200, 'a') + ".js";
  folder.Write(name, "x");
  folder.WriteProject(CodeProject({"Name=\"" + name + '"'}));
  std::string glob;
  for (int index = 0; index < 60; ++index) glob += "a*";
  const CommandResult result = CompileThrough(folder, glob + "b", "exit 1");
  ExpectSuccess(result);
  EXPECT_LT(result.duration, kSoon);
}

}  // namespace
}  // namespace ondrel::test
