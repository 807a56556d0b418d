// Paths in a project file: relative to the folder of the archive's file name, or whole.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/print_text.h"

namespace ondrel::test {
namespace {

/// The attributes of the only file in a saved project.
std::string FileElement(LPCWSTR path, LPCWSTR fileName) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, path, 5, Unchanged), S_OK);
  const std::string text = SavedProject(set, fileName);
  const std::size_t start = text.find("<File ");
  return start == std::string::npos ? text : text.substr(start, text.find('>', start) - start + 1);
}

/// The path of the only file of a project that is loaded through an archive of that name.
CString LoadedPath(const std::string& fileElement, LPCWSTR fileName) {
  CMMCObjectSet set(LeaveToSet);
  LoadProject(set, "<Project><FileGroup>" + fileElement + "</FileGroup></Project>", fileName);
  CString path;
  EXPECT_TRUE(set.GetFilePath(5, path));
  return path;
}

TEST(ProjectPaths, AFileBelowTheProjectIsNamedRelativeToIt) {
  EXPECT_EQ(FileElement(_T("C:\\p\\sub\\a.js"), _T("C:\\p\\proj.xml")), R"(<File Cookie="5" Name="sub\a.js"/>)");
  EXPECT_EQ(FileElement(_T("C:\\p\\a.js"), _T("C:\\p\\proj.xml")), R"(<File Cookie="5" Name="a.js"/>)");
}

TEST(ProjectPaths, ANameIsRelativeToTheFolderThatIsLoadedFrom) {
  EXPECT_EQ(LoadedPath(R"(<File Cookie="5" Name="sub\a.js"/>)", _T("D:\\q\\proj.xml")),
            CString(_T("D:\\q\\sub\\a.js")));
}

TEST(ProjectPaths, AProjectMovesWithItsFiles) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("C:\\p\\sub\\a.js"), 5, Unchanged), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("C:\\other\\b.js"), 6, Unchanged), S_OK);
  CMMCObjectSet loaded(LeaveToSet);
  LoadProject(loaded, SavedProject(set, _T("C:\\p\\proj.xml")), _T("D:\\q\\proj.xml"));
  CString path;
  ASSERT_TRUE(loaded.GetFilePath(5, path));
  EXPECT_EQ(path, CString(_T("D:\\q\\sub\\a.js")));
  ASSERT_TRUE(loaded.GetFilePath(6, path));
  EXPECT_EQ(path, CString(_T("C:\\other\\b.js")));
}

TEST(ProjectPaths, AFileElsewhereIsNamedByItsWholePath) {
  EXPECT_EQ(FileElement(_T("C:\\other\\a.js"), _T("C:\\p\\proj.xml")), R"(<File Cookie="5" Path="C:\other\a.js"/>)");
  EXPECT_EQ(FileElement(_T("C:\\px\\a.js"), _T("C:\\p\\proj.xml")), R"(<File Cookie="5" Path="C:\px\a.js"/>)");
  EXPECT_EQ(FileElement(_T("C:\\p"), _T("C:\\p\\proj.xml")), R"(<File Cookie="5" Path="C:\p"/>)");
  EXPECT_EQ(FileElement(_T("D:\\C:\\p\\a.js"), _T("C:\\p\\proj.xml")), R"(<File Cookie="5" Path="D:\C:\p\a.js"/>)")
      << "the folder must stand at the beginning";
}

TEST(ProjectPaths, AFolderThatDiffersInCaseIsElsewhere) {
  EXPECT_EQ(FileElement(_T("c:\\P\\a.js"), _T("C:\\p\\proj.xml")), R"(<File Cookie="5" Path="c:\P\a.js"/>)");
}

TEST(ProjectPaths, OnlyABackslashEndsTheFolder) {
  EXPECT_EQ(FileElement(_T("C:\\p/a.js"), _T("C:\\p/proj.xml")), R"(<File Cookie="5" Name="p/a.js"/>)");
}

