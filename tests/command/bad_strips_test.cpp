// Definitions that give no strips, and places that no strip is written to.
#include <filesystem>

#include <gtest/gtest.h>

#include "strip_images.h"
#include "support/model/hand_bytes.h"
#include "support/model/icon_fixtures.h"

namespace ondrel::test {
namespace {

/// The command refuses a definition, and old pictures stay.
void ExpectStripsRefused(const ProjectFolder& folder, const std::string& file, const std::string& complaint,
                         const std::string& status) {
  folder.Write(kSmallName, "old small");
  folder.Write(kLargeName, "old large");
  const std::string listing = folder.Listing();
  ExpectFailure(RunStrips(folder, file), file + ": " + complaint, status);
  EXPECT_EQ(folder.Listing(), listing);
  EXPECT_EQ(ReadBytes(folder / kSmallName), "old small");
  EXPECT_EQ(ReadBytes(folder / kLargeName), "old large");
}

void ExpectImageRefused(const std::vector<std::string>& icons, const std::string& complaint,
                        const std::string& status) {
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage(icons));
  ExpectStripsRefused(folder, kImageName, complaint, status);
}

TEST(BadStrips, OfAMissingFile) {
  ExpectStripsRefused(ProjectFolder(), "gone.xml", "there is no such file; ", "0x80070002");
}

TEST(BadStrips, OfAFileOfAnotherKind) {
  const ProjectFolder folder;
  folder.Write("disk.ico", SmallIconFile());
  ExpectStripsRefused(folder, "disk.ico", "it is neither a project file nor an object image", "archive cause 7");
}

TEST(BadStrips, OfAProjectWithoutIcons) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  ExpectStripsRefused(folder, kProjectName, "the project has no icon files, so there are no strips; add an Icon",
                      "0x80070714");
}

TEST(BadStrips, OfAnImageWithoutIcons) {
  ExpectImageRefused({}, "the object image has no icon files, so there are no strips; add one", "0x80070714");
}

TEST(BadStrips, OfAProjectWithADamagedIcon) {
  const ProjectFolder folder;
  folder.WriteProject(R"(<Project><FileGroup><Icon Cookie="2" Name="cut.ico"/></FileGroup></Project>)");
  folder.Write("cut.ico", SmallIconFile().substr(0, 200));
  ExpectFailure(RunStrips(folder, kProjectName), "console.xml:1: icon file 2, \"cut.ico\": its icon is damaged; ",
                "0x8007000D");
  EXPECT_EQ(folder.Listing(), "console.xml\ncut.ico\n");
}

/// The bitmaps of an icon whose large image claims a size and has four bytes.
std::string IconClaiming(std::int64_t width, std::int64_t height, unsigned depth = 32) {
  return BitmapBytes(width, height, width * depth / 8, depth, FromHex("00 00 00 00")) + BitmapBytes(1, 1, 2, 1, "") +
         StoredBitmaps(SolidPicture(1, 1, 32, 0));
}

TEST(BadStrips, OfAFirstIconOfNoSize) {
  ExpectImageRefused({IconClaiming(0, 0)}, "a strip of 1 icon of 0 x 0 pixels cannot be made; look at icon file 1",
                     "0x8007000D");
  ExpectImageRefused({IconClaiming(-2, 1), TinyIconBytes()},
                     "a strip of 2 icons of -2 x 1 pixels cannot be made; look at icon file 1", "0x8007000D");
  ExpectImageRefused({IconClaiming(2, -1)}, "a strip of 1 icon of 2 x -1 pixels cannot be made; ", "0x8007000D");
}

TEST(BadStrips, OfAFirstIconBeyondAnySize) {
  ExpectImageRefused({IconClaiming(20'000, 20'000)}, "a strip of 1 icon of 20000 x 20000 pixels cannot be made; ",
                     "0x8007000D");
  ExpectImageRefused({IconClaiming(0x7FFFFFFF, 0x7FFFFFFF)}, "a strip of 1 icon of 2147483647 x 2147483647 pixels ",
                     "0x8007000D");
  ExpectImageRefused({IconClaiming(8'192, 8'192), TinyIconBytes()}, "a strip of 2 icons of 8192 x 8192 pixels ",
                     "0x8007000D");
}

TEST(BadStrips, OfADepthThatTheSystemRefuses) {
  ExpectImageRefused({IconClaiming(1, 1, 64)}, "the system makes no strips of its icons; ", "0x80070057");
}

