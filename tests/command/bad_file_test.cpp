// Files that are no definition at all, and text that tries to harm its reader.
#include <filesystem>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bad_file.h"
#include "project_folder.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(BadFile, AMissingFile) {
  ExpectAllFail(ProjectFolder(), "gone.xml", "gone.xml: there is no such file; ", "0x80070002");
}

TEST(BadFile, AFileInAMissingFolder) {
  ExpectAllFail(ProjectFolder(), "gone/console.xml", "gone/console.xml: its folder is not there; ", "0x80070003");
}

TEST(BadFile, AnEmptyName) { ExpectAllFail(ProjectFolder(), "", "the name is empty; ", "0x80070003"); }

TEST(BadFile, AnEmptyFile) {
  const ProjectFolder folder;
  folder.Write("empty", "");
  ExpectAllFail(folder, "empty", "empty: the file is empty; ", "0x8007000D");
}

TEST(BadFile, AFolder) {
  const ProjectFolder folder;
  folder.Write("folder/inside", "");
  ExpectAllFail(folder, "folder", "folder: it is a folder; ", "0x80070005");
}

TEST(BadFile, BinaryBytesAreNeitherForm) {
  const ProjectFolder folder;
  folder.Write("picture.png", std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16));
  ExpectFailure(folder.Show("picture.png"),
                "picture.png: it is neither a project file nor an object image of version 1: it begins with version "
                "1196314761; ",
                "archive cause 7");
  ExpectFailure(folder.Run({"compile", "picture.png", "-o", kImageName}),
                "picture.png: it is no project file, which is XML text; ", "0x8007000D");
  EXPECT_EQ(folder.Listing(), "picture.png\n");
}

TEST(BadFile, RandomBytesNeverCrash) {
  std::mt19937 random(20240607);  // the same bytes in every run
  for (int round = 0; round < 40; ++round) {
    const ProjectFolder folder;
    std::string bytes = round % 2 == 0 ? "<" : std::string("\1\0\0\0\1\0\0\0\1\0\0\0\0\0\0\0", 16);
    for (int index = 0; index < 300; ++index) bytes += static_cast<char>(random());
    folder.Write("noise", bytes);
    ExpectFailure(folder.Show("noise"), "noise:", round % 2 == 0 ? "0x8007000D" : "archive cause 3");
  }
}

TEST(BadFile, AnEntityBombIsRefused) {
  const ProjectFolder folder;
  std::string text = "<!DOCTYPE Project [\n<!ENTITY e0 \"ha ha ha ha ha ha ha ha ha ha ha ha\">\n";
  for (int level = 1; level < 12; ++level) {
    text += "<!ENTITY e" + std::to_string(level) + " \"";
    for (int reference = 0; reference < 10; ++reference) text += "&e" + std::to_string(level - 1) + ';';
    text += "\">\n";
  }
  folder.WriteProject(text + "]>\n<Project>&e11;</Project>");
  ExpectAllFail(folder, kProjectName, "console.xml:", "0x8007000D");
}

TEST(BadFile, AnEntityBombInAnAttributeIsRefused) {
  const ProjectFolder folder;
  std::string text = "<!DOCTYPE Project [\n<!ENTITY e0 \"" + std::string(50'000, 'x') + "\">\n]>\n<Project a=\"";
  for (int reference = 0; reference < 20'000; ++reference) text += "&e0;";
  folder.WriteProject(text + "\"/>");
  ExpectAllFail(folder, kProjectName, "console.xml:", "0x8007000D");
}

TEST(BadFile, AnExternalEntityIsNotOpened) {
  const ProjectFolder folder;
  folder.WriteProject(ExternalEntityProject(folder.Write("secret.txt", "the secret text")));
  const CommandResult result = folder.Show(kProjectName);
  ExpectFailure(result, "console.xml:", "0x8007000D");
  EXPECT_THAT(result.errors, Not(HasSubstr("secret text")));
  ExpectFailure(folder.Compile(), "console.xml:", "0x8007000D");
}

TEST(BadFile, AnExternalSubsetIsNotOpened) {
  const ProjectFolder folder;
  folder.WriteProject(ExternalSubsetProject(folder.Write("subset.dtd", "<!ENTITY e \"text\">")));
  ExpectAllFail(folder, kProjectName, "console.xml:1: ", "0x8007000D");
}

TEST(BadFile, AnElementsNameDoesNotBuryTheMessage) {
  const ProjectFolder folder;
  folder.WriteProject("<" + std::string(100'000, 'x') + ">");
  const CommandResult result = folder.Show(kProjectName);
  ExpectFailure(result, "console.xml:1: the XML cannot be read: ", "0x8007000D");
  EXPECT_LT(result.errors.size(), 400U);
}

TEST(BadFile, ElementsNestedWithoutEndAreRefused) {
  const ProjectFolder folder;
  std::string text;
  for (int level = 0; level < 200'000; ++level) text += "<a>\n";
  folder.WriteProject(text);
  ExpectAllFail(folder, kProjectName, "console.xml:20000", "0x8007000D");
}

}  // namespace
}  // namespace ondrel::test
