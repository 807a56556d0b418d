// `ondrel compile --map`: files that a project names by paths of another machine.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "filter_command.h"
#include "project_folder.h"
#include "support/archive_bytes.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;

/// No system has this folder: the ordinary drives of tests are others.
const std::string kFarProject = Lines({
    R"(<Project><FileGroup>)",
    R"(<Icon Cookie="7" Path="Q:\icons\top.ico"/>)",
    R"(<File Cookie="9" Path="Q:\code\z.js"/>)",
    R"(<File Cookie="8" Path="Q:\icons\a.js"/>)",
    R"(</FileGroup></Project>)",
});

class FarFiles : public ProjectFolder {
 public:
  explicit FarFiles(const std::string& project = kFarProject) {
    WriteProject(project);
    Write("assets/top.ico", SmallIconFile());
    Write("assets/a.js", "A");
    Write("old/z.js", "Z");
  }

  CommandResult CompileWith(const std::vector<std::string>& maps, std::vector<std::string> further = {}) const {
    std::vector<std::string> arguments{"compile", kProjectName, "-o", kImageName};
    for (const std::string& map : maps) arguments.insert(arguments.end(), {"--map", map});
    arguments.insert(arguments.end(), further.begin(), further.end());
    return Run(arguments);
  }
  std::string Image() const { return ReadBytes(*this / kImageName); }
};

