// What `ondrel check` prints, and what it answers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checked_project.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;

// One error and two warnings.
CheckedProject MixedProject() {
  return CheckedProject({
      R"(<Project><NodeGroup>)",
      R"(<Node Cookie="1" Name="a" Icon="7" Type="List"><MenuScript File="2"/></Node>)",
      R"(</NodeGroup><FileGroup>)",
      R"(<File Cookie="2" Name="a.js"/>)",
      R"(<File Cookie="3" Name="b.js" Kind="&quot;; &#xF6;"/></FileGroup></Project>)",
  });
}

TEST(Check, OfACleanProjectSaysSoInALine) {
  const CheckedProject folder({
      R"(<Project><NodeGroup>)",
      R"(<Node Cookie="1" Name="a" Icon="4" Type="Dialog"><MenuScript File="2"/><StyleSheet File="3"/></Node>)",
      R"(</NodeGroup><FileGroup><Icon Cookie="4" Name="a.ico"/>)",
      R"(<File Cookie="2" Name="a.js"/><File Cookie="3" Name=".\x\..\b.js"/></FileGroup></Project>)",
  });
  folder.Write("x/inside", "");
  const CommandResult result = folder.Check({"--warnings-as-errors"});
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "console.xml: nothing was found\n");
}

TEST(Check, OfAnEmptyProjectFindsNothing) {
  CheckedProject({"<Project/>"}).ExpectRemarks({}, "console.xml: nothing was found", 0);
}

TEST(Check, TellsOneRemarkALineInTheOrderOfTheProject) {
  MixedProject().ExpectRemarks(
      {"2: error: the icon of node 1 is to be the file 7, which is not in the definition; add it, or take the "
       "reference "
       "away [file-unknown]",
       "5: warning: code file 3, \"b.js\": no node and no dialog refers to it; remove it, or refer to it [file-unused]",
       "5: warning: the attribute \"Kind\" of the File is not read and not kept by a save; remove it, or correct its "
       "name [attribute-unread]"},
      "1 error, 2 warnings", 1);
}

TEST(Check, AnswersWarningsWithSuccessUnlessTheyAreToBeErrors) {
  const CheckedProject folder({R"(<Project Kind="x"/>)"});
  const char* const remark =
      "1: warning: the attribute \"Kind\" of the Project is not read and not kept by a save; remove it, or correct its "
      "name [attribute-unread]";
  folder.ExpectRemarks({remark}, "0 errors, 1 warning", 0);
  folder.ExpectRemarks({remark}, "0 errors, 1 warning", 1, {"--warnings-as-errors"});
}

TEST(Check, PrintsOneJsonObjectForPrograms) {
  using nlohmann::json;
  const CommandResult result = MixedProject().Check({"--json"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "");
  const json expected = {{"file", "console.xml"},
                         {"remarks",
                          {{{"severity", "error"},
                            {"code", "file-unknown"},
                            {"line", 2},
                            {"object", "node"},
                            {"cookie", "1"},
                            {"text", "the icon of node 1 is to be the file 7, which is not in the definition"},
                            {"advice", "add it, or take the reference away"}},
                           {{"severity", "warning"},
                            {"code", "file-unused"},
                            {"line", 5},
                            {"object", "code file"},
                            {"cookie", "3"},
                            {"text", "code file 3, \"b.js\": no node and no dialog refers to it"},
                            {"advice", "remove it, or refer to it"}},
                           {{"severity", "warning"},
                            {"code", "attribute-unread"},
                            {"line", 5},
                            {"object", nullptr},
                            {"cookie", nullptr},
                            {"text", "the attribute \"Kind\" of the File is not read and not kept by a save"},
                            {"advice", "remove it, or correct its name"}}}},
                         {"errors", 1},
                         {"warnings", 2}};
  EXPECT_EQ(json::parse(result.output).dump(1), expected.dump(1));
}

TEST(Check, PrintsJsonOfACleanProject) {
  const CommandResult result = CheckedProject({"<Project/>"}).Check({"--json", "--warnings-as-errors"});
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "{\"file\":\"console.xml\",\n\"remarks\":[],\n\"errors\":0,\n\"warnings\":0}\n");
}

