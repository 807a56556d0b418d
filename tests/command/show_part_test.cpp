// What `ondrel show --node` and `ondrel show --record` show of a definition.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

const std::string kProjectOfParts = Lines({
    R"(<Project><NodeGroup>)",
    R"(<Node Cookie="0" Name="Top" Icon="70" Type="List"><MenuScript File="8"/>)",
    R"(<Nodes>)",
    R"(<Node Cookie="1" Name="Disks" Icon="7" Type="HTML"><ChildQueries><Query Tag="Each" File="9"/></ChildQueries>)",
    R"(<MenuScript/><Scripts><Script File="10"/><Script File="9"/><Script File="10"/></Scripts><StyleSheet File="44"/>)",
    R"(<RenderQueries><Query Tag="Sum" File="0"/><Query Tag="Max" File="9"/></RenderQueries>)",
    R"(<Nodes><Node Cookie="4" Name="Inner" Icon="0" Type="List"><MenuScript File="11"/></Node></Nodes></Node>)",
    R"(<Node Cookie="2" Name="Other" Icon="0" Type="Tree"><MenuScript/></Node>)",
    R"(</Nodes></Node></NodeGroup>)",
    R"(<DialogGroup><Dialog Cookie="3" Name="Ask" Icon="7" Type="Dialog"><MenuScript File="8"/><StyleSheet/></Dialog>)",
    R"(</DialogGroup>)",
    R"(<FileGroup><Icon Cookie="7" Name="icons\disk.ico"/><Icon Cookie="70" Name="icons\top.ico"/>)",
    R"(<File Cookie="8" Name="a.js"/><File Cookie="9" Name="b.xml"/><File Cookie="10" Name="c.js"/>)",
    R"(<File Cookie="11" Name="gone.js"/></FileGroup></Project>)",
});

class ShowPart : public testing::Test {
 protected:
  ShowPart() {
    folder.WriteProject(kProjectOfParts);
    folder.Write("icons/disk.ico", SmallIconFile());
    folder.Write("icons/top.ico", SmallIconFile());
    folder.Write("a.js", "run()");
    folder.Write("b.xml", "1");
    folder.Write("c.js", "");
  }

  CommandResult Show(const char* option, const std::string& name) const {
    return folder.Run({"show", kProjectName, option, name});
  }
  json PartAsJson(const char* option, const std::string& name) const {
    const CommandResult result = folder.Run({"show", "--json", option, name, kProjectName});
    ExpectSuccess(result);
    return json::parse(result.output);
  }

  const ProjectFolder folder;
};

TEST_F(ShowPart, ASubtreeHasItsNodesAndTheFilesThatTheyUse) {
  const CommandResult result = Show("--node", "1");
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "console.xml: project, subtree of node 1, 2 nodes, 1 icon, 3 code files\n"
            "\n"
            "Nodes     Type  Cookie  Icon            Files\n"
            "Disks     HTML  1       icons\\disk.ico  scripts c.js, b.xml, c.js; style 44 (missing); "
            "children Each = b.xml; view Sum = none, Max = b.xml\n"
            "└─ Inner  List  4                       menu gone.js\n"
            "\n"
            "Icons  Large            Small            Path\n"
            "    7  32 x 32, 32 bit  16 x 16, 32 bit  icons\\disk.ico\n"
            "\n"
            "Code files       Bytes  Path\n"
            "         9           1  b.xml\n"
            "        10           0  c.js\n"
            "        11  unreadable  gone.js\n");
}

TEST_F(ShowPart, ASubtreeIsNamedByThePathOfItsNode) {
  EXPECT_EQ(Show("--node", "Top/Disks").output, Show("--node", "1").output);
  EXPECT_EQ(Show("--node", "Top").output, Show("--node", "0").output);
}

TEST_F(ShowPart, ASubtreeWithoutFilesIsItsNodesAlone) {
  const CommandResult result = Show("--node", "2");
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "console.xml: project, subtree of node 2, 1 node, 0 icons, 0 code files\n"
            "\n"
            "Nodes  Type    Cookie  Icon  Files\n"
            "Other  Oops!!  2\n");
}

