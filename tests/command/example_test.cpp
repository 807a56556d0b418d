// The definition that comes with the project, through the whole command.
#include <filesystem>
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

const std::filesystem::path kExample =
    std::filesystem::path(ONDREL_SOURCE_DIR) / "examples" / "disk-console" / "disk-console.xml";

/// The image keeps a List node's view out, so that an example that gave one to such a node would not compare equal.
TEST(Example, TheImageTellsWhatTheProjectTells) {
  const ProjectFolder folder;
  ExpectSuccess(folder.Run({"compile", Utf8(kExample), "-o", kImageName}));
  const nlohmann::json project = folder.Json(Utf8(kExample));
  const nlohmann::json image = folder.Json(kImageName);
  EXPECT_EQ(project["form"], "project");
  EXPECT_EQ(image["form"], "image");
  EXPECT_EQ(image["nodes"].dump(1), project["nodes"].dump(1));
  EXPECT_EQ(image["dialogs"].dump(1), project["dialogs"].dump(1));

  ASSERT_EQ(image["icons"].size(), project["icons"].size());
  for (std::size_t index = 0; index < image["icons"].size(); ++index) {
    nlohmann::json icon = project["icons"][index];
    EXPECT_TRUE(icon["path"].is_string()) << icon;
    icon["path"] = nullptr;
    EXPECT_EQ(image["icons"][index], icon);
  }

  std::map<std::string, nlohmann::json> sizes;  // the forms list code files in different orders
  for (const nlohmann::json& file : project["codeFiles"]) sizes[file["cookie"]] = file["bytes"];
  EXPECT_EQ(image["codeFiles"].size(), sizes.size());
  for (const nlohmann::json& file : image["codeFiles"]) EXPECT_EQ(file["bytes"], sizes[file["cookie"]]) << file;
}

TEST(Example, CompilesToTheSameBytesAgain) {
  const ProjectFolder folder;
  ExpectSuccess(folder.Run({"compile", Utf8(kExample), "-o", "first.img"}));
  ExpectSuccess(folder.Run({"compile", Utf8(kExample), "-o", "second.img"}));
  EXPECT_TRUE(ReadBytes(folder / "first.img") == ReadBytes(folder / "second.img"));
}

TEST(Example, IsDrawnWithNothingMissing) {
  const CommandResult result = ProjectFolder().Show(Utf8(kExample));
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::Not(testing::HasSubstr("(missing)")));
  EXPECT_THAT(result.output, testing::Not(testing::HasSubstr("unreadable")));
}

}  // namespace
}  // namespace ondrel::test