TEST(Check, PrintsJsonInAsciiAlone) {
  const CheckedProject folder(
      {"<Project><FileGroup>", R"(<File Cookie="2" Name="&#xF6;&#x202E;.js"/></FileGroup></Project>)"});
  const std::string output = folder.Check({"--json"}).output;
  EXPECT_TRUE(std::all_of(output.begin(), output.end(), [](char byte) {
    return byte == '\n' || (byte >= ' ' && byte < 0x7F);
  })) << output;
  EXPECT_THAT(output, HasSubstr("\\u00f6\\\\u202E.js"));
}

TEST(Check, NamesMoveNoTerminal) {
  const CheckedProject folder(
      {"<Project><FileGroup>", R"(<File Cookie="2" Name="x&#x9B;2J&#x202E;.js"/></FileGroup></Project>)"});
  EXPECT_THAT(folder.Check().output, HasSubstr("code file 2, \"x\\x9B2J\\u202E.js\": there is no such file; "));
}

constexpr const char* kOfNoType =
    "console.img: warning: node 1 is of no known type, and a save writes \"Oops!!\" for it; give it the type List, "
    "HTML or "
    "Dialog [unknown-type]";

TEST(Check, LooksIntoAnImageWithoutLines) {
  const CheckedProject folder({
      R"(<Project><NodeGroup>)",
      R"(<Node Cookie="1" Name="a" Icon="7" Type="Tree"><MenuScript File="2"/></Node></NodeGroup>)",
      R"(<DialogGroup><Dialog Cookie="0" Name="d" Icon="2" Type="Dialog"><MenuScript/><StyleSheet/></Dialog></DialogGroup>)",
      R"(<FileGroup><Icon Cookie="9" Name="a.ico"/><File Cookie="2" Name="a.js"/><File Cookie="0" Name="b.js"/>)",
      R"(</FileGroup></Project>)",
  });
  ExpectSuccess(folder.Compile());
  const CommandResult result = folder.Run({"check", kImageName});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output,
            Lines({
                kOfNoType,
                // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a long line goes on in the next one
                "console.img: error: the icon of node 1 is to be the file 7, which is not in the definition; add it, "
                "or take the reference away [file-unknown]",
                "console.img: warning: dialog 0 cannot be looked up by its name, because 0 stands for no dialog there; "
                "give it another cookie [dialog-cookie-zero]",
                "console.img: error: the icon of dialog 0 is to be the file 2, which is a code file; name an icon file "
                "[file-of-other-kind]",
                "console.img: warning: icon file 9: no node and no dialog refers to it; remove it, or refer to it "
                "[file-unused]",
                "console.img: warning: code file 0: no node and no dialog refers to it; remove it, or refer to it "
                "[file-unused]",
                "console.img: warning: code file 0: where records refer to files, 0 stands for none; give it another "
                "cookie [file-cookie-zero]",
                "2 errors, 5 warnings",
            }));
}

TEST(Check, OfAMissingFileFails) {
  ExpectFailure(ProjectFolder().Run({"check", "gone.xml"}), "gone.xml: there is no such file; ", "0x80070002");
  ExpectFailure(ProjectFolder().Run({"check", "--json", "gone.xml"}), "gone.xml: there is no such file; ",
                "0x80070002");
}

TEST(Check, OfAnEmptyFileOrAFolderFails) {
  const ProjectFolder folder;
  folder.Write("empty.xml", "");
  folder.Write("folder/inside", "");
  ExpectFailure(folder.Run({"check", "empty.xml"}), "empty.xml: the file is empty; ", "0x8007000D");
  ExpectFailure(folder.Run({"check", "folder"}), "folder: it is a folder; ", "0x80070005");
}

TEST(Check, RefusesWrongUsage) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"check"}, {"check", "a.xml", "b.xml"}, {"check", "--nothing", "a.xml"}}) {
    const CommandResult result = ProjectFolder().Run(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr("Try 'ondrel check --help'."));
  }
}

TEST(Check, IsFoundInTheHelp) {
  EXPECT_THAT(ProjectFolder().Run({"--help"}).output, HasSubstr("  check "));
  EXPECT_THAT(ProjectFolder().Run({"check", "--help"}).output, HasSubstr("--warnings-as-errors"));
}

TEST(Check, BearsADeepTree) {
  const ProjectFolder folder;
  folder.WriteProject(ChainProject(kDeepChain));
  const CommandResult deep = folder.Run({"check", kProjectName});
  ExpectSuccess(deep);
  EXPECT_EQ(deep.output, "console.xml: nothing was found\n");
}

TEST(Check, BearsManyRemarks) {
  const ProjectFolder folder;
  constexpr int kManyNodes = kSanitized ? 20'000 : 100'000;
  std::string text =
      "<Project><NodeGroup>\n<Node Cookie=\"0\" Name=\"n\" Icon=\"0\" Type=\"List\"><MenuScript/><Nodes>\n";
  for (int node = 1; node <= kManyNodes; ++node) {
    text += "<Node Cookie=\"-" + std::to_string(node) + "\" Name=\"n\" Icon=\"5\" Type=\"List\"><MenuScript/></Node>\n";
  }
  folder.WriteProject(text + "</Nodes></Node></NodeGroup></Project>");
  const CommandResult many = folder.Run({"check", kProjectName});
  EXPECT_EQ(many.exitCode, 1) << many.errors;
  EXPECT_EQ(std::count(many.output.begin(), many.output.end(), '\n'), 2 * kManyNodes + 1);
}

}  // namespace
}  // namespace ondrel::test