TEST_F(ShowPart, ASubtreeAsJsonIsThatPartOfTheWhole) {
  const json whole = folder.Json(kProjectName);
  const json part = PartAsJson("--node", "1");
  EXPECT_EQ(part["form"], "project");
  EXPECT_EQ(part["nodes"], json::array({whole["nodes"][0]["children"][0]}));
  EXPECT_EQ(part["dialogs"], json::array());
  EXPECT_EQ(part["icons"], json::array({whole["icons"][0]}));
  EXPECT_EQ(part["codeFiles"], json::array({whole["codeFiles"][1], whole["codeFiles"][2], whole["codeFiles"][3]}));
}

TEST_F(ShowPart, ARecordOfANodeHasEveryField) {
  const CommandResult result = Show("--record", "1");
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "console.xml: project, node 1\n"
            "\n"
            "Name            Disks\n"
            "Cookie          1\n"
            "Type            HTML\n"
            "Parent          0  Top\n"
            "Children        4  Inner\n"
            "Icon            7  icons\\disk.ico  large 32 x 32, 32 bit; small 16 x 16, 32 bit\n"
            "Child queries   Each = 9  b.xml  1 byte\n"
            "Menu script     none\n"
            "Scripts         10  c.js  0 bytes\n"
            "                9  b.xml  1 byte\n"
            "                10  c.js  0 bytes\n"
            "Style sheet     44 (missing)\n"
            "Render queries  Sum = none\n"
            "                Max = 9  b.xml  1 byte\n");
}

TEST_F(ShowPart, ARecordOfATopLevelNodeListsItsChildren) {
  const CommandResult result = Show("--record", "Top");
  ExpectSuccess(result);
  EXPECT_THAT(result.output, HasSubstr("\nParent          none, it is a top-level node\n"
                                       "Children        1  Disks\n"
                                       "                2  Other\n"
                                       "Icon            70  icons\\top.ico  large "));
  EXPECT_THAT(result.output, HasSubstr("\nScripts         none\nStyle sheet     none\nRender queries  none\n"));
}

TEST_F(ShowPart, ARecordOfANodeNamesAFileThatCannotBeRead) {
  EXPECT_THAT(Show("--record", "4").output, HasSubstr("\nMenu script     11  gone.js  unreadable\n"));
}

TEST_F(ShowPart, ARecordOfADialogHasNoRelatives) {
  const CommandResult result = Show("--record", "3");
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "console.xml: project, dialog 3\n"
            "\n"
            "Name            Ask\n"
            "Cookie          3\n"
            "Type            Dialog\n"
            "Icon            7  icons\\disk.ico  large 32 x 32, 32 bit; small 16 x 16, 32 bit\n"
            "Child queries   none\n"
            "Menu script     8  a.js  5 bytes\n"
            "Scripts         none\n"
            "Style sheet     none\n"
            "Render queries  none\n");
}

