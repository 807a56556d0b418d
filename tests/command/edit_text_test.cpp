// What edits do to text: none of it is lost, in a project or in an image that is made of it.
#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "edit_folder.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// Letters of the narrow code page, letters that it does not have, and a character of two UTF-16 units.
const std::string kForeign =
    "Gr\xC3\xB6\xC3\x9F"
    "e \xE6\x96\x87 \xF0\x9F\x98\x80";
const std::string kForeignReferences = "Gr&#246;&#223;e &#25991; &#128512;";

bool IsAscii(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](char byte) { return (byte & 0x80) == 0; });
}

TEST(EditText, OutsideAsciiSurvivesTenEditsAndACompile) {
  const EditFolder folder;
  folder.Write(kForeign + ".js", "f");
  folder.WriteProject("<Project><NodeGroup>" + ListNode("0", kForeign) + "<Nodes>" + ListNode("1", "b") +
                      "</Node></Nodes></Node></NodeGroup><FileGroup><File Cookie=\"7\" Name=\"" + kForeign +
                      ".js\"/></FileGroup></Project>");
  for (int edit = 0; edit < 10; ++edit) {
    folder.ExpectEdit({"set", kProjectName, kForeign + "/b", "--type", edit % 2 == 0 ? "html" : "list", "--script",
                       kForeign + ".js", "--child-query", kForeign + "=7"},
                      "node 1: b\n");
    const std::string saved = ReadBytes(folder / kProjectName);
    EXPECT_TRUE(IsAscii(saved)) << saved;
    EXPECT_THAT(saved, HasSubstr(" Name=\"" + kForeignReferences + "\""));
    EXPECT_THAT(saved, HasSubstr(" Tag=\"" + kForeignReferences + "\""));
    EXPECT_THAT(saved, HasSubstr(" Name=\"" + kForeignReferences + ".js\""));
  }
  ExpectSuccess(folder.Compile());
  const nlohmann::json image = folder.Json(kImageName);
  EXPECT_EQ(image["nodes"][0]["name"], kForeign);
  EXPECT_EQ(image["nodes"][0]["children"][0]["childQueries"][0]["tag"], kForeign);
  EXPECT_EQ(folder.Json(kProjectName)["codeFiles"][0]["path"], kForeign + ".js");
}

TEST(EditText, OutsideAsciiCanBeGivenAndIsPrinted) {
  const EditFolder folder;
  folder.ExpectEdit({"add", "dialog", kProjectName, kForeign}, "dialog 6: " + kForeign + "\n");
  folder.ExpectEdit({"remove", kProjectName, kForeign}, "removed dialog 6: " + kForeign + "\n");
}

TEST(EditText, AHostReadsTheSavedTextAsTheCommandDoes) {
  const EditFolder folder;
  folder.ExpectEdit({"set", kProjectName, "0", "--name", kForeign}, "node 0: " + kForeign + "\n");
  const CommandResult asRead = folder.Run({"show", "--json", kProjectName});
  const CommandResult asHost = folder.Run({"show", "--json", "--raw-text", kProjectName});
  EXPECT_EQ(asRead.output, asHost.output);
}

TEST(EditText, ReadAsAHostDoesKeepsWhatAHostSees) {
  const EditFolder folder;
  folder.WriteProject("<Project><NodeGroup>" + ListNode("0", "\xC3\xB6") + "</Node></NodeGroup></Project>");
  folder.ExpectEdit({"set", kProjectName, "0", "--type", "html", "--raw-text"}, "node 0: \xC3\x83\xC2\xB6\n");
  EXPECT_EQ(folder.Object("0")["name"], "\xC3\x83\xC2\xB6");
}

TEST(EditText, TheSecondOfTwoEditsChangesItsOwnLinesAlone) {
  const EditFolder folder;
  folder.ExpectEdit({"set", kProjectName, "1", "--name", "x"}, "node 1: x\n");
  const std::string before = ReadBytes(folder / kProjectName);
  folder.ExpectEdit({"set", kProjectName, "1", "--name", "y"}, "node 1: y\n");
  std::string expected = before;
  expected.replace(expected.find("Name=\"x\""), 8, "Name=\"y\"");
  EXPECT_EQ(ReadBytes(folder / kProjectName), expected);
}

TEST(EditText, DryRunTellsTheLinesThatWouldChange) {
  const EditFolder folder;
  folder.ExpectEdit({"set", kProjectName, "4", "--name", "x"}, "node 4: x\n");
  folder.ExpectNothingChanged({"set", kProjectName, "4", "--name", kForeign, "--script", "22", "--dry-run"},
                              "--- console.xml\n"
                              "+++ console.xml\n"
                              "@@ -22,10 +22,12 @@\n"
                              " \t\t\t\t\t\t\t<MenuScript/>\n"
                              " \t\t\t\t\t\t\t<Scripts/>\n"
                              " \t\t\t\t\t\t\t<Nodes>\n"
                              "-\t\t\t\t\t\t\t\t<Node Cookie=\"4\" Name=\"x\" Icon=\"0\" Type=\"List\">\n"
                              "+\t\t\t\t\t\t\t\t<Node Cookie=\"4\" Name=\"" +
                                  kForeignReferences +
                                  "\" Icon=\"0\" Type=\"List\">\n"
                                  " \t\t\t\t\t\t\t\t\t<ChildQueries/>\n"
                                  " \t\t\t\t\t\t\t\t\t<MenuScript/>\n"
                                  "-\t\t\t\t\t\t\t\t\t<Scripts/>\n"
                                  "+\t\t\t\t\t\t\t\t\t<Scripts>\n"
                                  "+\t\t\t\t\t\t\t\t\t\t<Script File=\"22\"/>\n"
                                  "+\t\t\t\t\t\t\t\t\t</Scripts>\n"
                                  " \t\t\t\t\t\t\t\t</Node>\n"
                                  " \t\t\t\t\t\t\t</Nodes>\n"
                                  " \t\t\t\t\t\t</Node>\n");
}

