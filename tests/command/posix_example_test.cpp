// The icons of the example: drawn by a script for Python, which a build for Windows need not have at hand.
#include <filesystem>

#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

TEST(Example, ItsIconsAreThoseThatTheirScriptDraws) {
  const std::filesystem::path icons = std::filesystem::path(ONDREL_SOURCE_DIR) / "examples" / "disk-console" / "icons";
  const TemporaryFolder folder;
  std::filesystem::copy_file(icons / "draw-icons.py", folder / "draw-icons.py");
  CommandLine draw;
  draw.program = "/usr/bin/python3";
  draw.arguments = {(folder / "draw-icons.py").string()};
  const CommandResult drawn = RunCommand(draw);
  ASSERT_EQ(drawn.exitCode, 0) << drawn.errors;
  int compared = 0;
  for (const auto& entry : std::filesystem::directory_iterator(icons)) {
    if (entry.path().extension() != ".ico") continue;
    EXPECT_TRUE(ReadBytes(folder / entry.path().filename().string()) == ReadBytes(entry.path())) << entry.path();
    ++compared;
  }
  EXPECT_EQ(compared, 6);
}

}  // namespace
}  // namespace ondrel::test
