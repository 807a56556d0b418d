// What `ondrel compile` makes of symbolic links, which users of Windows seldom may make.
#include <filesystem>

#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

TEST(Compile, ALinkToTheProjectIsTheProject) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  std::filesystem::create_symlink("console.xml", folder / "link.img");
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", "link.img"}),
                "link.img: the image would overwrite the project", "0x80070057");
  EXPECT_EQ(ReadBytes(folder / kProjectName), "<Project/>");
}

}  // namespace
}  // namespace ondrel::test
