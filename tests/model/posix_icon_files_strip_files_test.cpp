// Image strips and image lists of 200 icon files, PNG images among them: what Windows makes of those is its own.

#include <gtest/gtest.h>

#include "model/listed_image.h"
#include "model/two_hundred_icons.h"
#include "support/model/icon_strips.h"

namespace ondrel::test {
namespace {

TEST(IconFilesStripFiles, StripsShowPngImagesToo) {
  TwoHundredIcons icons(true);
  const Strips strips(icons.set, kDistinctKey);
  EXPECT_TRUE(IsStrip(strips.large, ExpectedStrip(icons.LargeImages(), kDistinctKey)));
  EXPECT_TRUE(IsStrip(strips.smallIcon, ExpectedStrip(icons.SmallImages(), kDistinctKey)));
  int index = 0;
  for (const auto& [cookie, icon] : icons.images) EXPECT_EQ(IndexOf(icons.set, cookie), index++) << cookie;
}

TEST(IconFilesStripFiles, ListsShowPngImagesToo) {
  TwoHundredIcons icons(true);
  for (const int size : {32, 16}) {
    CImageList list;
    ASSERT_TRUE(list.Create(size, size, ILC_COLOR32 | ILC_MASK, 0, 10));
    icons.set.GetIconImageList(size, size, list);
    ASSERT_EQ(list.GetImageCount(), 200);
    int index = 0;
    for (const auto& [cookie, icon] : icons.images) {
      EXPECT_EQ(IndexOf(icons.set, cookie), index) << cookie;
      EXPECT_TRUE(IsListed(list, index++, size == 32 ? icon.large : icon.smallIcon)) << cookie;
    }
  }
}

}  // namespace
}  // namespace ondrel::test
