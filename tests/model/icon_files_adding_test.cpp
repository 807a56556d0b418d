// Adding icon files to a set, finding them, and what a refusal leaves.

#include <gtest/gtest.h>

#include <list>
#include <string>
#include <type_traits>
#include <utility>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/live_handles.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/print_text.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

class IconFilesAdding : public testing::Test {
 protected:
  IconFilesAdding() : m_path(WriteIcon(m_folder, "icon.ico", {SolidIcon(32, 0x00112233), SolidIcon(16, 0)})) {}

  std::list<__int64> Files() const { return m_set.GetIconFiles(); }

  TemporaryFolder m_folder;
  CString m_path;
  CMMCObjectSet m_set{LeaveToSet};
};

TEST_F(IconFilesAdding, ANewFileGetsACookieItsPathAndItsImages) {
  __int64 cookie = 0;
  ASSERT_EQ(m_set.AddIconFile(m_path, cookie), S_OK);
  EXPECT_GT(cookie, 0);
  EXPECT_EQ(Files(), std::list<__int64>{cookie});
  EXPECT_TRUE(m_set.IsModified());
  CString path;
  ASSERT_TRUE(m_set.GetFilePath(cookie, path));
  EXPECT_EQ(path, m_path);
  const CMMCObjectIcon* icon = nullptr;
  ASSERT_TRUE(m_set.GetIconFile(cookie, &icon));
  EXPECT_EQ(icon->GetPixel(true, 0, 0, 0), 0x00112233U);
  EXPECT_NE(icon->GetIcon(32, 32), nullptr);
  const CMMCObjectIcon* again = nullptr;
  ASSERT_TRUE(m_set.GetIconFile(cookie, &again));
  EXPECT_EQ(again, icon) << "the address is that of the stored icon";
  int image = 7;
  EXPECT_FALSE(m_set.GetIconFileImage(cookie, image));
  EXPECT_EQ(image, 7);
}

TEST_F(IconFilesAdding, TheSamePathASecondTimeIsRefused) {
  __int64 first = 0;
  ASSERT_EQ(m_set.AddIconFile(m_path, first), S_OK);
  CMMCObjectSetProbe::SetModifiedFlag(m_set, 0);
  const std::string before = Observed(m_set);
  __int64 second = 99;
  EXPECT_EQ(m_set.AddIconFile(m_path, second), kAlreadyExists);
  EXPECT_EQ(second, 0);
  EXPECT_EQ(Observed(m_set), before) << "and the modified flag stays clear";
  EXPECT_EQ(Files().size(), 1U);
}

TEST_F(IconFilesAdding, PathsThatDifferInCaseAreTwoFiles) {
  const CString other = WriteIcon(m_folder, "ICON.ico", {SolidIcon(32, 0)});
  __int64 first = 0;
  __int64 second = 0;
  ASSERT_EQ(m_set.AddIconFile(m_path, first), S_OK);
  ASSERT_EQ(m_set.AddIconFile(other, second), S_OK);
  EXPECT_NE(first, second);
  EXPECT_EQ(Files().size(), 2U);
}

TEST_F(IconFilesAdding, AFileThatCannotBeReadIsNotStored) {
  const std::string before = Observed(m_set);
  __int64 cookie = 99;
  EXPECT_EQ(m_set.AddIconFile(Wide(m_folder / "missing.ico"), cookie), kFileNotFound);
  EXPECT_EQ(cookie, 0);
  EXPECT_EQ(Observed(m_set), before);
  EXPECT_FALSE(m_set.IsModified());
  // Nothing is left of the path either.
  const CString path = WriteIcon(m_folder, "missing.ico", {SolidIcon(32, 0)});
  EXPECT_EQ(m_set.AddIconFile(path, cookie), S_OK);
}

TEST_F(IconFilesAdding, UnknownCookiesAreNotFound) {
  const auto* const marker = reinterpret_cast<const CMMCObjectIcon*>(this);
  const CMMCObjectIcon* icon = marker;
  EXPECT_FALSE(m_set.GetIconFile(1, &icon));
  EXPECT_EQ(icon, marker);
  CString path = _T("kept");
  EXPECT_FALSE(m_set.GetFilePath(1, path));
  EXPECT_EQ(path, CString(_T("kept")));
  EXPECT_TRUE(Files().empty());
}

