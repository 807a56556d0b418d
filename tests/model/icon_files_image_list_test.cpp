// Image lists of a set's icons, and the image indices that they leave.

#include <gtest/gtest.h>

#include <list>
#include <map>
#include <string>

#include <ondrel/MMCObjectSet.h>

#include "model/listed_image.h"
#include "support/archive_bytes.h"
#include "support/live_handles.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

class IconFilesImageList : public testing::Test {
 protected:
  void Insert(CMMCObjectSet& set, __int64 cookie, DWORD large, DWORD smallIcon) {
    const std::string name = std::to_string(cookie) + ".ico";
    const CString path = WriteIcon(m_folder, name, {SolidIcon(32, large), SolidIcon(16, smallIcon)});
    ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(set, path, cookie), S_OK);
  }

  static std::map<__int64, int> Indices(const CMMCObjectSet& set, const std::list<__int64>& cookies) {
    std::map<__int64, int> indices;
    for (const __int64 cookie : cookies) {
      if (int image = 0; set.GetIconFileImage(cookie, image)) indices[cookie] = image;
    }
    return indices;
  }

  TemporaryFolder m_folder;
  CMMCObjectSet m_set{LeaveToSet};
};

TEST_F(IconFilesImageList, HoldsOneImageForEachFileInCookieOrder) {
  Insert(m_set, 30, 0x000000FF, 0x00000001);
  Insert(m_set, 10, 0x0000FF00, 0x00000002);
  Insert(m_set, 20, 0x00FF0000, 0x00000003);
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, ILC_COLOR32 | ILC_MASK, 0, 1));
  m_set.GetIconImageList(32, 32, list);
  EXPECT_EQ(list.GetImageCount(), 3);
  EXPECT_EQ(Indices(m_set, {10, 20, 30}), (std::map<__int64, int>{{10, 0}, {20, 1}, {30, 2}}));
  EXPECT_EQ(ImageOf(list, 0).ColourAt(0, 0), 0x0000FF00U);
  EXPECT_EQ(ImageOf(list, 1).ColourAt(0, 0), 0x00FF0000U);
  EXPECT_EQ(ImageOf(list, 2).ColourAt(0, 0), 0x000000FFU);
}

TEST_F(IconFilesImageList, TakesTheHandleThatFitsTheSize) {
  Insert(m_set, 1, 0x00010101, 0x00020202);
  CImageList smallIcon;
  ASSERT_TRUE(smallIcon.Create(16, 16, ILC_COLOR32 | ILC_MASK, 0, 1));
  m_set.GetIconImageList(16, 16, smallIcon);
  ASSERT_EQ(smallIcon.GetImageCount(), 1);
  EXPECT_EQ(ImageOf(smallIcon, 0).ColourAt(0, 0), 0x00020202U);
  EXPECT_EQ(ImageOf(smallIcon, 0).geometry.bmWidth, 16);
  CImageList large;
  ASSERT_TRUE(large.Create(16, 16, ILC_COLOR32 | ILC_MASK, 0, 1));
  m_set.GetIconImageList(32, 32, large);
  ASSERT_EQ(large.GetImageCount(), 1);
  EXPECT_EQ(ImageOf(large, 0).ColourAt(0, 0), 0x00010101U) << "the size asked for decides, not that of the list";
}

TEST_F(IconFilesImageList, ImagesThatTheListHasStayInFront) {
  Insert(m_set, 1, 0x00010101, 0);
  Insert(m_set, 2, 0x00020202, 0);
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, ILC_COLOR32 | ILC_MASK, 0, 1));
  m_set.GetIconImageList(32, 32, list);
  m_set.GetIconImageList(32, 32, list);
  EXPECT_EQ(list.GetImageCount(), 4);
  EXPECT_EQ(Indices(m_set, {1, 2}), (std::map<__int64, int>{{1, 2}, {2, 3}}));
  EXPECT_EQ(ImageOf(list, 0).ColourAt(0, 0), 0x00010101U);
  EXPECT_EQ(ImageOf(list, 3).ColourAt(0, 0), 0x00020202U);
}

TEST_F(IconFilesImageList, IconsFromAnImageAreLeftOut) {
  Insert(m_set, 1, 0x00010101, 0);
  Insert(m_set, 3, 0x00030303, 0);
  LoadingArchive archive(Cookie(2) + SolidIconBytes(32, 16, 0x00020202));
  m_set.DeserializeIconFile(*archive);
  ASSERT_EQ(m_set.GetIconFiles(), (std::list<__int64>{1, 2, 3}));
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, ILC_COLOR32 | ILC_MASK, 0, 1));
  m_set.GetIconImageList(32, 32, list);
  EXPECT_EQ(list.GetImageCount(), 2);
  EXPECT_EQ(Indices(m_set, {1, 2, 3}), (std::map<__int64, int>{{1, 0}, {3, 1}}));
  EXPECT_EQ(ImageOf(list, 1).ColourAt(0, 0), 0x00030303U);
}

TEST_F(IconFilesImageList, ASetFromAnImageAddsNothingAndForgetsTheIndices) {
  Insert(m_set, 1, 0, 0);
  Insert(m_set, 2, 0, 0);
  const std::string image = SavedImage(m_set);
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, ILC_COLOR32 | ILC_MASK, 0, 1));
  m_set.GetIconImageList(32, 32, list);
  ASSERT_EQ(Indices(m_set, {1, 2}).size(), 2U);

  LoadImage(m_set, image);
  ASSERT_EQ(m_set.GetIconFiles(), (std::list<__int64>{1, 2}));
  EXPECT_EQ(Indices(m_set, {1, 2}).size(), 2U) << "loading keeps the indices of the last list";
  m_set.GetIconImageList(32, 32, list);
  EXPECT_EQ(list.GetImageCount(), 2);
  EXPECT_TRUE(Indices(m_set, {1, 2}).empty());
}

TEST_F(IconFilesImageList, AFailedAppendIsNotedAsMinusOne) {
  Insert(m_set, 1, 0, 0);
  CImageList none;
  m_set.GetIconImageList(32, 32, none);
  EXPECT_EQ(Indices(m_set, {1}), (std::map<__int64, int>{{1, -1}}));
}

TEST_F(IconFilesImageList, DoesNotTouchTheModifiedFlag) {
  Insert(m_set, 1, 0, 0);
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, ILC_COLOR32 | ILC_MASK, 0, 1));
  m_set.GetIconImageList(32, 32, list);
  EXPECT_FALSE(m_set.IsModified());
}

TEST_F(IconFilesImageList, TheListKeepsCopiesThatOutliveTheSet) {
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, ILC_COLOR32 | ILC_MASK, 0, 1));
  const auto before = CountLiveHandles();
  {
    CMMCObjectSet set(LeaveToSet);
    Insert(set, 1, 0x00ABCDEF, 0);
    set.GetIconImageList(32, 32, list);
  }
  EXPECT_EQ(CountLiveHandles().icons, before.icons);
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
  EXPECT_EQ(ImageOf(list, 0).ColourAt(0, 0), 0x00ABCDEFU);
}

}  // namespace
}  // namespace ondrel::test