TEST(EditText, DryRunTellsDistantChangesApart) {
  const EditFolder folder;
  folder.ExpectEdit({"add", "node", kProjectName, "Last", "--parent", "0"}, "node 6: Last\n");
  const CommandResult result = folder.Run({"move-down", kProjectName, "Console/Disks", "--dry-run"});
  ExpectSuccess(result);
  // The shorter of the two siblings is what moves, from behind the long one to before it.
  EXPECT_THAT(result.output, StartsWith("--- console.xml\n+++ console.xml\n@@ -"));
  EXPECT_THAT(result.output, HasSubstr("+\t\t\t\t<Node Cookie=\"1\" Name=\"Events\" Icon=\"0\" Type=\"List\">\n"));
  EXPECT_THAT(result.output, HasSubstr("+\t\t\t\t<Node Cookie=\"2\" Name=\"Disks\" Icon=\"0\" Type=\"List\">\n"));
  EXPECT_THAT(result.output, HasSubstr("-\t\t\t\t<Node Cookie=\"1\" Name=\"Disks\" Icon=\"0\" Type=\"List\">\n"));
  EXPECT_THAT(result.output, HasSubstr("-\t\t\t\t<Node Cookie=\"2\" Name=\"Events\" Icon=\"0\" Type=\"List\">\n"));
  EXPECT_THAT(result.output, HasSubstr("\n@@ -30,11 +35,6 @@\n"));
  for (const char* const place : {"-", "+"}) {
    EXPECT_THAT(result.output,
                testing::Not(HasSubstr(place + std::string("\t\t\t\t<Node Cookie=\"6\" Name=\"Last\""))));
  }
}

TEST(EditText, DryRunOfEachCommandChangesNothing) {
  const EditFolder folder;
  folder.Write("new.js", "n");
  folder.Write("new.ico", SmallIconFile());
  const std::vector<std::string> commands[] = {{"add", "node", kProjectName, "n", "--parent", "0"},
                                               {"add", "dialog", kProjectName, "d"},
                                               {"add", "icon", kProjectName, "new.ico"},
                                               {"add", "code", kProjectName, "new.js"},
                                               {"set", kProjectName, "5", "--name", "x"},
                                               {"move-down", kProjectName, "1"},
                                               {"remove", kProjectName, "1", "--recursive"},
                                               {"remove", kProjectName, "Settings"}};
  const auto files = folder.Files();
  for (std::vector<std::string> arguments : commands) {
    arguments.emplace_back("--dry-run");
    const CommandResult result = folder.Run(arguments);
    ExpectSuccess(result);
    EXPECT_THAT(result.output, StartsWith("--- console.xml\n+++ console.xml\n")) << arguments[1];
    EXPECT_THAT(result.output, HasSubstr("\n@@ -")) << arguments[1];
    EXPECT_TRUE(folder.Files() == files) << arguments[1];
  }
}

TEST(EditText, DryRunRefusesWhatTheEditWouldRefuse) {
  const EditFolder folder;
  folder.ExpectRefused({"remove", kProjectName, "1", "--dry-run"}, ": node 1 has 2 nodes below it; ", "0x800710D3");
}

TEST(EditText, DryRunTellsThatLineEndsChange) {
  const EditFolder folder;
  folder.ExpectEdit({"set", kProjectName, "4", "--name", "x"}, "node 4: x\n");
  std::string text = ReadBytes(folder / kProjectName);
  std::erase(text, '\r');
  folder.WriteProject(text);
  const CommandResult result = folder.Run({"set", kProjectName, "4", "--name", "y", "--dry-run"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output,
              StartsWith("--- console.xml\n+++ console.xml\n\\ All lines end in CR LF now\n@@ -22,7 +22,7 @@\n"));
}

TEST(EditText, DryRunIsSafeForATerminal) {
  const EditFolder folder;
  // Bytes that are no UTF-8, and marks that turn the reading direction.
  folder.WriteProject("<Project><NodeGroup>" + ListNode("0", std::string("a\x9B\xE4\x80z\xE2\x80") + '\xAE') +
                      "</Node></NodeGroup></Project>");
  const CommandResult result = folder.Run({"set", kProjectName, "0", "--name", "b", "--dry-run"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, HasSubstr("-<Project><NodeGroup><Node Cookie=\"0\" Name=\"a\xEF\xBF\xBD"));
  EXPECT_THAT(result.output, HasSubstr("z\\u202E\" Icon"));
  EXPECT_THAT(result.output, HasSubstr("</Project>\n\\ No newline at end of file\n+"));
}

TEST(EditText, DryRunOfALargeReformattedProjectEndsSoon) {
  constexpr int kNodes = 20'000;  // Wine's document takes half a minute for five times as many
  const EditFolder folder;
  std::string text = "<Project><NodeGroup>" + ListNode("0", "top") + "<Nodes>\n";
  for (int node = 1; node <= kNodes; ++node) text += ListNode(std::to_string(node), "n") + "\n</Node>\n";
  folder.WriteProject(text + "</Nodes></Node></NodeGroup></Project>");
  const CommandResult result = folder.Run({"set", kProjectName, "0", "--name", "y", "--dry-run"});
  ExpectSuccess(result);
  EXPECT_LT(result.duration.count(), 20'000) << "milliseconds";
}

}  // namespace
}  // namespace ondrel::test