/// A project with an icon file and a code file, and its image.
class BadStripsPlace : public testing::Test {
 protected:
  BadStripsPlace() {
    m_folder.WriteProject(
        R"(<Project><FileGroup><Icon Cookie="1" Name="sub\a.ico"/><File Cookie="2" Name="a.js"/></FileGroup></Project>)");
    m_folder.Write("sub/a.ico", SmallIconFile());
    m_folder.Write("a.js", "run()");
    EXPECT_EQ(m_folder.Compile().exitCode, 0);
  }

  /// The command refuses a place for either strip, with a good one for the other.
  void ExpectPlaceRefused(const std::string& file, const std::string& place, const std::string& start,
                          const std::string& status) const {
    const std::string listing = m_folder.Listing();
    for (const auto& pictures : {std::vector<std::string>{"--small", place, "--large", "good.png"},
                                 std::vector<std::string>{"--small", "good.png", "--large", place},
                                 std::vector<std::string>{"--large", place}}) {
      std::vector<std::string> arguments = {"strips", file, "--key", "FF00FF"};
      arguments.insert(arguments.end(), pictures.begin(), pictures.end());
      ExpectFailure(m_folder.Run(arguments), start, status);
      EXPECT_EQ(m_folder.Listing(), listing);
    }
  }
  void ExpectOverwriting(const std::string& file, const std::string& place, const std::string& what) const {
    const std::string before = ReadBytes(m_folder / place);
    ExpectPlaceRefused(file, place, place + ": the picture would overwrite " + what + "; give it another name",
                       "0x80070057");
    EXPECT_EQ(ReadBytes(m_folder / place), before);
  }

  ProjectFolder m_folder;
};

TEST_F(BadStripsPlace, OverTheDefinitionAndItsFiles) {
  ExpectOverwriting(kProjectName, "console.xml", "the project");
  ExpectOverwriting(kProjectName, "sub/../console.xml", "the project");
  ExpectOverwriting(kProjectName, "sub/a.ico", "icon file \"sub\\a.ico\"");
  ExpectOverwriting(kProjectName, "a.js", "code file \"a.js\"");
  ExpectOverwriting(kImageName, "console.img", "the object image");
}

TEST_F(BadStripsPlace, OverASecondNameOfTheDefinition) {
  std::filesystem::create_hard_link(m_folder / kImageName, m_folder / "other.png");
  ExpectOverwriting(kImageName, "other.png", "the object image");
}

TEST_F(BadStripsPlace, OverAFolderOrInNone) {
  ExpectPlaceRefused(kImageName, "sub", "sub: it is a folder; ", "0x80070005");
  ExpectPlaceRefused(kImageName, "gone/a.png", "gone/a.png: its folder is not there; ", "0x80070003");
  ExpectPlaceRefused(kImageName, "", "the name is empty; ", "0x80070003");
}

TEST_F(BadStripsPlace, OfBothPicturesIsOne) {
  const std::string listing = m_folder.Listing();
  for (const std::string other : {"one.png", "./one.png", "sub/../one.png"}) {
    ExpectFailure(m_folder.Run({"strips", kImageName, "--key", "FF00FF", "--small", "one.png", "--large", other}),
                  other + ": the picture would overwrite the other one; give it another name", "0x80070057");
    EXPECT_EQ(m_folder.Listing(), listing);
  }
  m_folder.Write("one.png", "old picture");
  ExpectFailure(m_folder.Run({"strips", kImageName, "--key", "FF00FF", "--small", "one.png", "--large", "./one.png"}),
                "./one.png: the picture would overwrite the other one; give it another name", "0x80070057");
  EXPECT_EQ(ReadBytes(m_folder / "one.png"), "old picture");
}

TEST_F(BadStripsPlace, OfBothPicturesMayBeNamedAlikeInTwoFolders) {
  ExpectSuccess(
      m_folder.Run({"strips", kImageName, "--key", "FF00FF", "--small", "one.png", "--large", "sub/one.png"}));
  EXPECT_EQ(DecodePng(ReadBytes(m_folder / "one.png")).width, 16);
  EXPECT_EQ(DecodePng(ReadBytes(m_folder / "sub/one.png")).width, 32);
}

}  // namespace
}  // namespace ondrel::test
