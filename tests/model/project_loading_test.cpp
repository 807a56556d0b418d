// Loading a project file: which elements are read, in which order, and by which code page.

#include <gtest/gtest.h>

#include <list>
#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/live_handles.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/print_text.h"

namespace ondrel::test {
namespace {

using Cookies = std::list<__int64>;

std::string NodeElement(int cookie, const std::string& name, const std::string& inside = "") {
  return "<Node Cookie=\"" + std::to_string(cookie) + "\" Name=\"" + name +
         "\" Icon=\"0\" Type=\"List\"><MenuScript/>" + inside + "</Node>";
}
std::string DialogElement(int cookie, const std::string& name) {
  return "<Dialog Cookie=\"" + std::to_string(cookie) + "\" Name=\"" + name +
         "\" Icon=\"0\" Type=\"Dialog\"><MenuScript/><StyleSheet/></Dialog>";
}
std::string FileElement(int cookie, const std::string& name) {
  return "<File Cookie=\"" + std::to_string(cookie) + "\" Name=\"" + name + "\"/>";
}

class ProjectLoading : public testing::Test {
 protected:
  void Load(const std::string& inside) { LoadProject(m_set, "<Project>" + inside + "</Project>"); }

  CMMCObjectSet m_set{LeaveToSet};
};

TEST_F(ProjectLoading, AProjectOfNothingEmptiesTheSet) {
  ASSERT_EQ(m_set.AddNewNode(-1, _T("Top"), CMMCObjectParams::eList), 0);
  ASSERT_EQ(m_set.AddNewDialog(_T("About")), 1);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, _T("a.js"), 1, Unchanged), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, 2, {'x'}), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, 3, CMMCObjectIcon()), S_OK);
  Load("");
  EXPECT_EQ(Observed(m_set), "unmodified\n");
  EXPECT_EQ(m_set.AddNewDialog(_T("About")), 0) << "its name is free, its cookie too";
  CString path;
  EXPECT_FALSE(m_set.GetFilePath(1, path));
}

TEST_F(ProjectLoading, EveryGroupIsRead) {
  Load("<NodeGroup>" + NodeElement(4, "Top", "<Nodes>" + NodeElement(5, "Below") + "</Nodes>") + "</NodeGroup>" +
       "<DialogGroup>" + DialogElement(6, "About") + "</DialogGroup>" + "<FileGroup>" + FileElement(7, "a.js") +
       "</FileGroup>");
  EXPECT_EQ(m_set.GetChildNodes(-1), Cookies{4});
  EXPECT_EQ(m_set.GetChildNodes(4), Cookies{5});
  EXPECT_EQ(m_set.GetDialogs(), Cookies{6});
  EXPECT_EQ(m_set.GetDialog(_T("About")), 6);
  EXPECT_EQ(m_set.GetCodeFiles(), Cookies{7});
  EXPECT_FALSE(m_set.IsModified());
}

TEST_F(ProjectLoading, AModifiedSetIsUnmodifiedAfterwards) {
  CMMCObjectSetProbe::SetModifiedFlag(m_set, 1);
  Load("<DialogGroup>" + DialogElement(6, "About") + "</DialogGroup>");
  EXPECT_FALSE(m_set.IsModified());
}

TEST_F(ProjectLoading, OfTwoFileGroupsTheFirstIsRead) {
  const TemporaryFolder folder;
  WriteIcon(folder, "a.ico", {SolidIcon(32, 0)});
  const std::string icon = Utf8(folder.Path());
  Load("<FileGroup>" + FileElement(1, "a.js") + "<Icon Cookie=\"2\" Path=\"" + icon + "/a.ico\"/></FileGroup>" +
       "<FileGroup>" + FileElement(3, "b.js") + "<Icon Cookie=\"4\" Path=\"nowhere\"/><File/></FileGroup>");
  EXPECT_EQ(m_set.GetCodeFiles(), Cookies{1});
  EXPECT_EQ(m_set.GetIconFiles(), Cookies{2});
}

TEST_F(ProjectLoading, AnEmptyFirstFileGroupHidesTheSecond) {
  Load("<FileGroup/><FileGroup>" + FileElement(3, "b.js") + "</FileGroup>");
  EXPECT_TRUE(m_set.GetCodeFiles().empty());
}

TEST_F(ProjectLoading, OfTwoDialogGroupsBothAreRead) {
  Load("<DialogGroup>" + DialogElement(3, "C") + DialogElement(1, "A") + "</DialogGroup><DialogGroup>" +
       DialogElement(2, "B") + "</DialogGroup>");
  EXPECT_EQ(m_set.GetDialogs(), (Cookies{1, 2, 3}));
  EXPECT_EQ(m_set.GetDialog(_T("B")), 2);
}

TEST_F(ProjectLoading, OfTwoNodeGroupsBothAreRead) {
  Load("<NodeGroup>" + NodeElement(3, "C") + "</NodeGroup><NodeGroup>" + NodeElement(1, "A") + NodeElement(2, "B") +
       "</NodeGroup>");
  EXPECT_EQ(m_set.GetChildNodes(-1), (Cookies{1, 2, 3}));
}

