// Image lists of this system's own: they keep every bit of an icon and scale it by the nearest pixels, refuse what is
// not there, and stay as they were when memory runs short. Windows blackens what a mask hides and scales in its own
// way.
#include <gtest/gtest.h>

#include <ondrel/platform/framework/image_list.h>

#include "graphics/icon_reading.h"
#include "support/failing_allocation.h"

namespace ondrel::test {
namespace {

using platform::UniqueIcon;

constexpr UINT kMaskedColour = ILC_COLOR32 | ILC_MASK;

TEST(PosixImageList, AppendsIconsOneAfterTheOther) {
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, kMaskedColour, 0, 1));
  EXPECT_EQ(list.GetImageCount(), 0);
  EXPECT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, LargeIconOf(PatternPicture(32, 32, 32)).get()), 0);
  EXPECT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, LargeIconOf(PatternPicture(32, 32, 4)).get()), 1);
  EXPECT_EQ(list.GetImageCount(), 2);
  // The icons are gone: the list has copies.
  EXPECT_TRUE(Shows(UniqueIcon(ImageList_GetIcon(list.GetSafeHandle(), 0, 0)).get(), 32, PatternPicture(32, 32, 32)));
  EXPECT_TRUE(Shows(UniqueIcon(ImageList_GetIcon(list.GetSafeHandle(), 1, 0)).get(), 32, PatternPicture(32, 32, 4)));
}

TEST(PosixImageList, ReplacesTheIconAtAnIndex) {
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, kMaskedColour, 4, 4));
  ASSERT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, LargeIconOf(PatternPicture(32, 32, 32)).get()), 0);
  ASSERT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, LargeIconOf(PatternPicture(32, 32, 4)).get()), 1);
  EXPECT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), 0, LargeIconOf(PatternPicture(32, 32, 8)).get()), 0);
  EXPECT_EQ(list.GetImageCount(), 2);
  EXPECT_TRUE(Shows(UniqueIcon(ImageList_GetIcon(list.GetSafeHandle(), 0, 0)).get(), 32, PatternPicture(32, 32, 8)));
  EXPECT_TRUE(Shows(UniqueIcon(ImageList_GetIcon(list.GetSafeHandle(), 1, 0)).get(), 32, PatternPicture(32, 32, 4)));
}

TEST(PosixImageList, ScalesIconsToItsSize) {
  const IconPicture picture = PatternPicture(32, 32, 24);
  for (const int size : {16, 24, 32, 48}) {
    CImageList list;
    ASSERT_TRUE(list.Create(size, size, kMaskedColour, 0, 0));
    ASSERT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, LargeIconOf(picture).get()), 0);
    EXPECT_TRUE(Shows(UniqueIcon(ImageList_GetIcon(list.GetSafeHandle(), 0, 0)).get(), size, picture)) << size;
  }
}

TEST(PosixImageList, RefusesIconsAndIndicesThatAreNotThere) {
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, kMaskedColour, 0, 0));
  const UniqueIcon icon = LargeIconOf(PatternPicture(32, 32, 8));
  EXPECT_EQ(ImageList_ReplaceIcon(nullptr, -1, icon.get()), -1);
  EXPECT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, nullptr), -1);
  for (const int index : {-2, 0, 1}) {
    EXPECT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), index, icon.get()), -1) << index;
    EXPECT_EQ(ImageList_GetIcon(list.GetSafeHandle(), index, 0), nullptr) << index;
  }
  EXPECT_EQ(ImageList_GetIcon(list.GetSafeHandle(), -1, 0), nullptr);
  EXPECT_EQ(ImageList_GetIcon(nullptr, 0, 0), nullptr);
  EXPECT_EQ(list.GetImageCount(), 0);
}

TEST(PosixImageList, OfImpossibleSizeIsRefused) {
  for (const auto& [width, height] :
       {std::pair{0, 16}, std::pair{16, 0}, std::pair{-1, 16}, std::pair{0x7FFFFFFF, 2}}) {
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(ImageList_Create(width, height, kMaskedColour, 0, 0), nullptr) << width << " x " << height;
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER) << width << " x " << height;
  }
}

TEST(PosixImageList, TakesNoMemoryOnTheWordOfItsCounts) {
  CImageList list;
  EXPECT_TRUE(list.Create(32, 32, kMaskedColour, 0x7FFFFFFF, 0x7FFFFFFF));
}

TEST(PosixImageList, ShortMemoryLeavesItAsItWas) {
  CImageList list;
  ASSERT_TRUE(list.Create(16, 16, kMaskedColour, 0, 0));
  const UniqueIcon icon = LargeIconOf(PatternPicture(32, 32, 8));
  int index = -1;
  long failures = 0;
  for (;; ++failures) {
    {
      const FailingAllocation failing(failures);
      index = ImageList_ReplaceIcon(list.GetSafeHandle(), -1, icon.get());
    }
    if (index >= 0) break;
    EXPECT_EQ(index, -1) << "allocation " << failures;
    EXPECT_EQ(list.GetImageCount(), 0) << "allocation " << failures;
  }
  EXPECT_EQ(index, 0);
  EXPECT_EQ(failures, 3) << "colour, mask and the list's own room";
}

TEST(PosixImageList, ShortMemoryGivesNoIcon) {
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, kMaskedColour, 0, 0));
  const UniqueIcon icon = LargeIconOf(PatternPicture(32, 32, 8));
  ASSERT_EQ(ImageList_ReplaceIcon(list.GetSafeHandle(), -1, icon.get()), 0);
  UniqueIcon given;
  long failures = 0;
  for (;; ++failures) {
    DWORD reason = ERROR_SUCCESS;
    {
      const FailingAllocation failing(failures);
      given.reset(ImageList_GetIcon(list.GetSafeHandle(), 0, 0));
      reason = GetLastError();
    }
    if (given != nullptr) break;
    EXPECT_EQ(reason, ERROR_OUTOFMEMORY) << "allocation " << failures;
  }
  EXPECT_EQ(failures, 3) << "the icon, its colour and its mask";
  EXPECT_TRUE(Shows(given.get(), 32, PatternPicture(32, 32, 8)));
}

}  // namespace
}  // namespace ondrel::test
