// Text beyond ASCII in a project: what is read of it, and what a host's library would read instead.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

/// One node whose name is given as it stands between the quotes of its attribute.
std::string ProjectOfName(std::string_view name) {
  return "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\n<Project><NodeGroup><Node Cookie=\"1\" "
         "Name=\"" +
         std::string(name) + "\" Icon=\"0\" Type=\"List\"><MenuScript/></Node></NodeGroup></Project>\n";
}

nlohmann::json NameOf(const ProjectFolder& folder, const std::vector<std::string>& options = {}) {
  std::vector<std::string> arguments = {"show", "--json", kProjectName};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const CommandResult result = folder.Run(arguments);
  EXPECT_EQ(result.errors, "");
  return nlohmann::json::parse(result.output)["nodes"][0]["name"];
}

TEST(Text, IsReadAsUtf8) {
  const ProjectFolder folder;
  const std::string name = "Zm\xC4\x9Bna \xE2\x82\xAC \xF0\x9F\x92\xBE \xE6\x97\xA5\xE6\x9C\xAC";  // 2, 3, 4 bytes
  folder.WriteProject(ProjectOfName(name));
  EXPECT_EQ(NameOf(folder), name);
}

TEST(Text, RawTextIsWhatAHostReads) {
  const ProjectFolder folder;
  folder.WriteProject(ProjectOfName("caf\xC3\xA9 \xE2\x82\xAC"));
  // C3 is U+00C3 in code page 1252, A9 U+00A9, E2 U+00E2, 82 U+201A and AC U+00AC.
  EXPECT_EQ(NameOf(folder, {"--raw-text"}), "caf\xC3\x83\xC2\xA9 \xC3\xA2\xE2\x80\x9A\xC2\xAC");
}

TEST(Text, BytesThatAreNoUtf8AreReadAsAHostReadsThem) {
  const ProjectFolder folder;
  folder.WriteProject(ProjectOfName("caf\xE9 \x80 and caf\xC3\xA9"));
  EXPECT_EQ(NameOf(folder), "caf\xC3\xA9 \xE2\x82\xAC and caf\xC3\xA9");
}

TEST(Text, InAnImageIsThatOfReferences) {
  const ProjectFolder folder;
  folder.WriteProject(ProjectOfName("na\xC3\xAFve \xF0\x9F\x92\xBE"));
  ExpectSuccess(folder.Compile());
  const std::string image = ReadBytes(folder / kImageName);
  folder.WriteProject(ProjectOfName("na&#xEF;ve &#128190;"));
  ExpectSuccess(folder.Run({"compile", kProjectName, "-o", "references.img", "--raw-text"}));
  EXPECT_EQ(image, ReadBytes(folder / "references.img"));
  EXPECT_EQ(folder.Json(kImageName)["nodes"][0]["name"], "na\xC3\xAFve \xF0\x9F\x92\xBE");
}

TEST(Text, ComesFromEntitiesToo) {
  const ProjectFolder folder;
  folder.WriteProject(
      "<!DOCTYPE Project [<!ENTITY n \"\xC3\xA9t\xC3\xA9\">]><Project><NodeGroup><Node Cookie=\"1\" Name=\"&n;\" "
      "Icon=\"0\" "
      "Type=\"List\"><MenuScript/></Node></NodeGroup></Project>");
  EXPECT_EQ(NameOf(folder), "\xC3\xA9t\xC3\xA9");
}

TEST(Text, NamesOfFilesAreTextToo) {
  const ProjectFolder folder;
  folder.WriteProject(
      "<Project><FileGroup><File Cookie=\"1\" Name=\"r\xC3\xA9sum\xC3\xA9.js\"/></FileGroup></Project>");
  folder.Write("r\xC3\xA9sum\xC3\xA9.js", "x");
  ExpectSuccess(folder.Compile());
  EXPECT_EQ(folder.Json(kProjectName)["codeFiles"][0]["path"], "r\xC3\xA9sum\xC3\xA9.js");
}

TEST(Text, LinesStayThoseOfTheFile) {
  const ProjectFolder folder;
  folder.WriteProject(
      "<Project><NodeGroup>\n<!-- \xC3\xA9 -->\n<Node Cookie=\"1\" Name=\"\xC3\xA9\n\xC3\xA9\" Icon=\"0\"/>\n" +
      std::string("</NodeGroup></Project>"));
  ExpectFailure(folder.Compile(), "console.xml:3: node 1 has no Type attribute", "0x8007000D");
}

TEST(Text, AByteOrderMarkIsRefusedAsAHostRefusesIt) {
  const ProjectFolder folder;
  folder.WriteProject("\xEF\xBB\xBF" + ProjectOfName("caf\xC3\xA9"));
  ExpectFailure(folder.Compile(), "console.xml:1: the text begins with a byte-order mark", "0x8007000D");
}

}  // namespace
}  // namespace ondrel::test
