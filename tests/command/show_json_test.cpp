// What `ondrel show --json` prints for programs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

using nlohmann::json;

const std::string kShownAsJson = Lines({
    R"(<Project><NodeGroup>)",
    R"(<Node Cookie="9007199254740993" Name="T&#xF6;p &#x1F4BE;" Icon="-7" Type="HTML">)",
    R"(<ChildQueries><Query Tag="Disks" File="9"/><Query Tag="" File="0"/></ChildQueries>)",
    R"(<MenuScript File="8"/><Scripts><Script File="8"/><Script File="9223372036854775807"/></Scripts>)",
    R"(<StyleSheet File="9"/><RenderQueries><Query Tag="Sum" File="8"/></RenderQueries>)",
    R"(<Nodes>)",
    R"(<Node Cookie="2" Name="b" Icon="0" Type="Tree"><MenuScript/></Node>)",
    R"(<Node Cookie="1" Name="a" Icon="0" Type="list"><MenuScript/></Node>)",
    R"(</Nodes></Node></NodeGroup>)",
    R"(<DialogGroup><Dialog Cookie="3" Name="Ask" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog></DialogGroup>)",
    R"(<FileGroup><Icon Cookie="-7" Name="icons\top.ico"/><File Cookie="8" Name="a.js"/><File Cookie="9" Name="gone.js"/>)",
    R"(</FileGroup></Project>)",
});

json Leaf(const char* cookie, const char* name, const char* type) {
  return {{"cookie", cookie},
          {"name", name},
          {"type", type},
          {"icon", "0"},
          {"childQueries", json::array()},
          {"renderQueries", json::array()},
          {"menuScript", "0"},
          {"scripts", json::array()},
          {"styleSheet", "0"}};
}

json ExpectedNodes() {
  json first = Leaf("1", "a", "List");
  json second = Leaf("2", "b", "Oops!!");
  first["children"] = json::array();
  second["children"] = json::array();
  const json top = {{"cookie", "9007199254740993"},
                    {"name", "T\xC3\xB6p \xF0\x9F\x92\xBE"},
                    {"type", "HTML"},
                    {"icon", "-7"},
                    {"childQueries", {{{"tag", "Disks"}, {"file", "9"}}, {{"tag", ""}, {"file", "0"}}}},
                    {"renderQueries", json::array({{{"tag", "Sum"}, {"file", "8"}}})},
                    {"menuScript", "8"},
                    {"scripts", {"8", "9223372036854775807"}},
                    {"styleSheet", "9"},
                    {"children", {first, second}}};
  return json::array({top});
}

const json kIconImages = {{"large", {{"width", 32}, {"height", 32}, {"bitsPixel", 32}}},
                          {"small", {{"width", 16}, {"height", 16}, {"bitsPixel", 32}}}};

TEST(ShowJson, TellsEverythingOfAProject) {
  const ProjectFolder folder;
  folder.WriteProject(kShownAsJson);
  folder.Write("icons/top.ico", SmallIconFile());
  folder.Write("a.js", "run()");
  json icon = kIconImages;
  icon["cookie"] = "-7";
  icon["path"] = "icons\\top.ico";
  const json expected = {{"form", "project"},
                         {"nodes", ExpectedNodes()},
                         {"dialogs", json::array({Leaf("3", "Ask", "Dialog")})},
                         {"icons", json::array({icon})},
                         {"codeFiles",
                          {{{"cookie", "8"}, {"path", "a.js"}, {"bytes", 5}},
                           {{"cookie", "9"}, {"path", "gone.js"}, {"bytes", nullptr}}}}};
  EXPECT_EQ(folder.Json(kProjectName).dump(1), expected.dump(1));
}

TEST(ShowJson, TellsEverythingOfAnImage) {
  const ProjectFolder folder;
  folder.WriteProject(kShownAsJson);
  folder.Write("icons/top.ico", SmallIconFile());
  folder.Write("a.js", "run()");
  folder.Write("gone.js", "");
  ExpectSuccess(folder.Compile());
  json icon = kIconImages;
  icon["cookie"] = "-7";
  icon["path"] = nullptr;
  const json expected = {
      {"form", "image"},
      {"nodes", ExpectedNodes()},
      {"dialogs", json::array({Leaf("3", "Ask", "Dialog")})},
      {"icons", json::array({icon})},
      {"codeFiles",
       {{{"cookie", "8"}, {"path", nullptr}, {"bytes", 5}}, {{"cookie", "9"}, {"path", nullptr}, {"bytes", 0}}}}};
  EXPECT_EQ(folder.Json(kImageName).dump(1), expected.dump(1));
}

TEST(ShowJson, AnEmptyDefinitionHasEmptyLists) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  const json expected = {{"form", "project"},
                         {"nodes", json::array()},
                         {"dialogs", json::array()},
                         {"icons", json::array()},
                         {"codeFiles", json::array()}};
  EXPECT_EQ(folder.Json(kProjectName), expected);
}

TEST(ShowJson, AFileOutsideTheProjectsFolderKeepsItsPath) {
  const ProjectFolder folder;
  const ProjectFolder other;
  const std::string path = Utf8(other.Write("a.js", "12345678"));
  folder.WriteProject("<Project><FileGroup><File Cookie=\"1\" Path=\"" + path + "\"/></FileGroup></Project>");
  const json expected = json::array({{{"cookie", "1"}, {"path", path}, {"bytes", 8}}});
  EXPECT_EQ(folder.Json(kProjectName)["codeFiles"], expected);
}

TEST(ShowJson, IsPlainAscii) {
  const ProjectFolder folder;
  folder.WriteProject(kShownAsJson);
  folder.Write("icons/top.ico", SmallIconFile());
  const std::string output = folder.Run({"show", "--json", kProjectName}).output;
  const auto isPlain = [](char byte) { return byte == '\n' || (byte >= 0x20 && byte < 0x7F); };
  EXPECT_TRUE(std::all_of(output.begin(), output.end(), isPlain)) << output;
}

}  // namespace
}  // namespace ondrel::test
