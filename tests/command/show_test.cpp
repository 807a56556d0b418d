// What `ondrel show` draws for people.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string kShownProject = Lines({
    R"(<Project><NodeGroup>)",
    R"(<Node Cookie="0" Name="Top" Icon="7" Type="List"><MenuScript File="8"/>)",
    R"(<Nodes>)",
    R"(<Node Cookie="1" Name="First" Icon="0" Type="HTML"><ChildQueries><Query Tag="Disks" File="9"/></ChildQueries>)",
    R"(<MenuScript/><Scripts><Script File="8"/><Script File="9"/></Scripts><StyleSheet File="44"/>)",
    R"(<RenderQueries><Query Tag="Sum" File="0"/></RenderQueries>)",
    R"(<Nodes><Node Cookie="4" Name="Inner" Icon="0" Type="List"><MenuScript/></Node></Nodes></Node>)",
    R"(<Node Cookie="2" Name="Second" Icon="0" Type="Tree"><MenuScript/></Node>)",
    R"(</Nodes></Node></NodeGroup>)",
    R"(<DialogGroup><Dialog Cookie="3" Name="Ask" Icon="7" Type="Dialog"><MenuScript/><StyleSheet/></Dialog></DialogGroup>)",
    R"(<FileGroup><Icon Cookie="7" Name="icons\top.ico"/><File Cookie="8" Name="a.js"/><File Cookie="9" Name="b.js"/>)",
    R"(</FileGroup></Project>)",
});

void WriteShownDefinition(const ProjectFolder& folder) {
  folder.WriteProject(kShownProject);
  folder.Write("icons/top.ico", SmallIconFile());
  folder.Write("a.js", "run()");
  folder.Write("b.js", "");
}

TEST(Show, DrawsAProject) {
  const ProjectFolder folder;
  WriteShownDefinition(folder);
  const CommandResult result = folder.Show(kProjectName);
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "console.xml: project, 4 nodes, 1 dialog, 1 icon, 2 code files\n"
            "\n"
            "Nodes        Type    Cookie  Icon           Files\n"
            "Top          List    0       icons\\top.ico  menu a.js\n"
            "├─ First     HTML    1                      scripts a.js, b.js; style 44 (missing); "
            "children Disks = b.js; view Sum = none\n"
            "│  └─ Inner  List    4\n"
            "└─ Second    Oops!!  2\n"
            "\n"
            "Dialogs  Type    Cookie  Icon           Files\n"
            "Ask      Dialog  3       icons\\top.ico\n"
            "\n"
            "Icons  Large            Small            Path\n"
            "    7  32 x 32, 32 bit  16 x 16, 32 bit  icons\\top.ico\n"
            "\n"
            "Code files  Bytes  Path\n"
            "         8      5  a.js\n"
            "         9      0  b.js\n");
}

TEST(Show, DrawsAnImageByCookies) {
  const ProjectFolder folder;
  WriteShownDefinition(folder);
  ExpectSuccess(folder.Compile());
  const CommandResult result = folder.Show(kImageName);
  ExpectSuccess(result);
  EXPECT_THAT(result.output, HasSubstr("console.img: image, 4 nodes, 1 dialog, 1 icon, 2 code files\n"));
  EXPECT_THAT(result.output, HasSubstr("\nTop          List    0       7     menu 8\n"));
  EXPECT_THAT(result.output, HasSubstr("\n│  └─ Inner  List    4\n"));
  EXPECT_THAT(result.output, HasSubstr("\n         8      5\n         9      0\n"));
}

TEST(Show, AProjectWithSeveralTopLevelNodesIsShownWhole) {
  const ProjectFolder folder;
  folder.WriteProject(
      Lines({R"(<Project><NodeGroup><Node Cookie="1" Name="one" Icon="0" Type="List"><MenuScript/></Node>)",
             R"(<Node Cookie="2" Name="two" Icon="0" Type="List"><MenuScript/></Node></NodeGroup>)", R"(</Project>)"}));
  const CommandResult result = folder.Show(kProjectName);
  ExpectSuccess(result);
  EXPECT_EQ(result.output,
            "console.xml: project, 2 nodes, 0 dialogs, 0 icons, 0 code files\n"
            "\n"
            "Nodes  Type  Cookie  Icon  Files\n"
            "one    List  1\n"
            "two    List  2\n");
}

TEST(Show, AMissingCodeFileIsShownAsUnreadable) {
  const ProjectFolder folder;
  folder.WriteProject(R"(<Project><FileGroup><File Cookie="1" Name="gone.js"/></FileGroup></Project>)");
  const CommandResult result = folder.Show(kProjectName);
  ExpectSuccess(result);
  EXPECT_THAT(result.output, HasSubstr("         1  unreadable  gone.js\n"));
}

TEST(Show, ControlCharactersNeverReachTheTerminal) {
  const ProjectFolder folder;
  // C1 controls stand for themselves in the narrow code page; the references name a line feed, an override of direction
  // and an escape's sister, CSI.
  folder.WriteProject(
      "<Project><NodeGroup><Node Cookie=\"1\" Name=\"a&#10;b&#x202E;c&#x9B;31m\x9Dq\" Icon=\"0\" Type=\"List\">"
      "<MenuScript/></Node></NodeGroup></Project>");
  const CommandResult result = folder.Show(kProjectName);
  ExpectSuccess(result);
  EXPECT_THAT(result.output, HasSubstr("\na\\nb\\u202Ec\\x9B31m\\x9Dq  List  1\n"));
  EXPECT_THAT(folder.Run({"show", "--json", kProjectName}).output, Not(HasSubstr("\xC2\x9B")));
}

TEST(Show, ATreeOfAnyDepthIsShown) {
  const ProjectFolder folder;
  folder.WriteProject(ChainProject(kDeepChain));

  const CommandResult drawn = folder.Show(kProjectName);
  ExpectSuccess(drawn);
  EXPECT_THAT(drawn.output, HasSubstr("[level " + std::to_string(kDeepChain - 1) + "] └─ n"));
  EXPECT_LT(drawn.output.size(), 20'000'000U) << "branches as wide as the tree is deep";

  const nlohmann::json json = folder.Json(kProjectName);
  const nlohmann::json* nodes = &json["nodes"];
  int levels = 0;
  for (; nodes->size() == 1; ++levels) nodes = &(*nodes)[0]["children"];
  EXPECT_EQ(levels, kDeepChain);
}

TEST(Show, AnImageOfAnyDepthIsShown) {
  const ProjectFolder folder;
  folder.Write(kImageName, ChainImage(kDeepChain));
  const CommandResult drawn = folder.Show(kImageName);
  ExpectSuccess(drawn);
  EXPECT_THAT(drawn.output, HasSubstr("[level " + std::to_string(kDeepChain - 1) + "] └─ n"));
}

}  // namespace
}  // namespace ondrel::test
