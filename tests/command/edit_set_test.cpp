// `ondrel set`.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "edit_folder.h"

namespace ondrel::test {
namespace {

TEST(Set, ChangesEachPartAndLeavesTheOthers) {
  const EditFolder folder;
  folder.ExpectEdit({"set", kProjectName, "0", "--name", "Main"}, "node 0: Main\n");
  nlohmann::json expected = folder.Object("0");
  EXPECT_EQ(expected["name"], "Main");
  EXPECT_EQ(expected["scripts"], nlohmann::json({"22"}));

  struct Change {
    std::vector<std::string> options;
    const char* part;
    nlohmann::json value;
  };
  const nlohmann::json query = {{"tag", "A=b"}, {"file", "23"}};
  const Change changes[] = {
      {{"--icon", "none"}, "icon", "0"},
      {{"--icon", "icons/disk.ico"}, "icon", "11"},
      {{"--menu-script", "scripts/b.js"}, "menuScript", "24"},
      {{"--menu-script", "none"}, "menuScript", "0"},
      {{"--style-sheet", "none"}, "styleSheet", "0"},
      {{"--style-sheet", "24"}, "styleSheet", "24"},
      {{"--script", "24", "--script", "22"}, "scripts", {"24", "22"}},
      {{"--script", "24"}, "scripts", nlohmann::json::array({"24"})},
      {{"--no-scripts"}, "scripts", nlohmann::json::array()},
      {{"--child-query", "Q=23", "--child-query", "R=scripts/a.js"},
       "childQueries",
       {{{"tag", "Q"}, {"file", "23"}}, {{"tag", "R"}, {"file", "22"}}}},
      {{"--no-child-queries"}, "childQueries", nlohmann::json::array()},
      {{"--render-query", "Q=24"}, "renderQueries", nlohmann::json::array({{{"tag", "Q"}, {"file", "24"}}})},
      {{"--no-render-queries"}, "renderQueries", nlohmann::json::array()},
      {{"--type", "dialog"}, "type", "Dialog"},
      {{"--type", "Html"}, "type", "HTML"},
  };
  for (const Change& change : changes) {
    SCOPED_TRACE(change.options.front());
    std::vector<std::string> arguments{"set", kProjectName, "0"};
    arguments.insert(arguments.end(), change.options.begin(), change.options.end());
    folder.ExpectEdit(arguments, "node 0: Main\n");
    expected[change.part] = change.value;
    EXPECT_EQ(folder.Object("0").dump(), expected.dump());
  }
  EXPECT_EQ(folder.Tree(), Lines({"0 Main", "  1 Disks", "    3 Volumes", "      4 Quotas", "  2 Events"}));
}

TEST(Set, LeavesAFileThatSaysSoAlreadyAsItIs) {
  const EditFolder folder;
  const std::string same = " (it is so already, and the file stays as it is)\n";
  folder.ExpectNothingChanged({"set", kProjectName, "1", "--name", "Disks"}, "node 1: Disks" + same);
  folder.ExpectNothingChanged({"set", kProjectName, "5", "--name", "Settings", "--type", "dialog", "--dry-run"},
                              "dialog 5: Settings" + same);
  folder.ExpectNothingChanged({"set", kProjectName, "0", "--script", "22", "--icon", "11", "--render-query", "All=23"},
                              "node 0: Console" + same);
}

TEST(Set, RefusesATypeThatWouldLoseWhatTheNodeHas) {
  const EditFolder folder;
  folder.ExpectRefused({"set", kProjectName, "0", "--type", "list"},
                       ": the type List keeps no style sheet, and a save would lose what is given; give "
                       "\"--style-sheet none\", or \"--type html\" ",
                       kInvalidText);
  folder.ExpectRefused({"set", kProjectName, "0", "--type", "list", "--style-sheet", "none"},
                       ": the type List keeps no render queries, ", kInvalidText);
  folder.ExpectEdit({"set", kProjectName, "0", "--type", "list", "--style-sheet", "none", "--no-render-queries"},
                    "node 0: Console\n");
  folder.ExpectEdit({"set", kProjectName, "0", "--child-query", "Q=23"}, "node 0: Console\n");
  folder.ExpectRefused({"set", kProjectName, "0", "--type", "dialog"},
                       ": the type Dialog keeps no child queries, and a save would lose what is given; give "
                       "\"--no-child-queries\", or another type ",
                       kInvalidText);
}

TEST(Set, RenamesADialogUnlessAnotherHasTheName) {
  const EditFolder folder;
  folder.ExpectEdit({"add", "dialog", kProjectName, "About"}, "dialog 6: About\n");
  folder.ExpectRefused({"set", kProjectName, "About", "--name", "Settings"},
                       ": dialog 5 has the name \"Settings\", and no two dialogs can share one; ", kAlreadyExistsText);
  folder.ExpectEdit({"set", kProjectName, "About", "--name", "Options"}, "dialog 6: Options\n");
  folder.ExpectEdit({"add", "dialog", kProjectName, "About"}, "dialog 7: About\n");
}

TEST(Set, RefusesNamesThatNoProjectHolds) {
  const EditFolder folder;
  folder.ExpectRefused({"set", kProjectName, "1", "--name", ""}, ": the new name is empty; ", kInvalidText);
  folder.ExpectRefused({"set", kProjectName, "1", "--name", "\x1B[31m"},
                       ": the name \"\\x1B[31m\" has the character U+001B, which a project file cannot hold; ",
                       kInvalidText);
  folder.ExpectRefused({"set", kProjectName, "1", "--child-query", "a\x02=23"},
                       ": the tag \"a\\x02\" has the character U+0002, ", kInvalidText);
}

TEST(Set, GivesAProjectThatCannotBeSavedItsScriptsAnew) {
  const EditFolder folder;
  folder.WriteProject("<Project><NodeGroup>" + ListNode("0", "Top") +
                      "<Scripts><Script File=\"0\"/></Scripts></Node></NodeGroup></Project>");
  folder.ExpectRefused({"set", kProjectName, "0", "--name", "x"},
                       ": node 0 has a script with the cookie 0, and a project saved with it would never load again; ",
                       "0x8007000D");
  folder.ExpectRefused({"add", "dialog", kProjectName, "d"}, ": node 0 has a script with the cookie 0, ", "0x8007000D");
  folder.ExpectEdit({"set", kProjectName, "0", "--no-scripts"}, "node 0: Top\n");
  EXPECT_EQ(folder.Object("0")["scripts"], nlohmann::json::array());
}

TEST(Set, RefusesADialogWithAScriptWithoutAFile) {
  const EditFolder folder;
  folder.WriteProject(
      "<Project><DialogGroup><Dialog Cookie=\"3\" Name=\"d\" Icon=\"0\" Type=\"Dialog\"><MenuScript/>"
      "<Scripts><Script File=\"0\"/></Scripts><StyleSheet/></Dialog></DialogGroup></Project>");
  folder.ExpectRefused({"set", kProjectName, "d", "--name", "x"}, ": dialog 3 has a script with the cookie 0, ",
                       "0x8007000D");
}

TEST(Set, RefusesANodeThatNoSaveKeeps) {
  const EditFolder folder;
  folder.WriteProject("<Project><NodeGroup>\n" + ListNode("0", "Top") + "<Nodes>\n" + ListNode("-3", "Lost") +
                      "<Nodes>" + ListNode("7", "Below") +
                      "</Node></Nodes></Node></Nodes></Node></NodeGroup></Project>");
  folder.ExpectRefused({"set", kProjectName, "-3", "--name", "x", "--lossy"},
                       ":3: node -3 has a negative cookie, and no save keeps such nodes; ", kInvalidText);
  folder.ExpectRefused(
      {"set", kProjectName, "7", "--name", "x", "--lossy"},
      ": a save would not keep node 7 as it is to be, because it lies outside the tree that is saved; ", "0x8007000D");
  folder.ExpectRefused({"add", "node", kProjectName, "x", "--parent", "7", "--lossy"},
                       ": a save would not keep node 8 as it is to be, ", "0x8007000D");
  folder.ExpectRefused({"add", "node", kProjectName, "x", "--parent", "-3", "--lossy"}, ":3: node -3 has a negative ",
                       kInvalidText);
  folder.ExpectRefused({"move-down", kProjectName, "7", "--lossy"},
                       ": node 7 lies below a node with a negative cookie, which no save keeps; ", kInvalidText);
}

}  // namespace
}  // namespace ondrel::test