TEST(ProjectPaths, WithoutABackslashEveryFileIsNamedByItsWholePathAsName) {
  EXPECT_EQ(FileElement(_T("C:\\p\\a.js"), _T("proj.xml")), R"(<File Cookie="5" Name="C:\p\a.js"/>)");
  EXPECT_EQ(FileElement(_T("a.js"), _T("")), R"(<File Cookie="5" Name="a.js"/>)");
  EXPECT_EQ(LoadedPath(R"(<File Cookie="5" Name="C:\p\a.js"/>)", _T("proj.xml")), CString(_T("C:\\p\\a.js")));
}

TEST(ProjectPaths, APathIsTakenWholeWhateverTheFolder) {
  EXPECT_EQ(LoadedPath(R"(<File Cookie="5" Path="a.js"/>)", _T("D:\\q\\proj.xml")), CString(_T("a.js")));
}

TEST(ProjectPaths, ANameGoesBeforeAPath) {
  EXPECT_EQ(LoadedPath(R"(<File Cookie="5" Path="C:\x\b.js" Name="a.js"/>)", _T("D:\\q\\proj.xml")),
            CString(_T("D:\\q\\a.js")));
  EXPECT_EQ(LoadedPath(R"(<File Name="" Cookie="5" Path="C:\x\b.js"/>)", _T("D:\\q\\proj.xml")), CString(_T("D:\\q\\")))
      << "an empty name too";
}

TEST(ProjectPaths, IconFilesFollowTheSameRules) {
  const TemporaryFolder folder;
  WriteIcon(folder, "sub/icon.ico", {SolidIcon(32, 0x00112233)});
  const CString directory = Wide(folder.Path()) + _T("\\");
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(set, directory + _T("sub\\icon.ico"), 5), S_OK);
  const std::string inside = SavedProject(set, directory + _T("proj.xml"));
  EXPECT_NE(inside.find(R"(<Icon Cookie="5" Name="sub\icon.ico"/>)"), std::string::npos) << inside;
  const std::string outside = SavedProject(set, _T("C:\\p\\proj.xml"));
  EXPECT_NE(outside.find(R"(<Icon Cookie="5" Path=")"), std::string::npos) << outside;

  CMMCObjectSet loaded(LeaveToSet);
  LoadProject(loaded, inside, directory + _T("other.xml"));
  CString path;
  ASSERT_TRUE(loaded.GetFilePath(5, path));
  EXPECT_EQ(path, directory + _T("sub\\icon.ico"));
  const CMMCObjectIcon* icon = nullptr;
  ASSERT_TRUE(loaded.GetIconFile(5, &icon));
  EXPECT_EQ(icon->GetPixel(true, 0, 0, 0), 0x00112233U);
}

TEST(ProjectPaths, TheFactoryIsAskedOnceForEachCodeFileByItsWholePath) {
  std::vector<CString> asked;
  CMMCObjectSet set(LeaveToSet);
  LoadProject(set,
              R"(<Project><FileGroup><File Cookie="1" Name="b.js"/><File Cookie="2" Path="a.js"/>)"
              R"(</FileGroup></Project>)",
              _T("D:\\q\\proj.xml"), [&](const WCHAR* path) -> CMMCObjectSet::Transform {
                asked.emplace_back(path);
                return Unchanged;
              });
  EXPECT_EQ(asked, (std::vector<CString>{CString(_T("D:\\q\\b.js")), CString(_T("a.js"))}));
}

TEST(ProjectPaths, TheTransformOfTheFactoryIsKeptWithTheFile) {
  const TemporaryFolder folder;
  folder.Write("a.js", "abc");
  CMMCObjectSet set(LeaveToSet);
  LoadProject(set, R"(<Project><FileGroup><File Cookie="1" Name="a.js"/></FileGroup></Project>)",
              Wide(folder.Path()) + _T("\\proj.xml"), [](const WCHAR*) -> CMMCObjectSet::Transform {
                return [](std::vector<char>, CMMCObjectSet::Variables) { return std::vector<char>{'T'}; };
              });
  CMMCObjectSet loaded(LeaveToSet);
  LoadImage(loaded, SavedImage(set));
  std::vector<char> contents;
  ASSERT_TRUE(loaded.GetCodeFileContents(1, contents));
  EXPECT_EQ(contents, std::vector<char>{'T'});
}

}  // namespace
}  // namespace ondrel::test
