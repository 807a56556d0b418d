// `ondrel add node` and `ondrel add dialog`.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "edit_folder.h"

namespace ondrel::test {
namespace {

TEST(AddNode, PutsItBehindTheOthersBelowItsParent) {
  const EditFolder folder;
  folder.ExpectEdit({"add", "node", kProjectName, "Paths", "--parent", "Console/Disks"}, "node 6: Paths\n");
  folder.ExpectEdit({"add", "node", kProjectName, "Deep", "--parent", "6"}, "node 7: Deep\n");
  EXPECT_EQ(folder.Tree(), Lines({"0 Console", "  1 Disks", "    3 Volumes", "      4 Quotas", "    6 Paths",
                                  "      7 Deep", "  2 Events"}));
}

TEST(AddNode, TakesEveryPartOfARecord) {
  const EditFolder folder;
  folder.ExpectEdit({"add",
                     "node",
                     kProjectName,
                     "Full",
                     "--parent",
                     "0",
                     "--type",
                     "html",
                     "--icon",
                     "icons/disk.ico",
                     "--menu-script",
                     "22",
                     "--style-sheet",
                     "styles\\view.xslt",
                     "--script",
                     "scripts/b.js",
                     "--script",
                     "scripts/a.js",
                     "--script",
                     "24",
                     "--child-query",
                     "One=23",
                     "--child-query",
                     "Two=queries/q.xml",
                     "--render-query",
                     "A b=23"},
                    "node 6: Full\n");
  EXPECT_EQ(folder.Object("6").dump(),
            R"({"childQueries":[{"file":"23","tag":"One"},{"file":"23","tag":"Two"}],"children":[],"cookie":"6",)"
            R"("icon":"11","menuScript":"22","name":"Full","renderQueries":[{"file":"23","tag":"A b"}],)"
            R"("scripts":["24","22","24"],"styleSheet":"21","type":"HTML"})");
}

TEST(AddNode, BecomesTheTopLevelNodeOfAProjectWithoutOne) {
  const EditFolder folder;
  folder.WriteProject("<Project/>");
  folder.ExpectEdit({"add", "node", kProjectName, "Top"}, "node 0: Top\n");
  folder.ExpectRefused({"add", "node", kProjectName, "Second"},
                       ": the project has a top-level node, and a save keeps one alone; put the new node below it, "
                       "with --parent 0 ",
                       kAlreadyExistsText);
}

TEST(AddNode, RefusesParentsThatCannotHaveNodes) {
  const EditFolder folder;
  folder.ExpectRefused({"add", "node", kProjectName, "x", "--parent", "Settings"},
                       ": dialog 5 is no node, and none can be below it; ", kInvalidText);
  folder.ExpectRefused({"add", "node", kProjectName, "x", "--parent", "77"}, ": no node or dialog has the cookie 77; ",
                       kNotFoundText);
  folder.ExpectRefused({"add", "node", kProjectName, "x", "--parent", "-1"}, ": no node or dialog has the cookie -1; ",
                       kNotFoundText);
  folder.ExpectRefused({"add", "node", kProjectName, "x", "--parent", ""}, ": the name of a node or dialog is empty; ",
                       kInvalidText);
}

TEST(AddNode, RefusesNamesThatNoProjectHolds) {
  const EditFolder folder;
  folder.ExpectRefused({"add", "node", kProjectName, "", "--parent", "0"}, ": the new name is empty; ", kInvalidText);
  folder.ExpectRefused(
      {"add", "node", kProjectName, "a\x01z", "--parent", "0"},
      ": the name \"a\\x01z\" has the character U+0001, which a project file cannot hold; leave it out", kInvalidText);
  folder.ExpectRefused({"add", "node", kProjectName, "\xEF\xBF\xBF", "--parent", "0"}, ": the name ", kInvalidText);
}

TEST(AddNode, KeepsBlanksLineEndsAndMarkupInNames) {
  const EditFolder folder;
  const std::string name = " <a>\t&amp;\r\n\"b'/ ";
  folder.ExpectEdit({"add", "node", kProjectName, name, "--parent", "0"}, "node 6:  <a>\\t&amp;\\r\\n\"b'/ \n");
  EXPECT_EQ(folder.Object("6")["name"], name);
}

TEST(AddNode, RefusesACookieThatNoSaveKeeps) {
  const EditFolder folder;
  folder.WriteProject(
      "<Project><DialogGroup><Dialog Cookie=\"-7\" Name=\"d\" Icon=\"0\" Type=\"Dialog\"><MenuScript/>"
      "<StyleSheet/></Dialog></DialogGroup></Project>");
  folder.ExpectRefused({"add", "node", kProjectName, "Top"}, ": the new node would have the cookie -6, ", kInvalidText);
  folder.ExpectEdit({"add", "dialog", kProjectName, "e"}, "dialog -6: e\n");
  for (const char* const expected : {"dialog -5: f\n", "dialog -4: g\n", "dialog -3: h\n", "dialog -2: i\n"}) {
    folder.ExpectEdit({"add", "dialog", kProjectName, std::string(1, expected[11])}, expected);
  }
}

TEST(AddNode, RefusesWhenTheLargestCookieIsTaken) {
  const EditFolder folder;
  folder.WriteProject("<Project><NodeGroup>" + ListNode("9223372036854775807", "Top") +
                      "</Node></NodeGroup></Project>");
  folder.ExpectRefused({"add", "node", kProjectName, "x", "--parent", "Top"},
                       ": the largest cookie there can be is in use; ", kAlreadyExistsText);
  folder.ExpectRefused({"add", "dialog", kProjectName, "x"}, ": the largest cookie there can be is in use; ",
                       kAlreadyExistsText);
}

TEST(AddDialog, HasTheTypeDialogUnlessAnotherIsGiven) {
  const EditFolder folder;
  folder.ExpectEdit({"add", "dialog", kProjectName, "About", "--icon", "11", "--style-sheet", "21", "--render-query",
                     "Q=23", "--script", "22", "--menu-script", "24"},
                    "dialog 6: About\n");
  EXPECT_EQ(folder.Object("6").dump(),
            R"({"childQueries":[],"cookie":"6","icon":"11","menuScript":"24","name":"About",)"
            R"("renderQueries":[{"file":"23","tag":"Q"}],"scripts":["22"],"styleSheet":"21","type":"Dialog"})");
  folder.ExpectEdit({"add", "dialog", kProjectName, "Page", "--type", "html", "--child-query", "Q=23"},
                    "dialog 7: Page\n");
  EXPECT_EQ(folder.Object("7")["type"], "HTML");
}

TEST(AddDialog, RefusesANameThatAnotherHas) {
  const EditFolder folder;
  folder.ExpectRefused({"add", "dialog", kProjectName, "Settings"},
                       ": dialog 5 has the name \"Settings\", and no two dialogs can share one; give another name",
                       kAlreadyExistsText);
  folder.ExpectEdit({"add", "dialog", kProjectName, "settings"}, "dialog 6: settings\n");
  folder.ExpectEdit({"add", "dialog", kProjectName, "Console"}, "dialog 7: Console\n");
}

TEST(AddDialog, GetsTheFirstCookieOfAnEmptyProject) {
  const EditFolder folder;
  folder.WriteProject("<Project/>");
  folder.ExpectEdit({"add", "dialog", kProjectName, "First"}, "dialog 0: First\n");
  folder.ExpectRefused({"add", "dialog", kProjectName, "First"}, ": dialog 0 has the name \"First\", ",
                       kAlreadyExistsText);
}

TEST(Add, RefusesValuesThatTheTypeLoses) {
  const EditFolder folder;
  folder.ExpectRefused({"add", "node", kProjectName, "x", "--parent", "0", "--style-sheet", "21"},
                       ": the type List keeps no style sheet, and a save would lose what is given; ", kInvalidText);
  folder.ExpectRefused({"add", "node", kProjectName, "x", "--parent", "0", "--render-query", "Q=23"},
                       ": the type List keeps no render queries, and a save would lose what is given; ", kInvalidText);
  folder.ExpectRefused({"add", "dialog", kProjectName, "x", "--child-query", "Q=23"},
                       ": the type Dialog keeps no child queries, and a save would lose what is given; ", kInvalidText);
}

}  // namespace
}  // namespace ondrel::test
