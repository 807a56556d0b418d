// Places that an image cannot be written to on Windows: devices, files that may not be written, and files that another
// program has open.
#include <windows.h>

#include <gtest/gtest.h>

#include <ondrel/platform/framework.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

/// Compiles over an old image, which stays as it was.
void ExpectOldImageKept(const ProjectFolder& folder, const std::string& complaint, const std::string& status) {
  const std::string listing = folder.Listing();
  ExpectFailure(folder.Compile(), "console.img: " + complaint, status);
  EXPECT_EQ(folder.Listing(), listing);
}

TEST(BadOutput, ADevice) {
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  for (const std::string device : {"NUL", "nul", "sub\\..\\NUL"}) {
    ExpectFailure(folder.Run({"compile", kProjectName, "-o", device}), device + ": it is no regular file; ",
                  "0x80070005");
  }
  EXPECT_EQ(folder.Listing(), "a.js\nconsole.xml\n");
}

TEST(BadOutput, AnImageThatMayOnlyBeRead) {
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  const CString image = Wide(folder.Write(kImageName, "old image"));
  ASSERT_TRUE(SetFileAttributesW(image, FILE_ATTRIBUTE_READONLY));
  ExpectOldImageKept(folder, "access is denied; ", "0x80070005");
  EXPECT_EQ(ReadBytes(folder / kImageName), "old image");
  EXPECT_TRUE(SetFileAttributesW(image, FILE_ATTRIBUTE_NORMAL));
}

TEST(BadOutput, AnImageThatAnotherProgramHasOpen) {
  const ProjectFolder folder;
  WriteLargeDefinition(folder);
  {
    CFile reader(Wide(folder.Write(kImageName, "old image")), CFile::modeRead | CFile::shareExclusive);
    ExpectOldImageKept(folder, "another program is using it; ", "0x80070020");
  }
  EXPECT_EQ(ReadBytes(folder / kImageName), "old image");
}

}  // namespace
}  // namespace ondrel::test
