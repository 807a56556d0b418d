// Files that `ondrel icon` makes no icon of, and places that it writes no picture to.
#include <filesystem>

#include <gtest/gtest.h>

#include "project_folder.h"
#include "support/icon_bytes.h"

namespace ondrel::test {
namespace {

constexpr const char* kPictureName = "icon.png";

/// The command refuses a file, with a picture asked for and without; an old picture stays.
void ExpectRefused(const ProjectFolder& folder, const std::string& file, const std::string& complaint,
                   const std::string& status) {
  folder.Write(kPictureName, "old picture");
  const std::string listing = folder.Listing();
  const std::string start = file.empty() ? complaint : file + ": " + complaint;
  ExpectFailure(folder.Run({"icon", file}), start, status);
  ExpectFailure(folder.Run({"icon", file, "-o", kPictureName}), start, status);
  EXPECT_EQ(folder.Listing(), listing);
  EXPECT_EQ(ReadBytes(folder / kPictureName), "old picture");
}

TEST(BadIconFile, AMissingFile) { ExpectRefused(ProjectFolder(), "gone.ico", "there is no such file; ", "0x80070002"); }

TEST(BadIconFile, AFileInAMissingFolder) {
  ExpectRefused(ProjectFolder(), "gone/disk.ico", "its folder is not there; ", "0x80070003");
}

TEST(BadIconFile, AnEmptyName) { ExpectRefused(ProjectFolder(), "", "the name is empty; ", "0x80070003"); }

TEST(BadIconFile, AFolder) {
  const ProjectFolder folder;
  folder.Write("folder/inside", "");
  ExpectRefused(folder, "folder", "it is a folder; ", "0x80070005");
}

struct WithoutIcon {
  const char* name;
  std::string bytes;
};

const WithoutIcon kWithoutIcon[] = {
    {"empty", ""},
    {"text", "This is no icon.\n"},
    {"project", "<Project/>"},
    {"cursor", IconFileBytes({SolidPicture(32, 32, 32, 0)}, kCursorFileType)},
    {"no images", IconFileBytes({})},
    {"a picture", "\x89PNG\r\n\x1A\n"},
};

TEST(BadIconFile, AFileWithoutAnIcon) {
  for (const WithoutIcon& file : kWithoutIcon) {
    SCOPED_TRACE(file.name);
    const ProjectFolder folder;
    folder.Write("disk.ico", file.bytes);
    ExpectRefused(folder, "disk.ico", "it holds no icon; ", "0x80070714");
  }
}

TEST(BadIconFile, ADirectoryOfImagesThatIsCut) {
  const ProjectFolder folder;
  folder.Write("disk.ico", SmallIconFile().substr(0, 30));
  ExpectRefused(folder, "disk.ico", "its icon is damaged; make the file anew", "0x8007000D");
}

TEST(BadIconFile, AChosenImageThatIsCut) {
  StoredImage cut = SolidPicture(32, 32, 32, 0);
  cut.bytes.resize(cut.bytes.size() / 2);
  const StoredImage whole = SolidPicture(16, 16, 32, 0);
  const ProjectFolder folder;
  folder.Write("disk.ico", IconFileBytes({whole, cut}));
  ExpectRefused(folder, "disk.ico", "its icon is damaged; make the file anew", "0x8007000D");
}

TEST(BadIconFile, AChosenImageOfAnUnknownDepth) {
  StoredImage odd = SolidPicture(32, 32, 32, 0);
  odd.bytes[14] = 31;  // bits per pixel
  const ProjectFolder folder;
  folder.Write("disk.ico", IconFileBytes({odd}));
  ExpectRefused(folder, "disk.ico", "its icon is damaged; make the file anew", "0x8007000D");
}

class BadIconPicture : public testing::Test {
 protected:
  BadIconPicture() { m_folder.Write("disk.ico", SmallIconFile()); }

  void ExpectPlaceRefused(const std::string& place, const std::string& start, const std::string& status) const {
    const std::string listing = m_folder.Listing();
    ExpectFailure(m_folder.Run({"icon", "disk.ico", "-o", place}), start, status);
    EXPECT_EQ(m_folder.Listing(), listing);
    EXPECT_EQ(ReadBytes(m_folder / "disk.ico"), SmallIconFile());
  }

  ProjectFolder m_folder;
};

TEST_F(BadIconPicture, OverItsFile) {
  for (const std::string place : {"disk.ico", "./disk.ico"}) {
    ExpectPlaceRefused(place, place + ": the picture would overwrite the file of the icon; ", "0x80070057");
  }
}

TEST_F(BadIconPicture, OverASecondNameOfItsFile) {
  std::filesystem::create_hard_link(m_folder / "disk.ico", m_folder / "disk.png");
  ExpectPlaceRefused("disk.png", "disk.png: the picture would overwrite the file of the icon; ", "0x80070057");
}

TEST_F(BadIconPicture, OverAFolder) {
  std::filesystem::create_directory(m_folder / "out");
  for (const std::string place : {"out", "out/", "."}) {
    ExpectPlaceRefused(place, place + ": it is a folder; ", "0x80070005");
  }
}

TEST_F(BadIconPicture, InAMissingFolder) {
  ExpectPlaceRefused("gone/disk.png", "gone/disk.png: its folder is not there; ", "0x80070003");
}

TEST_F(BadIconPicture, WithoutAName) { ExpectPlaceRefused("", "the name is empty; ", "0x80070003"); }

}  // namespace
}  // namespace ondrel::test
