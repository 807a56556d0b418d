// Icon files that are there and icon files that are not.
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"

namespace ondrel::test {
namespace {

TEST(IconStatus, MissingFile) {
  const TemporaryFolder folder;
  HICON large = nullptr;
  HICON smallIcon = nullptr;
  SetLastError(ERROR_SUCCESS);
  EXPECT_EQ(ExtractIconExW(Wide(folder / "none.ico"), 0, &large, &smallIcon, 1), kFileUnreadable);
  EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST(IconStatus, BothSeparatorsOfPathsWork) {
  const TemporaryFolder folder;
  folder.Write("sub/a.ico", FourBitIconFile());
  EXPECT_TRUE(Succeeded(ExtractIcons(folder / "sub\\a.ico")));
  EXPECT_TRUE(Succeeded(ExtractIcons(folder / "sub/a.ico")));
}

TEST(IconStatus, OneSizeMayBeLeftOut) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("a.ico", FourBitIconFile()));
  HICON icon = nullptr;
  EXPECT_EQ(ExtractIconExW(path, 0, &icon, nullptr, 1), kIconExtracted);
  EXPECT_TRUE(Shows(icon, 32, PatternPicture(32, 32, 4)));
  DestroyIcon(icon);
  EXPECT_EQ(ExtractIconExW(path, 0, nullptr, &icon, 1), kIconExtracted);
  EXPECT_TRUE(Shows(icon, 16, PatternPicture(16, 16, 4)));
  DestroyIcon(icon);
}

}  // namespace
}  // namespace ondrel::test
