// Image lists and the framework's owner of one.
#include <gtest/gtest.h>
#include <ondrel/platform/framework/image_list.h>

#include "graphics/icon_reading.h"
#include "support/live_handles.h"

namespace ondrel::test {
namespace {

using platform::UniqueIcon;

constexpr UINT kFlags = ILC_COLOR32 | ILC_MASK;

// A picture like PatternPicture with black where it is transparent: a list may blacken what its masks hide.
IconPicture HiddenInBlack(int bitsPerPixel) {
  IconPicture picture = PatternPicture(32, 32, bitsPerPixel);
  if (!picture.palette.empty()) picture.palette.front() = {};
  for (std::size_t index = 0; index < picture.pixels.size(); ++index) {
    if (picture.transparent[index]) picture.pixels[index] = 0;
  }
  return picture;
}

TEST(ImageList, AppendsIconsOneAfterTheOther) {
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, kFlags, 0, 1));
  EXPECT_EQ(list.GetImageCount(), 0);
  EXPECT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, LargeIconOf(HiddenInBlack(24)).get()), 0);
  EXPECT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, LargeIconOf(HiddenInBlack(4)).get()), 1);
  EXPECT_EQ(list.GetImageCount(), 2);
  // The icons are gone: the list has copies.
  EXPECT_TRUE(Shows(UniqueIcon(ImageList_GetIcon(list.GetSafeHandle(), 0, 0)).get(), 32, HiddenInBlack(24)));
  EXPECT_TRUE(Shows(UniqueIcon(ImageList_GetIcon(list.GetSafeHandle(), 1, 0)).get(), 32, HiddenInBlack(4)));
}

TEST(ImageList, ReplacesTheIconAtAnIndex) {
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, kFlags, 4, 4));
  ASSERT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, LargeIconOf(HiddenInBlack(24)).get()), 0);
  ASSERT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, LargeIconOf(HiddenInBlack(4)).get()), 1);
  EXPECT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), 0, LargeIconOf(HiddenInBlack(8)).get()), 0);
  EXPECT_EQ(list.GetImageCount(), 2);
  EXPECT_TRUE(Shows(UniqueIcon(ImageList_GetIcon(list.GetSafeHandle(), 0, 0)).get(), 32, HiddenInBlack(8)));
  EXPECT_TRUE(Shows(UniqueIcon(ImageList_GetIcon(list.GetSafeHandle(), 1, 0)).get(), 32, HiddenInBlack(4)));
}

TEST(ImageList, ScalesIconsToItsSize) {
  const IconPicture picture = SolidPicture(32, 32, 24, 0x123456);
  for (const int size : {16, 24, 32, 48}) {
    CImageList list;
    ASSERT_TRUE(list.Create(size, size, kFlags, 0, 0));
    ASSERT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, LargeIconOf(picture).get()), 0);
    EXPECT_TRUE(Shows(UniqueIcon(ImageList_GetIcon(list.GetSafeHandle(), 0, 0)).get(), size, picture)) << size;
  }
}

TEST(ImageList, CopyBelongsToTheCallerAndOutlivesTheList) {
  UniqueIcon copy;
  {
    CImageList list;
    ASSERT_TRUE(list.Create(32, 32, kFlags, 0, 0));
    ASSERT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, LargeIconOf(HiddenInBlack(8)).get()), 0);
    EXPECT_EQ(CountLiveHandles().icons, 0) << "images of a list are no handles";
    copy.reset(ImageList_GetIcon(list.GetSafeHandle(), 0, 0));
  }
  EXPECT_TRUE(Shows(copy.get(), 32, HiddenInBlack(8)));
  EXPECT_EQ(CountLiveHandles().icons, 1);
}

TEST(ImageList, RefusesIconsAndIndicesThatAreNotThere) {
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, kFlags, 0, 0));
  const UniqueIcon icon = LargeIconOf(HiddenInBlack(8));
  EXPECT_EQ(ImageList_ReplaceIcon(nullptr, -1, icon.get()), -1);
  EXPECT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, nullptr), -1);
  EXPECT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -2, icon.get()), -1);
  for (const int index : {-2, 0, 1}) EXPECT_EQ(ImageList_GetIcon(list.GetSafeHandle(), index, 0), nullptr) << index;
  EXPECT_EQ(ImageList_GetIcon(list.GetSafeHandle(), -1, 0), nullptr);
  EXPECT_EQ(ImageList_GetIcon(nullptr, 0, 0), nullptr);
  EXPECT_EQ(list.GetImageCount(), 0);
}

TEST(ImageList, NullListHasNoImagesAndCannotBeDestroyed) {
  EXPECT_EQ(ImageList_GetImageCount(nullptr), 0);
  EXPECT_FALSE(ImageList_Destroy(nullptr));
}

TEST(ImageList, OfImpossibleSizeIsRefused) {
  for (const auto& [width, height] : {std::pair{0, 16}, std::pair{16, 0}, std::pair{-1, 16}}) {
    EXPECT_EQ(ImageList_Create(width, height, kFlags, 0, 0), nullptr) << width << " x " << height;
  }
}

TEST(ImageListOwner, HasNoListUntilItIsGivenOne) {
  CImageList list;
  EXPECT_EQ(list.GetSafeHandle(), nullptr);
  EXPECT_EQ(list.GetImageCount(), 0);
  EXPECT_FALSE(list.DeleteImageList());
  EXPECT_FALSE(list.Attach(nullptr));
  EXPECT_FALSE(list.Create(0, 0, kFlags, 0, 0));
  EXPECT_EQ(list.GetSafeHandle(), nullptr);
}

// A list that were lost on these ways would be reported as a leak by the sanitizer.
TEST(ImageListOwner, TakesAndGivesOwnership) {
  CImageList list;
  const HIMAGELIST first = ImageList_Create(16, 16, kFlags, 0, 0);
  EXPECT_TRUE(list.Attach(first));
  EXPECT_EQ(list.GetSafeHandle(), first);
  EXPECT_TRUE(list.Attach(first));
  EXPECT_EQ(list.Detach(), first);
  EXPECT_EQ(list.GetSafeHandle(), nullptr);
  EXPECT_TRUE(ImageList_Destroy(first));
}

TEST(ImageListOwner, LetsGoOfItsListForAnother) {
  CImageList list;
  ASSERT_TRUE(list.Create(16, 16, kFlags, 0, 0));
  ASSERT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, LargeIconOf(HiddenInBlack(8)).get()), 0);
  ASSERT_TRUE(list.Create(32, 32, kFlags, 0, 0));
  EXPECT_EQ(list.GetImageCount(), 0);
  EXPECT_TRUE(list.DeleteImageList());
  EXPECT_EQ(list.GetSafeHandle(), nullptr);
}

}  // namespace
}  // namespace ondrel::test
