// Places for strips on systems with links, devices, pipes, limits, and names that differ by the case of a letter.
#include <filesystem>

#include <gtest/gtest.h>

#include "strip_images.h"
#include "support/model/icon_fixtures.h"
#include "support/posix/process.h"

namespace ondrel::test {
namespace {

CommandResult RunAt(const ProjectFolder& folder, const std::string& smallPlace, const std::string& largePlace) {
  return folder.Run({"strips", kImageName, "--key", "FF00FF", "--small", smallPlace, "--large", largePlace});
}

ProjectFolder& WithImage(ProjectFolder& folder) {
  folder.Write(kImageName, IconImage({TinyIconBytes()}));
  return folder;
}

TEST(Strips, NamesMayDifferByTheCaseOfALetter) {
  ProjectFolder folder;
  ExpectSuccess(RunAt(WithImage(folder), "a.png", "A.png"));
  EXPECT_EQ(folder.Listing(), "A.png\na.png\nconsole.img\n");
}

TEST(PosixBadStripsPlace, OfBothPicturesIsOneThroughLinks) {
  ProjectFolder folder;
  WithImage(folder).Write("sub/old.png", "old picture");
  std::filesystem::create_symlink("sub/new.png", folder / "to-nothing.png");
  std::filesystem::create_symlink("sub/old.png", folder / "to-old.png");
  std::filesystem::create_directory_symlink("sub", folder / "link");
  const std::string listing = folder.Listing();
  const struct {
    const char* smallPlace;
    const char* largePlace;
  } pairs[] = {{"sub/new.png", "to-nothing.png"},
               {"link/new.png", "sub/new.png"},
               {"to-nothing.png", "link/new.png"},
               {"to-old.png", "link/old.png"}};
  for (const auto& pair : pairs) {
    ExpectFailure(RunAt(folder, pair.smallPlace, pair.largePlace),
                  std::string(pair.largePlace) + ": the picture would overwrite the other one; ", "0x80070057");
    EXPECT_EQ(folder.Listing(), listing);
  }
  EXPECT_EQ(ReadBytes(folder / "sub/old.png"), "old picture");
}

TEST(PosixBadStripsPlace, OverALinkToTheDefinition) {
  ProjectFolder folder;
  WithImage(folder);
  std::filesystem::create_symlink(kImageName, folder / "link.png");
  ExpectFailure(RunAt(folder, "link.png", "large.png"), "link.png: the picture would overwrite the object image; ",
                "0x80070057");
  EXPECT_EQ(folder.Listing(), "console.img\nlink.png\n");
}

TEST(PosixBadStripsPlace, OverADeviceOrAPipe) {
  ProjectFolder folder;
  MakeNamedPipe(WithImage(folder) / "pipe");
  ExpectFailure(RunAt(folder, "small.png", "/dev/null"), "/dev/null: it is no regular file; ", "0x80070005");
  ExpectFailure(RunAt(folder, "pipe", "large.png"), "pipe: it is no regular file; ", "0x80070005");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
  EXPECT_EQ(folder.Listing(), "console.img\npipe\n");
}

TEST(PosixBadStripsPlace, ALimitOfSizeForOneLeavesBothOldPictures) {
  const ProjectFolder folder;
  folder.Write(kImageName,
               IconImage({StoredBitmaps(PatternPicture(32, 32, 32)) + StoredBitmaps(SolidPicture(1, 1, 32, 0))}));
  folder.Write(kSmallName, "old small");
  folder.Write(kLargeName, "old large");
  CommandLine commandLine =
      folder.Command({"strips", kImageName, "--key", "FF00FF", "--small", kSmallName, "--large", kLargeName});
  commandLine.largestFile = 200;  // enough for one pixel
  ExpectFailure(RunCommand(commandLine), "large.png: the disk is full, or a limit of size is reached; ", "0x80070070");
  EXPECT_EQ(ReadBytes(folder / kSmallName), "old small");
  EXPECT_EQ(ReadBytes(folder / kLargeName), "old large");
  EXPECT_EQ(folder.Listing(), "console.img\nlarge.png\nsmall.png\n");
}

}  // namespace
}  // namespace ondrel::test
