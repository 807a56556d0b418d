// Icon and bitmap handles over the whole life of sets: when every set is gone, no handle is left.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/live_handles.h"
#include "support/model/icon_fixtures.h"
#include "support/model/icon_strips.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/png_bytes.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

void ExpectHandles(long icons, long bitmaps, const char* after) {
  const LiveHandles live = CountLiveHandles();
  EXPECT_EQ(live.icons, icons) << after;
  EXPECT_EQ(live.bitmaps, bitmaps) << after;
}

TEST(IconFilesHandles, NoneIsLeftWhenEverySetIsGone) {
  const TemporaryFolder folder;
  std::vector<CString> good;
  for (const int depth : {1, 4, 8, 16, 24, 32}) {
    good.push_back(WriteIcon(folder, std::to_string(depth) + ".ico",
                             {PatternPicture(32, 32, depth), PatternPicture(16, 16, depth)}));
  }
  const PngPicture png = PatternPng(32, 32, PngColour::trueColourAlpha, 8);
  good.push_back(Wide(folder.Write("png.ico", IconFileBytes({StoredPng(png)}))));
  const std::string whole = IconFileBytes({PatternPicture(32, 32, 24)});
  const CString cut = Wide(folder.Write("cut.ico", whole.substr(0, whole.size() / 2)));
  const CString cutPng = Wide(folder.Write(
      "cut png.ico", IconFileBytes({StoredImage(32, 32, 32, PngBytes(png).substr(0, PngBytes(png).size() / 2))})));
  const CString none = Wide(folder.Write("none.ico", IconFileBytes({})));
  ExpectHandles(0, 0, "nothing");

  auto set = std::make_unique<CMMCObjectSet>(LeaveToSet);
  __int64 cookie = 0;
  for (const CString& path : good) ASSERT_EQ(set->AddIconFile(path, cookie), S_OK);
  constexpr long kIcons = 2 * 7;  // a large and a small one of each file
  ExpectHandles(kIcons, 0, "adding");

  EXPECT_EQ(set->AddIconFile(Wide(folder / "missing.ico"), cookie), kFileNotFound);
  EXPECT_EQ(set->AddIconFile(cut, cookie), kInvalidData);
  EXPECT_EQ(set->AddIconFile(cutPng, cookie), kInvalidData);
  EXPECT_EQ(set->AddIconFile(none, cookie), kNoIcon);
  EXPECT_EQ(set->AddIconFile(good.front(), cookie), kAlreadyExists);
  EXPECT_EQ(CMMCObjectSetProbe::InsertIconFile(*set, WriteIcon(folder, "other.ico", {PatternPicture(32, 32, 32)}),
                                               set->GetIconFiles().front()),
            kAlreadyExists);
  ExpectHandles(kIcons, 0, "failing to add");

  CMMCObjectIcon moved;
  ASSERT_EQ(moved.Construct(good.back()), S_OK);
  ExpectHandles(kIcons + 2, 0, "an icon outside");
  CMMCObjectIcon target(std::move(moved));
  EXPECT_EQ(CMMCObjectSetProbe::InsertIconFile(*set, set->GetIconFiles().front(), std::move(target)), kAlreadyExists);
  ExpectHandles(kIcons, 0, "a refused icon is gone");
  CMMCObjectIcon another;
  ASSERT_EQ(another.Construct(good.back()), S_OK);
  EXPECT_EQ(CMMCObjectSetProbe::InsertIconFile(*set, -7, std::move(another)), S_OK);
  ExpectHandles(kIcons + 2, 0, "an icon moved in");

  {
    const Strips strips(*set);
    ExpectHandles(kIcons + 2, 2, "strips");
  }
  ExpectHandles(kIcons + 2, 0, "strips that are deleted");
  {
    CImageList list;
    ASSERT_TRUE(list.Create(16, 16, ILC_COLOR32 | ILC_MASK, 0, 1));
    set->GetIconImageList(16, 16, list);
    EXPECT_EQ(list.GetImageCount(), 8);
    ExpectHandles(kIcons + 2, 0, "an image list");
    CImageList notMade;
    set->GetIconImageList(16, 16, notMade);
  }
  ExpectHandles(kIcons + 2, 0, "image lists that are gone");

  const std::string image = SavedImage(*set);
  ExpectHandles(kIcons + 2, 0, "saving an image");
  CMMCObjectSet loaded(LeaveToSet);
  LoadImage(loaded, image);
  EXPECT_EQ(loaded.GetIconFiles().size(), 8U);
  ExpectHandles(kIcons + 2, 0, "loading an image, which has no handles");
  LoadImage(*set, image);
  ExpectHandles(0, 0, "an image over icons with handles");
  EXPECT_THROW(LoadImage(loaded, image.substr(0, image.size() / 2)), CException);
  ExpectHandles(0, 0, "half an image");

  for (const CString& path : good) ASSERT_EQ(loaded.AddIconFile(path, cookie), S_OK);
  ExpectHandles(kIcons, 0, "adding beside what was loaded");
  EXPECT_THROW(
      LoadProject(loaded, "<Project><FileGroup><Icon Cookie=\"3\" Name=\"missing.ico\"/></FileGroup></Project>",
                  Wide(folder.Path()) + _T("\\project.xml")),
      CException);
  ExpectHandles(kIcons, 0, "a failed project, which changes nothing");
  LoadProject(loaded, "<Project><FileGroup><Icon Cookie=\"3\" Name=\"8.ico\"/></FileGroup></Project>",
              Wide(folder.Path()) + _T("\\project.xml"));
  ExpectHandles(2, 0, "a project with one icon file");
  CMMCObjectSetProbe::Initialise(loaded);
  ExpectHandles(0, 0, "an emptied set");
  ASSERT_EQ(loaded.AddIconFile(good.front(), cookie), S_OK);
  ASSERT_EQ(set->AddIconFile(good.back(), cookie), S_OK);
  ExpectHandles(4, 0, "one file in each set");
  set.reset();
  ExpectHandles(2, 0, "one set gone");
  {
    CMMCObjectSet other(LeaveToSet);
    ASSERT_EQ(other.AddIconFile(good.back(), cookie), S_OK);
  }
  CMMCObjectSetProbe::Initialise(loaded);
  ExpectHandles(0, 0, "every set");
}

}  // namespace
}  // namespace ondrel::test