TEST(CompileMap, TakesIconsAndCodeFromOtherFolders) {
  const FarFiles folder;
  const CommandResult result = folder.CompileWith({"Q:\\icons=assets", "Q:\\code=old"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, HasSubstr(": 0 nodes, 0 dialogs, 1 icon, 2 code files, "));

  // The same definition with its files in the project's folder. Its icon is the same record, and its code files stand
  // in the order of the far paths.
  const FarFiles beside(Lines({
      R"(<Project><FileGroup>)",
      R"(<Icon Cookie="7" Name="assets\top.ico"/>)",
      R"(<File Cookie="9" Name="1.js"/>)",
      R"(<File Cookie="8" Name="2.js"/>)",
      R"(</FileGroup></Project>)",
  }));
  beside.Write("1.js", "Z");
  beside.Write("2.js", "A");
  ExpectSuccess(beside.Compile());
  EXPECT_TRUE(folder.Image() == beside.Image());
}

TEST(CompileMap, TheOrderOfTheImageIsThatOfTheFarPaths) {
  const FarFiles folder;
  folder.WriteProject(CodeProject({R"(Path="Q:\code\z.js")", R"(Path="Q:\icons\a.js")"}));
  ExpectSuccess(folder.CompileWith({"Q:\\icons=assets", "Q:\\code=old"}));
  // "assets" comes before "old".
  EXPECT_EQ(Hex(folder.Image()), Hex(CodeImage({{1, "Z"}, {2, "A"}})));
}

TEST(CompileMap, TheImageDoesNotChangeByWhereTheFilesAre) {
  const FarFiles folder;
  ExpectSuccess(folder.CompileWith({"Q:\\icons=assets", "Q:\\code=old"}));
  const std::string image = folder.Image();
  folder.Write("zz/deep/top.ico", SmallIconFile());
  folder.Write("zz/deep/a.js", "A");
  folder.Write("zz/z.js", "Z");
  ExpectSuccess(folder.CompileWith({"Q:\\icons=zz/deep", "Q:\\code=zz"}));
  EXPECT_TRUE(folder.Image() == image);
}

struct MapCase {
  const char* map;
  bool isFound;
};

class MappedPrefix : public testing::TestWithParam<MapCase> {};

TEST_P(MappedPrefix, EndsWhereAPartDoes) {
  const FarFiles folder(CodeProject({R"(Path="Q:\Icons/sub\a.js")"}));
  folder.Write("assets/sub/a.js", "S");
  const CommandResult result = folder.CompileWith({GetParam().map});
  EXPECT_EQ(result.exitCode, GetParam().isFound ? 0 : 1) << result.errors;
}

INSTANTIATE_TEST_SUITE_P(CompileMap, MappedPrefix,
                         testing::Values(MapCase{"Q:\\icons=assets", true}, MapCase{"q:/ICONS/=assets", true},
                                         MapCase{"Q:\\icons\\=assets/", true}, MapCase{"Q:\\icons\\sub=assets", true},
                                         MapCase{"Q:\\icons\\sub\\a.js=assets/sub/a.js", true}, MapCase{"Q:=.", false},
                                         MapCase{"Q:\\icon=assets", false}, MapCase{"Q:\\icons\\s=assets", false},
                                         MapCase{"icons=assets", false},
                                         MapCase{"Q:\\icons\\sub\\a.js\\x=assets", false}));

TEST(CompileMap, OfSeveralTheFirstCounts) {
  const FarFiles folder(CodeProject({R"(Path="Q:\icons\a.js")"}));
  folder.Write("a.js", "first");
  ExpectSuccess(folder.CompileWith({"Q:\\icons=.", "Q:\\icons=assets"}));
  EXPECT_EQ(Hex(folder.Image()), Hex(CodeImage({{1, "first"}})));
}

TEST(CompileMap, NamesInTheProjectsFolderStay) {
  const FarFiles folder(CodeProject({R"(Name="a.js")"}));
  folder.Write("a.js", "here");
  ExpectSuccess(folder.CompileWith({Utf8(folder.Path()) + "=assets"}));
  EXPECT_EQ(Hex(folder.Image()), Hex(CodeImage({{1, "here"}})));
}

TEST(CompileMap, AFileThatIsNotThereIsNamedAsTheProjectSpellsIt) {
  const FarFiles folder(CodeProject({R"(Path="Q:\icons\gone.js")"}));
  ExpectFailure(folder.CompileWith({"Q:\\icons=assets"}),
                "console.xml:2: code file 1, \"Q:\\icons\\gone.js\": there is no such file; ", "0x80070002");
  ExpectFailure(folder.CompileWith({"Q:\\icons=nowhere"}),
                "console.xml:2: code file 1, \"Q:\\icons\\gone.js\": its folder is not there; ", "0x80070003");
}

TEST(CompileMap, AnIconThatIsNotThereIsNamedByItsPlace) {
  const FarFiles folder(R"(<Project><FileGroup><Icon Cookie="7" Path="Q:\icons\gone.ico"/></FileGroup></Project>)");
  const CommandResult result = folder.CompileWith({"Q:\\icons=assets"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, testing::StartsWith("ondrel: console.xml:1: icon file 7, \""));
}

TEST(CompileMap, TheImageIsNotWrittenOverAMappedFile) {
  const FarFiles folder;
  const CommandResult result =
      folder.Run({"compile", kProjectName, "-o", "assets/a.js", "--map", "Q:\\icons=assets", "--map", "Q:\\code=old"});
  ExpectFailure(result, "assets/a.js: the image would overwrite code file \"Q:\\icons\\a.js\"", "0x80070057");
  EXPECT_EQ(ReadBytes(folder / "assets/a.js"), "A");
}

TEST(CompileMap, AFilterReadsTheMappedFileAndIsChosenByTheFarPath) {
  const FarFiles folder;
  ExpectSuccess(folder.CompileWith(
      {"Q:\\icons=assets", "Q:\\code=old"},
      {"--filter", "Q:/icons/*=" + FilterCommand("say +3C+20 copy x say +3E variable ONDREL_FILE")}));
  EXPECT_THAT(folder.Image(), testing::AnyOf(HasSubstr("< A>assets/a.js"), HasSubstr("< A>assets\\a.js")));
}

/// What an icon's element may look like, and that it is found all the same.
class WrittenIcon : public testing::TestWithParam<const char*> {};

TEST_P(WrittenIcon, IsMapped) {
  const FarFiles folder{GetParam()};
  const CommandResult result = folder.CompileWith({"Q:\\i c&\xC3\xA4=assets"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, HasSubstr(" 1 icon, "));
}

INSTANTIATE_TEST_SUITE_P(
    CompileMap, WrittenIcon,
    testing::Values(
        "<Project><FileGroup><Icon Cookie=\"7\" Path=\"Q:\\i c&amp;\xC3\xA4\\top.ico\"/></FileGroup></Project>",
        "<Project><FileGroup><Icon\n Path = 'q:/I C&#38;&#xE4;/top.ico'\tCookie='7' ></Icon></FileGroup></Project>",
        "<Project><!-- <Icon Path=\"Q:\\i c&amp;\xC3\xA4\\no.ico\"/> --><FileGroup>"
        "<Icons Path=\"Q:\\i c&amp;\xC3\xA4\\no.ico\"/><Icon Cookie=\"7\" x=\"&gt;\" "
        "Path=\"Q:\\i c&amp;\xC3\xA4\\top.ico\"/></FileGroup></Project>",
        "<!DOCTYPE Project [<!ENTITY i '<Icon Cookie=\"7\" Path=\"Q:\\i c&#38;amp;&#xE4;\\top.ico\"/>'>]>"
        "<Project><FileGroup><Icon Cookie=\"7\" Path=\"Q:\\i c&amp;\xC3\xA4\\top.ico\"/></FileGroup></Project>"));

TEST(CompileMap, APathFromAnEntityIsRefusedWithItsLine) {
  const FarFiles folder(Lines({R"(<!DOCTYPE Project [<!ENTITY far "Q:\icons">]>)", R"(<Project><FileGroup>)",
                               R"(<Icon Cookie="7" Path="&far;\top.ico"/></FileGroup></Project>)"}));
  ExpectFailure(folder.CompileWith({"Q:\\icons=assets"}),
                "console.xml:3: the path of the icon file \"Q:\\icons\\top.ico\" cannot be mapped; ", "0x80070057");
}

TEST(CompileMap, AFolderMayHaveAnyName) {
  const FarFiles folder(R"(<Project><FileGroup><Icon Cookie="7" Path="Q:\icons\top.ico"/></FileGroup></Project>)");
  const std::string name = "a'b & %c\xC3\xA9 \xF0\x9F\x98\x80";
  folder.Write(name + "/top.ico", SmallIconFile());
  const CommandResult result = folder.CompileWith({"Q:\\icons=" + name});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, HasSubstr(" 1 icon, "));
}

TEST(CompileMap, WhatIsWrongWithAProjectIsToldAsWithout) {
  const FarFiles folder("<Project><FileGroup>\n<Icon Cookie=\"7\" Path=\"Q:\\icons\\top.ico\">");
  ExpectFailure(folder.CompileWith({"Q:\\icons=assets"}), "console.xml:2: the XML cannot be read: ", "0x8007000D");
}

}  // namespace
}  // namespace ondrel::test
