// The statuses of icon files that give no icon. Windows tells less: it may leave no last error, or count icons whose
// handles are null.
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"

namespace ondrel::test {
namespace {

TEST(PosixIconStatus, MissingFileLeavesNoHandles) {
  const TemporaryFolder folder;
  EXPECT_TRUE(FailedWith(ExtractIcons(folder / "none.ico"), kFileUnreadable, ERROR_FILE_NOT_FOUND));
}

TEST(PosixIconStatus, MissingFolder) {
  const TemporaryFolder folder;
  EXPECT_TRUE(FailedWith(ExtractIcons(folder / "none/none.ico"), kFileUnreadable, ERROR_PATH_NOT_FOUND));
}

TEST(PosixIconStatus, DriveThatTheSystemDoesNotHave) {
  EXPECT_TRUE(FailedWith(ExtractIcons("Z:\\icons\\a.ico"), kFileUnreadable, ERROR_PATH_NOT_FOUND));
}

TEST(PosixIconStatus, Folder) {
  const TemporaryFolder folder;
  EXPECT_TRUE(FailedWith(ExtractIcons(folder.Path()), kFileUnreadable, ERROR_ACCESS_DENIED));
}

TEST(PosixIconStatus, NoPath) {
  HICON icon = nullptr;
  SetLastError(ERROR_SUCCESS);
  EXPECT_EQ(ExtractIconExW(nullptr, 0, &icon, nullptr, 1), kNoIconsFound);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(icon, nullptr);
}

TEST(PosixIconStatus, FilesWithoutAnIcon) {
  const IconPicture picture = PatternPicture(32, 32, 4);
  std::string reserved = FourBitIconFile();
  reserved[0] = 1;
  struct Case {
    const char* name;
    std::string bytes;
  };
  for (const Case& c : {Case{"empty", ""}, Case{"short", std::string("\0\0\1\0\1", 5)},
                        Case{"no entry", IconFileBytes({})}, Case{"cursor", IconFileBytes({picture}, kCursorFileType)},
                        Case{"unknown type", IconFileBytes({picture}, 3)}, Case{"reserved word set", reserved},
                        Case{"text", "<?xml version=\"1.0\"?>"}, Case{"executable", std::string("MZ\x90\0\3\0\0\0", 8)},
                        Case{"picture file", std::string("BM\x46\0\0\0\0\0\0\0", 10)}}) {
    EXPECT_TRUE(FailedWith(ExtractIconsOf(c.bytes), kNoIconsFound, ERROR_RESOURCE_DATA_NOT_FOUND)) << c.name;
  }
}

TEST(PosixIconStatus, PngImageIsRefused) {
  // The signature and the header chunk of a picture of 32 x 32 pixels.
  const std::string png("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x20\0\0\0\x20\x08\6\0\0\0\x73\x7A\x7A\xF4", 33);
  EXPECT_TRUE(
      FailedWith(ExtractIconsOf(IconFileBytes({StoredImage(32, 32, 32, png)})), kNoIconsFound, ERROR_INVALID_DATA));
}

TEST(PosixIconStatus, PngImageBesideBetterOnesDoesNoHarm) {
  const std::string png("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\1\0\0\0\1\0\x08\6\0\0\0\x5C\x72\xA8\x66", 33);
  const IconPicture picture = PatternPicture(32, 32, 32);
  // The directory calls the PNG image as small as the icon; its own header says 256 x 256.
  const Extraction extraction = ExtractIconsOf(IconFileBytes({StoredImage(32, 32, 32, png), picture}));
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
}

TEST(PosixIconStatus, FileLongerThanAnyIconFileIsDamaged) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.Write("long.ico", FourBitIconFile());
  std::filesystem::resize_file(path, 33ULL << 30);  // takes no room on the disk
  EXPECT_TRUE(FailedWith(ExtractIcons(path), kNoIconsFound, ERROR_INVALID_DATA));
}

TEST(PosixIconStatus, LongFileOfAnotherKindHasNoIcon) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.Write("long.bin", "MZ");
  std::filesystem::resize_file(path, 33ULL << 30);
  EXPECT_TRUE(FailedWith(ExtractIcons(path), kNoIconsFound, ERROR_RESOURCE_DATA_NOT_FOUND));
}

TEST(PosixIconStatus, OnlyTheFirstIconIsGiven) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("a.ico", FourBitIconFile()));
  HICON icon = nullptr;
  SetLastError(ERROR_SUCCESS);
  EXPECT_EQ(ExtractIconExW(path, 1, &icon, nullptr, 1), kNoIconsFound);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(icon, nullptr);
}

TEST(PosixIconStatus, IconsInBothSizesAreOne) { EXPECT_EQ(ExtractIconsOf(FourBitIconFile()).result, kIconExtracted); }

}  // namespace
}  // namespace ondrel::test
