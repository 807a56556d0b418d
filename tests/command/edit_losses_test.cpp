// Edits of files of which a save would lose something.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "edit_folder.h"

namespace ondrel::test {
namespace {

/// A project with comments that a save loses, the first in line 2.
void WriteLossyProject(const EditFolder& folder, int comments) {
  std::string text = "<Project>\n";
  for (int comment = 0; comment < comments; ++comment) text += "<!-- keep me -->\n";
  folder.WriteProject(text + "<NodeGroup>" + ListNode("0", "Top") + "<Nodes>" + ListNode("1", "a") + "</Node>" +
                      ListNode("2", "b") + "</Node></Nodes></Node></NodeGroup></Project>");
}

TEST(EditLosses, AreRefusedByEachCommandWithTheFirst) {
  const EditFolder folder;
  WriteLossyProject(folder, 1);
  const std::vector<std::string> commands[] = {{"add", "node", kProjectName, "n", "--parent", "0"},
                                               {"add", "dialog", kProjectName, "d"},
                                               {"add", "icon", kProjectName, "icons/disk.ico"},
                                               {"add", "code", kProjectName, "scripts/a.js"},
                                               {"set", kProjectName, "0", "--name", "x"},
                                               {"move-down", kProjectName, "1"},
                                               {"remove", kProjectName, "1"},
                                               {"remove", kProjectName, "1", "--dry-run"}};
  for (const std::vector<std::string>& arguments : commands) {
    folder.ExpectRefused(arguments, ":2: ", "0x8007000D");
    EXPECT_THAT(folder.Run(arguments).errors, testing::HasSubstr("; --lossy saves all the same (0x8007000D)\n"));
    EXPECT_THAT(folder.Run(arguments).errors, testing::Not(testing::HasSubstr("more loss")));
  }
}

TEST(EditLosses, TheOthersAreCounted) {
  const EditFolder folder;
  WriteLossyProject(folder, 2);
  EXPECT_THAT(folder.Run({"remove", kProjectName, "1"}).errors,
              testing::HasSubstr(" (and 1 more loss); --lossy saves all the same (0x8007000D)\n"));
  WriteLossyProject(folder, 4);
  EXPECT_THAT(folder.Run({"remove", kProjectName, "1"}).errors,
              testing::HasSubstr(" (and 3 more losses); --lossy saves all the same (0x8007000D)\n"));
}

TEST(EditLosses, AreTakenWhenTold) {
  const EditFolder folder;
  WriteLossyProject(folder, 2);
  const CommandResult shown = folder.Run({"remove", kProjectName, "1", "--lossy", "--dry-run"});
  ExpectSuccess(shown);
  EXPECT_THAT(shown.output, testing::HasSubstr("\n-<!-- keep me -->\n-<!-- keep me -->\n"));
  folder.ExpectEdit({"remove", kProjectName, "1", "--lossy"}, "removed node 1: a\n");
  EXPECT_EQ(ReadBytes(folder / kProjectName).find("keep me"), std::string::npos);
  folder.ExpectEdit({"remove", kProjectName, "2"}, "removed node 2: b\n");
}

}  // namespace
}  // namespace ondrel::test
