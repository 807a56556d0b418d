// What Windows leaves of icon files that give no icon: no reason in the last error, and at times a count of icons whose
// handles are null.
#include <string>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"
#include "support/live_handles.h"

namespace ondrel::test {
namespace {

TEST(WindowsIconStatus, FilesWithoutAUsableIconGiveNoResultOrNoHandles) {
  const IconPicture picture = PatternPicture(32, 32, 4);
  struct Case {
    const char* name;
    std::string bytes;
  };
  for (const Case& c :
       {Case{"empty", ""}, Case{"short", std::string("\0\0\1\0\1", 5)}, Case{"no entry", IconFileBytes({})},
        Case{"cursor", IconFileBytes({picture}, kCursorFileType)}, Case{"text", "<?xml version=\"1.0\"?>"},
        Case{"executable", std::string("MZ\x90\0\3\0\0\0", 8)},
        Case{"no image", IconFileBytes({StoredImage(32, 32, 32, "no image")})},
        Case{"cut image", IconFileBytes({StoredImage(32, 32, 4, ImageBytes(picture).substr(0, 60))})}}) {
    const TemporaryFolder folder;
    HICON large = nullptr;
    HICON smallIcon = nullptr;
    const UINT result = ExtractIconExW(Wide(folder.Write("a.ico", c.bytes)), 0, &large, &smallIcon, 1);
    if (result == kNoIconsFound || result == kFileUnreadable) continue;  // the handles say nothing then
    EXPECT_EQ(large, nullptr) << c.name;
    EXPECT_EQ(smallIcon, nullptr) << c.name;
  }
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

TEST(WindowsIconStatus, AFolderGivesNoIcon) {
  const TemporaryFolder folder;
  HICON large = nullptr;
  HICON smallIcon = nullptr;
  const UINT result = ExtractIconExW(Wide(folder.Path()), 0, &large, &smallIcon, 1);
  EXPECT_TRUE(result == kNoIconsFound || result == kFileUnreadable) << result;
}

}  // namespace
}  // namespace ondrel::test
