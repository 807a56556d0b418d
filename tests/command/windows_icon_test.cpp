// Icons in files that another program keeps for itself, and devices, as only Windows has them.
#include <gtest/gtest.h>

#include <ondrel/platform/framework.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

TEST(BadIconFile, AFileThatAnotherProgramKeepsForItself) {
  const ProjectFolder folder;
  const CFile keeper(Wide(folder.Write("disk.ico", SmallIconFile())), CFile::modeRead | CFile::shareExclusive);
  ExpectFailure(folder.Run({"icon", "disk.ico"}), "disk.ico: another program is using it; ", "0x80070020");
}

TEST(BadIconFile, ADevice) {
  ExpectFailure(ProjectFolder().Run({"icon", "NUL"}), "NUL: it is no regular file; ", "0x80070005");
}

TEST(WindowsBadIconPicture, OverADevice) {
  const ProjectFolder folder;
  folder.Write("disk.ico", SmallIconFile());
  ExpectFailure(folder.Run({"icon", "disk.ico", "-o", "NUL"}), "NUL: it is no regular file; ", "0x80070005");
  EXPECT_EQ(folder.Listing(), "disk.ico\n");
}

TEST(WindowsBadIconPicture, OverItsFileInOtherLetters) {
  const ProjectFolder folder;
  folder.Write("disk.ico", SmallIconFile());
  ExpectFailure(folder.Run({"icon", "disk.ico", "-o", "DISK.ICO"}),
                "DISK.ICO: the picture would overwrite the file of the icon; ", "0x80070057");
  EXPECT_EQ(ReadBytes(folder / "disk.ico"), SmallIconFile());
}

}  // namespace
}  // namespace ondrel::test