TEST_F(IconFilesAdding, FilesAreListedByCookie) {
  for (const __int64 cookie : {30, 10, 20, -5}) {
    ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, cookie, CMMCObjectIcon()), S_OK);
  }
  EXPECT_EQ(Files(), (std::list<__int64>{-5, 10, 20, 30}));
}

TEST_F(IconFilesAdding, InsertingDoesNotTouchTheModifiedFlag) {
  EXPECT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, m_path, 5), S_OK);
  EXPECT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, 6, CMMCObjectIcon()), S_OK);
  EXPECT_FALSE(m_set.IsModified());
}

TEST_F(IconFilesAdding, ACookieThatAPathHasIsRefusedAndThePathIsFreeAgain) {
  ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, m_path, 5), S_OK);
  const CString other = WriteIcon(m_folder, "other.ico", {SolidIcon(32, 0)});
  const std::string before = Observed(m_set);
  EXPECT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, other, 5), kAlreadyExists);
  EXPECT_EQ(Observed(m_set), before);
  EXPECT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, other, 6), S_OK);
}

TEST_F(IconFilesAdding, ACookieThatAnIconHasIsRefusedAndPathAndCookieAreFreeAgain) {
  ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, 5, CMMCObjectIcon()), S_OK);
  const std::string before = Observed(m_set);
  const auto handles = CountLiveHandles();
  EXPECT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, m_path, 5), kAlreadyExists);
  EXPECT_EQ(Observed(m_set), before);
  EXPECT_EQ(CountLiveHandles().icons, handles.icons) << "the icon that was read is gone";
  CString path;
  EXPECT_FALSE(m_set.GetFilePath(5, path));
  EXPECT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, m_path, 6), S_OK);
}

TEST_F(IconFilesAdding, ARefusedIconIsDestroyedAndTheStoredOneStays) {
  CMMCObjectIcon icon;
  ASSERT_EQ(icon.Construct(m_path), S_OK);
  const auto handles = CountLiveHandles();
  ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, 5, CMMCObjectIcon()), S_OK);
  EXPECT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, 5, std::move(icon)), kAlreadyExists);
  EXPECT_EQ(CountLiveHandles().icons, handles.icons - 2) << "the set had taken it over";
  const CMMCObjectIcon* stored = nullptr;
  ASSERT_TRUE(m_set.GetIconFile(5, &stored));
  EXPECT_EQ(stored->GetColourBitmap(true).bmWidth, 0);
}

TEST_F(IconFilesAdding, OnePathMayBeAnIconFileAndACodeFile) {
  __int64 icon = 0;
  __int64 code = 0;
  ASSERT_EQ(m_set.AddIconFile(m_path, icon), S_OK);
  ASSERT_EQ(m_set.AddCodeFile(m_path, Unchanged, code), S_OK);
  CString path;
  EXPECT_TRUE(m_set.GetFilePath(icon, path));
  EXPECT_TRUE(m_set.GetFilePath(code, path));
}

TEST_F(IconFilesAdding, APathOfAnIconFileGoesBeforeThatOfACodeFile) {
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, _T("code.js"), 5, Unchanged), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, m_path, 5), S_OK);
  CString path;
  ASSERT_TRUE(m_set.GetFilePath(5, path));
  EXPECT_EQ(path, m_path);
}

TEST_F(IconFilesAdding, HandlesLiveAsLongAsTheSet) {
  const auto before = CountLiveHandles();
  {
    CMMCObjectSet set(LeaveToSet);
    __int64 cookie = 0;
    ASSERT_EQ(set.AddIconFile(m_path, cookie), S_OK);
    ASSERT_EQ(set.AddIconFile(WriteIcon(m_folder, "b.ico", {SolidIcon(16, 0)}), cookie), S_OK);
    EXPECT_EQ(CountLiveHandles().icons, before.icons + 4);
    EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
    CMMCObjectSetProbe::Initialise(set);
    EXPECT_EQ(CountLiveHandles().icons, before.icons);
    ASSERT_EQ(set.AddIconFile(m_path, cookie), S_OK);
  }
  EXPECT_EQ(CountLiveHandles().icons, before.icons);
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
}

}  // namespace
}  // namespace ondrel::test
