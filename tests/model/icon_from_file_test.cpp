// An icon taken from a file: its images, its handles, and what it is after a failure.

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include <ondrel/MMCObjectIcon.h>
#include <ondrel/platform/framework.h>

#include "support/archive_bytes.h"
#include "support/live_handles.h"
#include "support/model/icon_fixtures.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

constexpr DWORD kIconKey = 0x00FF00FF;

void ExpectPicture(const CMMCObjectIcon& icon, bool large, const IconPicture& picture) {
  const tagBITMAP& geometry = icon.GetColourBitmap(large);
  EXPECT_EQ(geometry.bmType, 0);
  EXPECT_EQ(geometry.bmWidth, picture.width);
  EXPECT_EQ(geometry.bmHeight, picture.height);
  EXPECT_EQ(geometry.bmWidthBytes, 4 * picture.width);
  EXPECT_EQ(geometry.bmPlanes, 1);
  EXPECT_EQ(geometry.bmBitsPixel, 32);
  EXPECT_NE(geometry.bmBits, nullptr);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const DWORD expected = picture.IsTransparent(x, y) ? kIconKey : ColourOf(picture, x, y);
      ASSERT_EQ(icon.GetPixel(large, x, y, kIconKey), expected)
          << (large ? "large " : "small ") << x << ", " << y << ", " << picture.bitsPerPixel << " bits";
    }
  }
}

TEST(IconFromFile, ADefaultIconHasNoImagesAndNoHandles) { ExpectEmpty(CMMCObjectIcon()); }

TEST(IconFromFile, TakesTheLargeImageOfEveryDepth) {
  const TemporaryFolder folder;
  for (const int depth : {1, 4, 8, 24, 32}) {
    const IconPicture large = PatternPicture(32, 32, depth);
    CMMCObjectIcon icon;
    ASSERT_EQ(icon.Construct(WriteIcon(folder, "icon.ico", {PatternPicture(16, 16, depth), large})), S_OK)
        << depth << " bits";
    ExpectPicture(icon, true, large);
  }
}

TEST(IconFromFile, TakesTheSmallImageOfEveryDepth) {
  const TemporaryFolder folder;
  for (const int depth : {1, 4, 8, 24, 32}) {
    const IconPicture smallIcon = PatternPicture(16, 16, depth);
    CMMCObjectIcon icon;
    ASSERT_EQ(icon.Construct(WriteIcon(folder, "icon.ico", {smallIcon, PatternPicture(32, 32, depth)})), S_OK)
        << depth << " bits";
    ExpectPicture(icon, false, smallIcon);
  }
}

TEST(IconFromFile, KeepsTheAlphaOf32BitImages) {
  const TemporaryFolder folder;
  IconPicture large = SolidIcon(32, 0x00332211);
  large.pixels[0] = 0x7F112233;
  CMMCObjectIcon icon;
  ASSERT_EQ(icon.Construct(WriteIcon(folder, "icon.ico", {large, SolidIcon(16, 0)})), S_OK);
  const auto* const first = static_cast<const unsigned char*>(icon.GetColourBitmap(true).bmBits);
  EXPECT_EQ(first[0], 0x33);
  EXPECT_EQ(first[1], 0x22);
  EXPECT_EQ(first[2], 0x11);
  EXPECT_EQ(first[3], 0x7F);
}

TEST(IconFromFile, AMissingFileIsToldAndLeavesTheIconEmpty) {
  const TemporaryFolder folder;
  const auto before = CountLiveHandles();
  CMMCObjectIcon icon;
  EXPECT_EQ(icon.Construct(Wide(folder / "missing.ico")), kFileNotFound);
  ExpectEmpty(icon);
  EXPECT_EQ(CountLiveHandles().icons, before.icons);
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
}

TEST(IconFromFile, AFolderIsAccessDenied) {
  const TemporaryFolder folder;
  CMMCObjectIcon icon;
  EXPECT_EQ(icon.Construct(Wide(folder.Path())), kAccessDenied);
  ExpectEmpty(icon);
}

TEST(IconFromFile, TheStatusIsThatOfTheFileNotAnEarlierOne) {
  const TemporaryFolder folder;
  SetLastError(ERROR_DISK_FULL);
  CMMCObjectIcon icon;
  EXPECT_EQ(icon.Construct(Wide(folder / "missing.ico")), kFileNotFound);
  EXPECT_EQ(icon.Construct(WriteIcon(folder, "icon.ico", {SolidIcon(32, 0)})), S_OK);
}

TEST(IconFromFile, TwoHandlesLiveAsLongAsTheIcon) {
  const TemporaryFolder folder;
  const CString path = WriteIcon(folder, "icon.ico", {SolidIcon(32, 0), SolidIcon(16, 0)});
  const auto before = CountLiveHandles();
  {
    CMMCObjectIcon icon;
    ASSERT_EQ(icon.Construct(path), S_OK);
    EXPECT_EQ(CountLiveHandles().icons, before.icons + 2);
    EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps) << "the copies of its bitmaps are deleted";
    EXPECT_NE(icon.GetIcon(32, 32), nullptr);
    EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps) << "measuring deletes what it asks for";
  }
  EXPECT_EQ(CountLiveHandles().icons, before.icons);
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
}

TEST(IconFromFile, AMoveTakesTheImagesAndTheHandles) {
  const TemporaryFolder folder;
  const IconPicture large = PatternPicture(32, 32, 32);
  const CString path = WriteIcon(folder, "icon.ico", {large, PatternPicture(16, 16, 32)});
  const auto bytesOf = [](const CMMCObjectIcon& icon) {
    return Stored([&](CVellum& archive) { icon.Serialize(archive); });
  };
  const auto before = CountLiveHandles();
  {
    std::optional<CMMCObjectIcon> source(std::in_place);
    ASSERT_EQ(source->Construct(path), S_OK);
    const HICON largeHandle = source->GetIcon(32, 32);
    const HICON smallHandle = source->GetIcon(16, 16);
    const std::string images = bytesOf(*source);
    CMMCObjectIcon target(std::move(*source));
    EXPECT_EQ(target.GetIcon(32, 32), largeHandle);
    EXPECT_EQ(target.GetIcon(16, 16), smallHandle);
    EXPECT_EQ(source->GetIcon(32, 32), nullptr);
    EXPECT_EQ(source->GetColourBitmap(true).bmBits, nullptr);
    EXPECT_EQ(CountLiveHandles().icons, before.icons + 2);
    source.reset();
    EXPECT_EQ(CountLiveHandles().icons, before.icons + 2);
    ExpectPicture(target, true, large);
    EXPECT_EQ(Hex(bytesOf(target)), Hex(images));
  }
  EXPECT_EQ(CountLiveHandles().icons, before.icons);
}

TEST(IconFromFile, IconsMoveAndDoNotCopy) {
  EXPECT_FALSE(std::is_copy_constructible_v<CMMCObjectIcon>);
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<CMMCObjectIcon>);
  EXPECT_TRUE(std::has_virtual_destructor_v<CMMCObjectIcon>);
  EXPECT_TRUE(std::has_virtual_destructor_v<CMMCObjectIcon::CBitmapData>);
}

}  // namespace
}  // namespace ondrel::test
