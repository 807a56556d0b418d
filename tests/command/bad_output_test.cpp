// Places that an image cannot be written to.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

TEST(BadOutput, AMissingFolder) {
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", "gone/console.img"}),
                "gone/console.img: its folder is not there; ", "0x80070003");
  EXPECT_EQ(folder.Listing(), "a.js\nconsole.xml\n");
}

TEST(BadOutput, AFolder) {
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  std::filesystem::create_directory(folder / "out");
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", "out"}), "out: it is a folder; ", "0x80070005");
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", "out/"}), "out/: it is a folder; ", "0x80070005");
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", "."}), ".: it is a folder; ", "0x80070005");
  EXPECT_EQ(folder.Listing(), "a.js\nconsole.xml\nout\n");
}

TEST(BadOutput, AFileInPlaceOfTheFolder) {
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", "a.js/console.img"}),
                "a.js/console.img: its folder is not there; ", "0x80070003");
}

TEST(BadOutput, AnEmptyName) {
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", ""}), "the name is empty; ", "0x80070003");
}

}  // namespace
}  // namespace ondrel::test
