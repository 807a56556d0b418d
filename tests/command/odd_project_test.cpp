// Projects that look wrong and load all the same: what the library passes over, the command does too.
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

std::string OneNode(std::string_view inside) {
  return "<Project><NodeGroup><Node Cookie=\"1\" Name=\"a\" Icon=\"0\" Type=\"List\">" + std::string(inside) +
         "</Node></NodeGroup></Project>";
}

nlohmann::json LoadedNode(std::string_view inside) {
  const ProjectFolder folder;
  folder.WriteProject(OneNode(inside));
  return folder.Json(kProjectName)["nodes"][0];
}

TEST(OddProject, AScriptThatIsNoNumberEndsTheScriptsSilently) {
  const auto node =
      LoadedNode(R"(<MenuScript/><Scripts><Script File="4"/><Script File=""/><Script File="5"/></Scripts>)");
  EXPECT_EQ(node["scripts"], nlohmann::json::array({"4"}));
}

TEST(OddProject, AScriptWithoutFileThatNoLoadReadsIsNoReasonToRefuse) {
  const ProjectFolder folder;
  folder.WriteProject(Lines({
      "<Project>",
      "<Scripts><Script/></Scripts>",
      "<Node><Scripts><Script/></Scripts></Node>",
      "<Nodes><Node><Scripts><Script/></Scripts></Node></Nodes>",
      "<NodeGroup><Folder><Node><Scripts><Script/></Scripts></Node></Folder>",
      "<Dialog><Scripts><Script/></Scripts></Dialog></NodeGroup>",
      "<DialogGroup><Node><Scripts><Script/></Scripts></Node></DialogGroup>",
      "</Project>",
  }));
  EXPECT_EQ(folder.Json(kProjectName)["nodes"], nlohmann::json::array());
  ExpectSuccess(folder.Compile());
}

TEST(OddProject, AScriptMayNameItsFileInAnyWayThatXmlHas) {
  const auto node = LoadedNode(
      "<MenuScript/><Scripts><Script\tFile='4'></Script><Script a='/>' File = \n \"5\" /><!-- "
      "<Script/> --><Scripted/></Scripts>");
  EXPECT_EQ(node["scripts"], nlohmann::json::array({"4", "5"}));
}

TEST(OddProject, AFileReferenceWithoutFileIsNone) { EXPECT_EQ(LoadedNode("<MenuScript/>")["menuScript"], "0"); }

TEST(OddProject, OfTwoMenuScriptsTheFirstIsRead) {
  EXPECT_EQ(LoadedNode(R"(<MenuScript File="3"/><MenuScript File="no number"/>)")["menuScript"], "3");
}

TEST(OddProject, AListNodesViewIsNotRead) {
  const auto node = LoadedNode(R"(<MenuScript/><StyleSheet File="x"/><RenderQueries><Query/></RenderQueries>)");
  EXPECT_EQ(node["styleSheet"], "0");
  EXPECT_EQ(node["renderQueries"], nlohmann::json::array());
}

TEST(OddProject, AttributesTakeBlanksAndSignsAroundTheirNumbers) {
  EXPECT_EQ(LoadedNode(R"(<MenuScript File=" +12 "/>)")["menuScript"], "12");
}

TEST(OddProject, OnlyTheFirstFileGroupIsRead) {
  const ProjectFolder folder;
  folder.WriteProject(Lines({
      R"(<Project><FileGroup><File Cookie="1" Name="a.js"/></FileGroup>)",
      R"(<FileGroup><File Cookie="1" Name="a.js"/><File/><Icon Cookie="x" Name="gone.ico"/></FileGroup></Project>)",
  }));
  folder.Write("a.js", "");
  EXPECT_EQ(folder.Json(kProjectName)["codeFiles"].size(), 1U);
  ExpectSuccess(folder.Compile());
}

TEST(OddProject, OneFileMayBeAnIconFileAndACodeFile) {
  const ProjectFolder folder;
  folder.WriteProject(
      R"(<Project><FileGroup><Icon Cookie="1" Name="a.ico"/><File Cookie="2" Name="a.ico"/></FileGroup></Project>)");
  folder.Write("a.ico", SmallIconFile());
  ExpectSuccess(folder.Compile());
}

TEST(OddProject, AnIconAndACodeFileOfOneCookieAreNotCompiled) {
  const ProjectFolder folder;
  folder.WriteProject(Lines({R"(<Project><FileGroup><Icon Cookie="1" Name="a.ico"/>)",
                             R"(<File Cookie="1" Name="a.js"/></FileGroup></Project>)"}));
  folder.Write("a.ico", SmallIconFile());
  folder.Write("a.js", "");
  ExpectSuccess(folder.Show(kProjectName));
  ExpectFailure(folder.Compile(),
                "console.xml:2: code file 1, \"a.js\": its cookie is also that of the icon file in line 1; ",
                "0x800700B7");
}

}  // namespace
}  // namespace ondrel::test