TEST_F(ShowPart, ARecordOfAnImageHasFilesByCookie) {
  folder.Write("gone.js", "back");
  ExpectSuccess(folder.Compile());
  const CommandResult result = folder.Run({"show", kImageName, "--record", "4"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::StartsWith("console.img: image, node 4\n\nName            Inner\n"));
  EXPECT_THAT(result.output, HasSubstr("\nMenu script     11  4 bytes\n"));
}

TEST_F(ShowPart, ARecordOfANodeAsJson) {
  const json whole = folder.Json(kProjectName);
  json record = whole["nodes"][0]["children"][0];
  record.erase("children");
  const json expected = {{"form", "project"},
                         {"kind", "node"},
                         {"record", record},
                         {"parent", {{"cookie", "0"}, {"name", "Top"}}},
                         {"children", json::array({{{"cookie", "4"}, {"name", "Inner"}}})},
                         {"icons", json::array({whole["icons"][0]})},
                         {"codeFiles", json::array({whole["codeFiles"][1], whole["codeFiles"][2]})}};
  EXPECT_EQ(PartAsJson("--record", "1").dump(1), expected.dump(1));
}

TEST_F(ShowPart, ARecordOfADialogAsJson) {
  const json shown = PartAsJson("--record", "3");
  EXPECT_EQ(shown["kind"], "dialog");
  EXPECT_EQ(shown["record"], folder.Json(kProjectName)["dialogs"][0]);
  EXPECT_EQ(shown["parent"], nullptr);
  EXPECT_EQ(shown["children"], json::array());
  EXPECT_EQ(PartAsJson("--record", "0")["parent"], nullptr);
}

TEST_F(ShowPart, WhatIsNotThereIsToldInOneLine) {
  for (const char* const option : {"--node", "--record"}) {
    for (const char* const name : {"99", "-1", "Top/Nothing", "Disks\n\x1B[31m"}) {
      SCOPED_TRACE(std::string(option) + ' ' + name);
      ExpectFailure(Show(option, name), "console.xml: ", "0x80070490");
    }
  }
}

TEST_F(ShowPart, AnEmptyNameIsRefused) { ExpectFailure(Show("--node", ""), "console.xml: ", "0x80070057"); }

TEST_F(ShowPart, ADialogHasNoSubtree) {
  ExpectFailure(Show("--node", "3"), "console.xml: dialog 3 is no node and has no tree; show it with --record ",
                "0x80070490");
}

TEST_F(ShowPart, ASubtreeAndARecordTogetherAreWrongUsage) {
  const CommandResult result = folder.Run({"show", kProjectName, "--node", "1", "--record", "1"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.errors, "ondrel: --node excludes --record\nTry 'ondrel show --help'.\n");
}

TEST(ShowNegativeCookie, ANodeThatIsNotListedIsShownWhenItIsNamed) {
  const ProjectFolder folder;
  folder.WriteProject(
      Lines({R"(<Project><NodeGroup><Node Cookie="1" Name="top" Icon="0" Type="List"><MenuScript/><Nodes>)",
             R"(<Node Cookie="-3" Name="a" Icon="0" Type="List"><MenuScript/><Nodes>)",
             R"(<Node Cookie="2" Name="b" Icon="0" Type="List"><MenuScript/></Node></Nodes></Node></Nodes></Node>)",
             R"(</NodeGroup></Project>)"}));
  const CommandResult subtree = folder.Run({"show", kProjectName, "--node", "-3"});
  ExpectSuccess(subtree);
  EXPECT_THAT(subtree.output, HasSubstr("\nNodes  Type  Cookie  Icon  Files\na      List  -3\n└─ b   List  2\n"));
  const CommandResult record = folder.Run({"show", kProjectName, "--record", "-3"});
  ExpectSuccess(record);
  EXPECT_THAT(record.output, HasSubstr("\nParent          unknown: a node with a negative cookie, "));
  EXPECT_THAT(record.output, HasSubstr("\nChildren        2  b\n"));
}

TEST(ShowNames, WithEscapesNeverReachTheTerminal) {
  const ProjectFolder folder;
  folder.WriteProject(Lines(
      {R"(<Project><NodeGroup><Node Cookie="1" Name="a&#10;&#x9B;31m" Icon="0" Type="HTML">)",
       R"(<MenuScript/><StyleSheet/><RenderQueries><Query Tag="t&#x202E;&#13;" File="2"/></RenderQueries></Node>)",
       R"(</NodeGroup><FileGroup><File Cookie="2" Name="f&#x9B;2J"/></FileGroup></Project>)"}));
  for (const char* const colours : {"never", "always"}) {
    const CommandResult result = folder.Run({"show", kProjectName, "--record", "1", "--color", colours});
    ExpectSuccess(result);
    EXPECT_THAT(result.output, HasSubstr("a\\n\\x9B31m"));
    EXPECT_THAT(result.output, HasSubstr("t\\u202E\\r = "));
    EXPECT_THAT(result.output, HasSubstr("f\\x9B2J"));
    EXPECT_THAT(result.output, testing::Not(HasSubstr("\xC2\x9B")));
  }
}

TEST(ShowSubtree, OfAnyDepthIsShown) {
  const ProjectFolder folder;
  folder.Write(kImageName, ChainImage(kDeepChain));
  const CommandResult result = folder.Run({"show", kImageName, "--node", "5"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, HasSubstr("subtree of node 5, " + std::to_string(kDeepChain - 5) + " nodes, "));
  const CommandResult record = folder.Run({"show", kImageName, "--record", std::to_string(kDeepChain - 1)});
  ExpectSuccess(record);
  EXPECT_THAT(record.output, HasSubstr("\nParent          " + std::to_string(kDeepChain - 2) + "  n\n"));
}

}  // namespace
}  // namespace ondrel::test
