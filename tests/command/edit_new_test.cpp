// `ondrel new`.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "edit_folder.h"

namespace ondrel::test {
namespace {

TEST(New, MakesAnEmptyProjectThatCompiles) {
  const ProjectFolder folder;
  const CommandResult made = folder.Run({"new", kProjectName});
  ExpectSuccess(made);
  EXPECT_EQ(made.output, "console.xml: a new project\n");
  EXPECT_EQ(folder.Listing(), "console.xml\n");
  EXPECT_THAT(ReadBytes(folder / kProjectName),
              testing::StartsWith(R"(<?xml version="1.0" encoding="utf-8" standalone="yes"?>)"));
  EXPECT_EQ(folder.Json(kProjectName).dump(),
            R"({"codeFiles":[],"dialogs":[],"form":"project","icons":[],"nodes":[]})");
  ExpectSuccess(folder.Compile());
}

TEST(New, MakesATopLevelNodeOfEachType) {
  for (const auto& [option, type] :
       {std::pair("list", "List"), std::pair("HTML", "HTML"), std::pair("dialog", "Dialog")}) {
    const ProjectFolder folder;
    const CommandResult made = folder.Run({"new", kProjectName, "--name", "Disk Console", "--type", option});
    ExpectSuccess(made);
    EXPECT_EQ(made.output, "console.xml: a new project, node 0: Disk Console\n");
    const nlohmann::json nodes = folder.Json(kProjectName)["nodes"];
    ASSERT_EQ(nodes.size(), 1U);
    EXPECT_EQ(nodes[0]["cookie"], "0");
    EXPECT_EQ(nodes[0]["name"], "Disk Console");
    EXPECT_EQ(nodes[0]["type"], type);
  }
}

TEST(New, WithoutATypeTheNodeIsAList) {
  const ProjectFolder folder;
  ExpectSuccess(folder.Run({"new", kProjectName, "--name", "x", "--icon", "none", "--no-scripts"}));
  EXPECT_EQ(folder.Json(kProjectName)["nodes"][0]["type"], "List");
}

TEST(New, RefusesAPlaceWhereAnythingIs) {
  const EditFolder folder;
  folder.Write("empty", "");
  folder.ExpectRefused({"new", kProjectName}, ": there is something by that name already; give", kAlreadyExistsText);
  const auto files = folder.Files();
  ExpectFailure(folder.Run({"new", "empty"}), "empty: there is something by that name already; ", kAlreadyExistsText);
  ExpectFailure(folder.Run({"new", "scripts"}), "scripts: there is something by that name already; ",
                kAlreadyExistsText);
  EXPECT_TRUE(folder.Files() == files);
}

TEST(New, RefusesAFolderThatIsNotThere) {
  const ProjectFolder folder;
  ExpectFailure(folder.Run({"new", "sub/console.xml"}), "sub/console.xml: its folder is not there; ", "0x80070003");
  EXPECT_EQ(folder.Listing(), "");
}

TEST(New, RefusesFilesThatNoNewProjectHas) {
  const ProjectFolder folder;
  folder.Write("a.js", "a");
  ExpectFailure(folder.Run({"new", kProjectName, "--name", "x", "--script", "a.js"}),
                "console.xml: \"a.js\" is no code file of the project; add it with \"ondrel add code\" ", "0x80070490");
  EXPECT_EQ(folder.Listing(), "a.js\n");
}

TEST(New, DryRunPrintsTheWholeFileAndMakesNone) {
  const ProjectFolder folder;
  const CommandResult result = folder.Run({"new", kProjectName, "--name", "x", "--dry-run"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::StartsWith("--- console.xml\n+++ console.xml\n@@ -0,0 +1,"));
  EXPECT_THAT(result.output, testing::HasSubstr("<Node Cookie=\"0\" Name=\"x\" Icon=\"0\" Type=\"List\">\n"));
  EXPECT_EQ(folder.Listing(), "");
}

}  // namespace
}  // namespace ondrel::test