TEST_F(ProjectLoading, GroupsAreFoundAtAnyDepthAndInAnyOrder) {
  Load("<x><FileGroup>" + FileElement(3, "b.js") + "</FileGroup><y><DialogGroup>" + DialogElement(6, "About") +
       "</DialogGroup></y></x><NodeGroup>" + NodeElement(1, "A") + "</NodeGroup>");
  EXPECT_EQ(m_set.GetChildNodes(-1), Cookies{1});
  EXPECT_EQ(m_set.GetDialogs(), Cookies{6});
  EXPECT_EQ(m_set.GetCodeFiles(), Cookies{3});
}

TEST_F(ProjectLoading, OnlyDirectChildrenOfAGroupCount) {
  Load("<DialogGroup><x>" + DialogElement(6, "About") + "</x></DialogGroup><FileGroup><x>" + FileElement(3, "b.js") +
       "</x></FileGroup><NodeGroup><x>" + NodeElement(1, "A") + "</x></NodeGroup>");
  EXPECT_EQ(Observed(m_set), "unmodified\n");
}

TEST_F(ProjectLoading, NamesOfOtherCaseAndForeignElementsAreIgnored) {
  Load("<dialoggroup>" + DialogElement(6, "About") + "</dialoggroup><FileGroup><file/><Other/>" +
       FileElement(3, "b.js") + "</FileGroup><!-- no more --><?other?>text");
  EXPECT_EQ(m_set.GetDialogs(), Cookies());
  EXPECT_EQ(m_set.GetCodeFiles(), Cookies{3});
}

TEST_F(ProjectLoading, CookiesMayHaveBlanksAndASign) {
  Load(R"(<FileGroup><File Cookie=" +7 " Name="a"/><File Cookie="-8" Name="b"/></FileGroup>)");
  EXPECT_EQ(m_set.GetCodeFiles(), (Cookies{7, -8}));
}

TEST_F(ProjectLoading, BytesAreReadByTheNarrowCodePageNotAsUtf8) {
  LoadProject(m_set, "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?><Project><DialogGroup>" +
                         DialogElement(1, "\xC3\xA9\x80") + "</DialogGroup></Project>");
  EXPECT_EQ(NameOf(m_set, 1), CString(_T("\u00C3\u00A9\u20AC"))) << "three units for three bytes";
}

TEST_F(ProjectLoading, TextOutsideAsciiDoesNotSurviveSavingAndLoading) {
  ASSERT_EQ(m_set.AddNewNode(-1, _T("caf\u00E9"), CMMCObjectParams::eList), 0);
  LoadProject(m_set, SavedProject(m_set));
  EXPECT_EQ(NameOf(m_set, 0), CString(_T("caf\u00C3\u00A9")));
}

TEST_F(ProjectLoading, CharacterReferencesSurvive) {
  Load("<DialogGroup>" + DialogElement(1, "caf&#233; &#x20AC; &#x1F600; &#9;&#10;&#13;") + "</DialogGroup>");
  EXPECT_EQ(NameOf(m_set, 1), CString(_T("caf\u00E9 \u20AC \U0001F600 \t\n\r")));
}

TEST_F(ProjectLoading, AnyEncodingThatIsDeclaredIsIgnored) {
  for (const char* const encoding : {"utf-8", "windows-1252", "iso-8859-1", "us-ascii"}) {
    LoadProject(m_set, std::string("<?xml version=\"1.0\" encoding=\"") + encoding + "\"?><Project><DialogGroup>" +
                           DialogElement(1, "\xE9") + "</DialogGroup></Project>");
    EXPECT_EQ(NameOf(m_set, 1), CString(_T("\u00E9"))) << encoding;
  }
}

TEST_F(ProjectLoading, TheFileIsReadToItsEnd) {
  std::string dialogs;
  for (int cookie = 0; cookie < 5000; ++cookie) dialogs += DialogElement(cookie, "Dialog " + std::to_string(cookie));
  Load("<DialogGroup>" + dialogs + "</DialogGroup>");
  EXPECT_EQ(m_set.GetDialogs().size(), 5000U);
}

TEST_F(ProjectLoading, ImageIndicesStay) {
  ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, 3, CMMCObjectIcon()), S_OK);
  HBITMAP smallIcon = nullptr;
  HBITMAP large = nullptr;
  m_set.GetIconBitmapImages(0, smallIcon, large);
  DeleteObject(smallIcon);
  DeleteObject(large);
  Load("");
  int image = -99;
  EXPECT_TRUE(m_set.GetIconFileImage(3, image));
  EXPECT_EQ(image, 0);
}

TEST_F(ProjectLoading, HandlesOfTheFormerIconsAreReleased) {
  const TemporaryFolder folder;
  const auto before = CountLiveHandles();
  __int64 cookie = 0;
  ASSERT_EQ(m_set.AddIconFile(WriteIcon(folder, "a.ico", {SolidIcon(32, 0)}), cookie), S_OK);
  Load("");
  EXPECT_EQ(CountLiveHandles().icons, before.icons);
}

}  // namespace
}  // namespace ondrel::test
