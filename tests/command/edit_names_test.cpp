// How nodes, dialogs and files are named in edits.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "edit_folder.h"

namespace ondrel::test {
namespace {

TEST(ObjectName, IsACookieOrAPath) {
  const EditFolder folder;
  for (const char* const name : {"4", "04", "Console/Disks/Volumes/Quotas"}) {
    folder.ExpectNothingChanged({"set", kProjectName, name, "--name", "Quotas"},
                                "node 4: Quotas (it is so already, and the file stays as it is)\n");
  }
}

TEST(ObjectName, WhatIsMadeOfDigitsIsACookie) {
  const EditFolder folder;
  folder.ExpectEdit({"set", kProjectName, "0", "--name", "77"}, "node 0: 77\n");
  folder.ExpectRefused({"remove", kProjectName, "77"}, ": no node or dialog has the cookie 77; ", kNotFoundText);
  folder.ExpectRefused({"remove", kProjectName, "18446744073709551617"},
                       ": no node or dialog has the cookie 18446744073709551617; ", kNotFoundText);
  folder.ExpectEdit({"remove", kProjectName, "77/Events"}, "removed node 2: Events\n");
}

TEST(ObjectName, EscapesStandForSeparatorsAndBackslashes) {
  const EditFolder folder;
  folder.ExpectEdit({"set", kProjectName, "1", "--name", "I/O \\ C:"}, "node 1: I/O \\ C:\n");
  folder.ExpectEdit({"set", kProjectName, "Console/I\\/O \\\\ C:/Volumes", "--name", "V"}, "node 3: V\n");
  folder.ExpectRefused({"remove", kProjectName, "Console/I/O"}, ": node \"Console\" has no node \"I\" below it; ",
                       kNotFoundText);
  for (const char* const path : {"Console\\Events", "Console/Events\\"}) {
    folder.ExpectRefused({"remove", kProjectName, path},
                         ": \"" + std::string(path) + "\" has a backslash before neither \"/\" nor \"\\\"; write ",
                         kInvalidText);
  }
}

TEST(ObjectName, ThatSeveralNodesHaveIsRefusedWithTheirCookies) {
  const EditFolder folder;
  folder.ExpectEdit({"set", kProjectName, "2", "--name", "Disks"}, "node 2: Disks\n");
  folder.ExpectRefused({"remove", kProjectName, "Console/Disks"},
                       ": \"Console/Disks\" may be any of the nodes 1 and 2; name one by its cookie", kInvalidText);
  // The one below a node of that name is the only one.
  folder.ExpectEdit({"set", kProjectName, "Console/Disks/Volumes", "--name", "V"}, "node 3: V\n");
  for (int node = 6; node < 14; ++node) {
    folder.ExpectEdit({"add", "node", kProjectName, "Disks", "--parent", "0"},
                      "node " + std::to_string(node) + ": Disks\n");
  }
  folder.ExpectRefused({"remove", kProjectName, "Console/Disks"},
                       ": \"Console/Disks\" may be any of the nodes 1, 2, 6, 7, 8 and 5 others; name one",
                       kInvalidText);
}

TEST(ObjectName, OfADialogCountsWhereNoNodeHasThePath) {
  const EditFolder folder;
  folder.ExpectEdit({"add", "dialog", kProjectName, "Console"}, "dialog 6: Console\n");
  folder.ExpectEdit({"set", kProjectName, "Console", "--name", "Top"}, "node 0: Top\n");
  folder.ExpectEdit({"set", kProjectName, "Console", "--name", "A/B\\C"}, "dialog 6: A/B\\C\n");
  folder.ExpectEdit({"set", kProjectName, "A/B\\C", "--name", "A\\\\C"}, "dialog 6: A\\\\C\n");
  folder.ExpectEdit({"add", "dialog", kProjectName, "A\\C"}, "dialog 7: A\\C\n");
  folder.ExpectRefused({"remove", kProjectName, "A\\\\C"},
                       ": \"A\\\\C\" may be any of the dialogs 6 and 7; name one by its cookie", kInvalidText);
  folder.ExpectEdit({"remove", kProjectName, "A\\C"}, "removed dialog 7: A\\C\n");
}

TEST(ObjectName, ThatNothingHasIsExplained) {
  const EditFolder folder;
  folder.ExpectRefused({"remove", kProjectName, "disks"},
                       ": no top-level node and no dialog has the name \"disks\"; \"ondrel show\" tells names",
                       kNotFoundText);
  folder.ExpectRefused({"remove", kProjectName, "Console/Disks/Volumes/Quotas/"},
                       ": node \"Quotas\" has no node \"\" below it; ", kNotFoundText);
  folder.ExpectRefused({"remove", kProjectName, "/Console"}, ": no top-level node and no dialog has the name \"\"; ",
                       kNotFoundText);
  folder.ExpectRefused({"remove", kProjectName, ""}, ": the name of a node or dialog is empty; ", kInvalidText);
  folder.ExpectRefused({"remove", kProjectName, "a\x1B[2J"},
                       ": no top-level node and no dialog has the name \"a\\x1B[2J\"", kNotFoundText);
}

TEST(ObjectName, OfADeepNodeIsFound) {
  constexpr int kDeep = 1000;
  const EditFolder folder;
  folder.WriteProject(ChainProject(kDeep));
  std::string path = "n";
  for (int level = 1; level < kDeep; ++level) path += "/n";
  folder.ExpectEdit({"remove", kProjectName, path}, "removed node 999: n\n");
}

TEST(FileName, IsACookieOrAPathInEitherSpelling) {
  const EditFolder folder;
  const std::string same = "node 0: Console (it is so already, and the file stays as it is)\n";
  for (const char* const name : {"22", "scripts\\a.js", "scripts/a.js", "./scripts/a.js", "queries/../scripts/a.js"}) {
    folder.ExpectNothingChanged({"set", kProjectName, "0", "--script", name}, same);
  }
  folder.ExpectNothingChanged({"set", kProjectName, "0", "--script", Utf8(folder / "scripts/a.js")}, same);
}

TEST(FileName, OfAFileThatIsNotOnDiskIsFoundToo) {
  const EditFolder folder;
  std::filesystem::remove(folder / "scripts/b.js");
  folder.ExpectEdit({"set", kProjectName, "1", "--script", "scripts/b.js", "--menu-script", "./scripts/b.js"},
                    "node 1: Disks\n");
  EXPECT_EQ(folder.Object("1")["scripts"], nlohmann::json::array({"24"}));
  EXPECT_EQ(folder.Object("1")["menuScript"], "24");
}

TEST(FileName, StartsAtTheProjectsFolderOrAtTheWorkingFolder) {
  const EditFolder folder;
  CommandLine commandLine =
      folder.Command({"set", "../console.xml", "1", "--script", "b.js", "--script", "queries/q.xml"});
  commandLine.workingFolder = folder / "scripts";
  ExpectSuccess(RunCommand(commandLine));
  EXPECT_EQ(folder.Object("1")["scripts"], nlohmann::json({"24", "23"}));
}

TEST(FileName, ThatMeansTwoFilesIsRefused) {
  const EditFolder folder;
  folder.Write("b.js", "b");
  ExpectSuccess(folder.Run({"add", "code", kProjectName, "b.js"}));
  CommandLine commandLine = folder.Command({"set", "../console.xml", "1", "--script", "b.js"});
  commandLine.workingFolder = folder / "scripts";
  const auto files = folder.Files();
  ExpectFailure(RunCommand(commandLine), "../console.xml: \"b.js\" may be any of the code files ", kInvalidText);
  EXPECT_TRUE(folder.Files() == files);
  folder.ExpectEdit({"set", kProjectName, "1", "--script", "b.js"}, "node 1: Disks\n");
}

TEST(FileName, OfAnotherKindIsNotFound) {
  const EditFolder folder;
  folder.ExpectRefused({"set", kProjectName, "1", "--icon", "scripts/a.js"},
                       ": \"scripts/a.js\" is no icon file of the project; add it with \"ondrel add icon\"",
                       kNotFoundText);
  folder.ExpectRefused({"set", kProjectName, "1", "--icon", "22"}, ": no icon file has the cookie 22; ", kNotFoundText);
  folder.ExpectRefused({"set", kProjectName, "1", "--script", "11"}, ": no code file has the cookie 11; ",
                       kNotFoundText);
  folder.ExpectRefused({"set", kProjectName, "1", "--script", "c.js"},
                       ": \"c.js\" is no code file of the project; add it with \"ondrel add code\"", kNotFoundText);
  folder.ExpectRefused({"set", kProjectName, "1", "--child-query", "Q=c.js"}, ": \"c.js\" is no code file ",
                       kNotFoundText);
  folder.ExpectRefused({"set", kProjectName, "1", "--script", ""}, ": \"\" is no code file ", kNotFoundText);
  folder.ExpectRefused({"set", kProjectName, "1", "--script", "99999999999999999999"},
                       ": no code file has the cookie 99999999999999999999; ", kNotFoundText);
}

TEST(FileName, CookieZeroIsNoFile) {
  const EditFolder folder;
  for (const char* const option : {"--icon", "--script", "--menu-script", "--style-sheet"}) {
    folder.ExpectRefused({"set", kProjectName, "0", option, "0"}, ": the cookie 0 stands for no file; ", kInvalidText);
  }
}

TEST(FileName, OfACodeFileWithAnIconsCookieIsFound) {
  const EditFolder folder;
  folder.WriteProject(
      "<Project><NodeGroup>" + ListNode("0", "a") +
      "</Node></NodeGroup><FileGroup>"
      R"(<Icon Cookie="7" Name="icons/disk.ico"/><File Cookie="7" Name="scripts/a.js"/></FileGroup></Project>)");
  folder.ExpectEdit({"set", kProjectName, "0", "--icon", "icons/disk.ico", "--script", "scripts/a.js"}, "node 0: a\n");
  EXPECT_EQ(folder.Object("0")["scripts"], nlohmann::json::array({"7"}));
  folder.ExpectRefused({"set", kProjectName, "0", "--script", "icons/disk.ico"},
                       ": \"icons/disk.ico\" is no code file ", kNotFoundText);
  folder.ExpectRefused({"add", "code", kProjectName, "scripts/a.js"},
                       ": code file \"scripts\\a.js\" is in the project already, with the cookie 7; ",
                       kAlreadyExistsText);
}

TEST(FileName, ThatDiffersByItsSeparatorAloneIsTheOneThatIsSpelledSo) {
  const EditFolder folder;
  folder.WriteProject(
      "<Project><NodeGroup>" + ListNode("0", "a") +
      "</Node></NodeGroup><FileGroup>"
      R"(<File Cookie="7" Name="scripts/a.js"/><File Cookie="8" Name="scripts\a.js"/></FileGroup></Project>)");
  folder.ExpectEdit({"set", kProjectName, "0", "--script", "scripts/a.js", "--script", "scripts\\a.js"}, "node 0: a\n");
  EXPECT_EQ(folder.Object("0")["scripts"], nlohmann::json({"7", "8"}));
  folder.ExpectRefused({"set", kProjectName, "0", "--script", "./scripts/a.js"},
                       ": \"./scripts/a.js\" may be any of the code files 7 and 8; name one by its cookie",
                       kInvalidText);
}

}  // namespace
}  // namespace ondrel::test
