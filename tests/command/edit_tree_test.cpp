// `ondrel move-down` and `ondrel remove`.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "edit_folder.h"

namespace ondrel::test {
namespace {

TEST(MoveDown, TellsTheCookieThatTheNodeHasAfterwards) {
  const EditFolder folder;
  folder.ExpectEdit({"move-down", kProjectName, "Console/Disks"}, "node 2: Disks (it was node 1)\n");
  EXPECT_EQ(folder.Tree(), Lines({"0 Console", "  1 Events", "  2 Disks", "    3 Volumes", "      4 Quotas"}));
}

TEST(MoveDown, TheLastOneStaysAndSoDoesTheFile) {
  const EditFolder folder;
  const std::string stays = " (it is the last one already, and the file stays as it is)\n";
  folder.ExpectNothingChanged({"move-down", kProjectName, "Console/Events"}, "node 2: Events" + stays);
  folder.ExpectNothingChanged({"move-down", kProjectName, "4", "--dry-run"}, "node 4: Quotas" + stays);
  folder.ExpectNothingChanged({"move-down", kProjectName, "0"}, "node 0: Console" + stays);
}

TEST(MoveDown, RefusesADialog) {
  const EditFolder folder;
  folder.ExpectRefused({"move-down", kProjectName, "Settings"}, ": dialog 5 has no place in the tree; name a node",
                       kInvalidText);
}

TEST(MoveDown, RefusesToMoveATopLevelNodeOutOfTheSave) {
  const EditFolder folder;
  folder.WriteProject("<Project><NodeGroup>" + ListNode("0", "a") + "</Node>" + ListNode("1", "b") +
                      "</Node></NodeGroup></Project>");
  folder.ExpectRefused({"move-down", kProjectName, "a", "--lossy"}, ": a save would not keep node 1 as it is to be, ",
                       "0x8007000D");
}

TEST(Remove, TakesANodeWithoutOthersBelowIt) {
  const EditFolder folder;
  folder.ExpectEdit({"remove", kProjectName, "Console/Events"}, "removed node 2: Events\n");
  folder.ExpectEdit({"remove", kProjectName, "4", "--recursive"}, "removed node 4: Quotas\n");
  EXPECT_EQ(folder.Tree(), Lines({"0 Console", "  1 Disks", "    3 Volumes"}));
}

TEST(Remove, TakesASubtreeOnlyWhenTold) {
  const EditFolder folder;
  folder.ExpectRefused({"remove", kProjectName, "1"}, ": node 1 has 2 nodes below it; --recursive removes them with it",
                       "0x800710D3");
  folder.ExpectRefused({"remove", kProjectName, "3"}, ": node 3 has 1 node below it; ", "0x800710D3");
  folder.ExpectEdit({"remove", kProjectName, "Console/Disks", "--recursive"},
                    "removed node 1: Disks, and 2 nodes below it\n");
  EXPECT_EQ(folder.Tree(), Lines({"0 Console", "  2 Events"}));
  folder.ExpectEdit({"remove", kProjectName, "0", "--recursive"}, "removed node 0: Console, and 1 node below it\n");
  EXPECT_EQ(folder.Tree(), "");
}

TEST(Remove, TakesADialogWhoseNameIsFreeThen) {
  const EditFolder folder;
  folder.ExpectEdit({"remove", kProjectName, "Settings"}, "removed dialog 5: Settings\n");
  EXPECT_EQ(folder.Json(kProjectName)["dialogs"].size(), 0U);
  folder.ExpectEdit({"add", "dialog", kProjectName, "Settings"}, "dialog 5: Settings\n");
}

TEST(Remove, RefusesANodeThatStandsForTheTop) {
  const EditFolder folder;
  folder.WriteProject("<Project><NodeGroup>" + ListNode("-1", "x") + "<Nodes>" + ListNode("0", "a") +
                      "</Node></Nodes></Node></NodeGroup></Project>");
  folder.ExpectRefused({"remove", kProjectName, "-1", "--recursive", "--lossy"},
                       ":1: node -1 has a negative cookie, and no save keeps such nodes; ", kInvalidText);
}

TEST(Remove, RefusesWhatIsNotThere) {
  const EditFolder folder;
  folder.ExpectRefused({"remove", kProjectName, "9"},
                       ": no node or dialog has the cookie 9; \"ondrel show\" tells names and cookies", kNotFoundText);
}

TEST(Remove, OfADeepTreeEndsSoon) {
  const EditFolder folder;
  folder.WriteProject(ChainProject(kDeepChain));
  CommandLine commandLine = folder.Command({"remove", kProjectName, "1", "--recursive"});
  const CommandResult result = RunCommand(commandLine);
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "removed node 1: n, and " + std::to_string(kDeepChain - 2) + " nodes below it\n");
  EXPECT_LT(result.duration.count(), 20'000) << "milliseconds";
  EXPECT_EQ(folder.Tree(), "0 n\n");
}

TEST(Remove, OfManySiblingsEndsSoon) {
  constexpr int kSiblings = kSanitized ? 10'000 : 100'000;
  const EditFolder folder;
  std::string text = "<Project><NodeGroup>" + ListNode("0", "top") + "<Nodes>";
  for (int node = 1; node <= kSiblings; ++node) text += ListNode(std::to_string(node), "n") + "</Node>";
  folder.WriteProject(text + "</Nodes></Node></NodeGroup></Project>");
  const CommandResult result = folder.Run({"remove", kProjectName, "top", "--recursive"});
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "removed node 0: top, and " + std::to_string(kSiblings) + " nodes below it\n");
  EXPECT_LT(result.duration.count(), 20'000) << "milliseconds";
}

}  // namespace
}  // namespace ondrel::test
