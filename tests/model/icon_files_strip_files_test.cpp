// Image strips and image lists of 200 icon files of every uncompressed form, added and inserted.

#include <gtest/gtest.h>

#include "model/listed_image.h"
#include "model/two_hundred_icons.h"
#include "support/model/icon_strips.h"

namespace ondrel::test {
namespace {

void ExpectIndicesInCookieOrder(const TwoHundredIcons& icons) {
  int index = 0;
  for (const auto& [cookie, icon] : icons.images) EXPECT_EQ(IndexOf(icons.set, cookie), index++) << cookie;
  EXPECT_EQ(index, 200);
}

TEST(IconFilesStripFiles, TheLargeStripShowsTheLargeImageOfEveryFile) {
  TwoHundredIcons icons(false);
  const Strips strips(icons.set, kDistinctKey);
  EXPECT_TRUE(IsStrip(strips.large, ExpectedStrip(icons.LargeImages(), kDistinctKey)));
  ExpectIndicesInCookieOrder(icons);
}

TEST(IconFilesStripFiles, TheSmallStripShowsTheSmallImageOfEveryFile) {
  TwoHundredIcons icons(false);
  const Strips strips(icons.set, kDistinctKey);
  EXPECT_TRUE(IsStrip(strips.smallIcon, ExpectedStrip(icons.SmallImages(), kDistinctKey)));
  ExpectIndicesInCookieOrder(icons);
}

TEST(IconFilesStripFiles, AListOfLargeImagesHasOneOfEveryFile) {
  TwoHundredIcons icons(false);
  CImageList list;
  ASSERT_TRUE(list.Create(32, 32, ILC_COLOR32 | ILC_MASK, 0, 10));
  icons.set.GetIconImageList(32, 32, list);
  ASSERT_EQ(list.GetImageCount(), 200);
  ExpectIndicesInCookieOrder(icons);
  int index = 0;
  for (const HandImage& image : icons.LargeImages()) EXPECT_TRUE(IsListed(list, index++, image));
}

TEST(IconFilesStripFiles, AListOfSmallImagesHasOneOfEveryFile) {
  TwoHundredIcons icons(false);
  CImageList list;
  ASSERT_TRUE(list.Create(16, 16, ILC_COLOR32 | ILC_MASK, 0, 10));
  icons.set.GetIconImageList(16, 16, list);
  ASSERT_EQ(list.GetImageCount(), 200);
  ExpectIndicesInCookieOrder(icons);
  int index = 0;
  for (const HandImage& image : icons.SmallImages()) EXPECT_TRUE(IsListed(list, index++, image));
}

}  // namespace
}  // namespace ondrel::test
