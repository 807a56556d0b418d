// Places for strips on Windows: names do not differ by the case of a letter, and files may be kept open or read-only.
#include <windows.h>

#include <gtest/gtest.h>

#include <ondrel/platform/framework.h>

#include "strip_images.h"
#include "support/model/icon_fixtures.h"

namespace ondrel::test {
namespace {

TEST(WindowsBadStripsPlace, OfBothPicturesIsOneInOtherLetters) {
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage({TinyIconBytes()}));
  // The second pair has a letter outside ASCII.
  for (const auto& [place, other] : {std::pair<std::string, std::string>{"one.png", "ONE.png"},
                                     std::pair<std::string, std::string>{"\xC3\xA9.png", "\xC3\x89.png"}}) {
    ExpectFailure(folder.Run({"strips", kImageName, "--key", "FF00FF", "--small", place, "--large", other}),
                  other + ": the picture would overwrite the other one; ", "0x80070057");
    EXPECT_EQ(folder.Listing(), "console.img\n");
  }
}

TEST(WindowsBadStripsPlace, APictureThatMayOnlyBeReadLeavesBoth) {
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage({TinyIconBytes()}));
  const CString old = Wide(folder.Write(kLargeName, "old large"));
  ASSERT_TRUE(SetFileAttributesW(old, FILE_ATTRIBUTE_READONLY));
  ExpectFailure(RunStrips(folder, kImageName), "large.png: access is denied; ", "0x80070005");
  EXPECT_EQ(folder.Listing(), "console.img\nlarge.png\n");
  EXPECT_EQ(ReadBytes(folder / kLargeName), "old large");
  EXPECT_TRUE(SetFileAttributesW(old, FILE_ATTRIBUTE_NORMAL));
}

TEST(WindowsBadStripsPlace, APictureThatAnotherProgramHasOpenLeavesBoth) {
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage({TinyIconBytes()}));
  const CFile reader(Wide(folder.Write(kLargeName, "old large")), CFile::modeRead | CFile::shareExclusive);
  ExpectFailure(RunStrips(folder, kImageName), "large.png: another program is using it; ", "0x80070020");
  EXPECT_EQ(folder.Listing(), "console.img\nlarge.png\n");
}

}  // namespace
}  // namespace ondrel::test
