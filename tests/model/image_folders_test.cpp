// The directory map that every code file's transform is handed while an image is stored.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/print_text.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

using Folders = std::map<std::string, __int64>;

/// The maps that the hook was handed, in the order of its calls. A hook is a plain function, so this is kept for the
/// thread.
thread_local std::vector<Folders> t_maps;

bool FolderHook(const WCHAR*, CVellum& archive, CMMCObjectSet::Transform, CMMCObjectSet::Variables variables) {
  Folders folders;
  for (const auto& [folder, value] : variables) {
    EXPECT_EQ(value.vt, VT_I8);
    folders[platform::ToUtf8(folder)] = value.llVal;
  }
  t_maps.push_back(folders);
  archive.Write(std::vector<char>());
  return true;
}

/// The map of a set with these files on disk.
Folders MapOf(const std::vector<std::pair<LPCWSTR, __int64>>& files) {
  CMMCObjectSet set(FolderHook);
  for (const auto& [path, cookie] : files) {
    EXPECT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, path, cookie, Unchanged), S_OK);
  }
  t_maps.clear();
  SavedImage(set);
  EXPECT_EQ(t_maps.size(), files.size());
  for (const Folders& map : t_maps) EXPECT_EQ(map, t_maps.front()) << "every file is handed the same map";
  return t_maps.empty() ? Folders() : t_maps.front();
}

TEST(ImageFolders, AFolderStandsWithItsClosingSeparator) {
  EXPECT_EQ(MapOf({{_T("C:\\a\\x.js"), 1}}), (Folders{{"C:\\a\\", 1}}));
  EXPECT_EQ(MapOf({{_T("C:/a/x.js"), 1}}), (Folders{{"C:/a/", 1}}));
  EXPECT_EQ(MapOf({{_T("\\x.js"), 1}}), (Folders{{"\\", 1}}));
  EXPECT_EQ(MapOf({{_T("a\\"), 1}}), (Folders{{"a\\", 1}}));
}

TEST(ImageFolders, TheLaterOfBothSeparatorsEndsTheFolder) {
  EXPECT_EQ(MapOf({{_T("C:\\a/x.js"), 1}}), (Folders{{"C:\\a/", 1}}));
  EXPECT_EQ(MapOf({{_T("C:/a\\x.js"), 1}}), (Folders{{"C:/a\\", 1}}));
}

TEST(ImageFolders, APathWithoutSeparatorStandsWhole) {
  EXPECT_EQ(MapOf({{_T("x.js"), 1}, {_T("y.js"), 2}}), (Folders{{"x.js", 1}, {"y.js", 2}}));
}

TEST(ImageFolders, FoldersThatDifferInCaseAreOneEntryOfTheFirstFileInPathOrder) {
  // Capitals come first in the order of paths.
  EXPECT_EQ(MapOf({{_T("C:\\a\\x.js"), 1}, {_T("C:\\A\\y.js"), 2}}), (Folders{{"C:\\A\\", 2}}));
  EXPECT_EQ(MapOf({{_T("C:\\A\\y.js"), 2}, {_T("C:\\a\\x.js"), 1}}), (Folders{{"C:\\A\\", 2}}));
}

TEST(ImageFolders, TheFirstFileInPathOrderStandsForItsFolderWhateverItsCookie) {
  EXPECT_EQ(MapOf({{_T("d\\c.js"), 1}, {_T("d\\a.js"), 30}, {_T("d\\b.js"), 2}}), (Folders{{"d\\", 30}}));
}

TEST(ImageFolders, OtherSpellingsOfAFolderAreOtherEntries) {
  EXPECT_EQ(MapOf({{_T("d\\a.js"), 1}, {_T("d/b.js"), 2}, {_T("d\\e\\c.js"), 3}}),
            (Folders{{"d/", 2}, {"d\\", 1}, {"d\\e\\", 3}}));
}

TEST(ImageFolders, NegativeCookiesAreKeptWhole) {
  EXPECT_EQ(MapOf({{_T("d\\a.js"), -0x7FFFFFFFFFFFFFFF - 1}}), (Folders{{"d\\", -0x7FFFFFFFFFFFFFFF - 1}}));
}

TEST(ImageFolders, FilesInMemoryHaveNoFolder) {
  CMMCObjectSet set(FolderHook);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, 5, {'x'}), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("d\\a.js"), 1, Unchanged), S_OK);
  t_maps.clear();
  SavedImage(set);
  EXPECT_EQ(t_maps, (std::vector<Folders>{{{"d\\", 1}}}));
}

TEST(ImageFolders, TransformsAreHandedTheMapAndFindFoldersWithoutRegardToCase) {
  const TemporaryFolder folder;
  const CString directory = Wide(folder.Path()) + _T("\\");
  folder.Write("Sub/a.js", "");
  folder.Write("b.js", "");
  std::vector<std::size_t> sizes;
  __int64 found = 0;
  const auto look = [&](std::vector<char> bytes, CMMCObjectSet::Variables variables) {
    sizes.push_back(variables.size());
    const auto entry = variables.find(directory + _T("sUB\\"));
    if (entry != variables.end()) found = entry->second.llVal;
    variables.clear();  // a copy: the next transform has its own
    return bytes;
  };
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, directory + _T("Sub\\a.js"), 77, look), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, directory + _T("b.js"), 78, look), S_OK);
  SavedImage(set);
  EXPECT_EQ(sizes, (std::vector<std::size_t>{2, 2}));
  EXPECT_EQ(found, 77);
}

}  // namespace
}  // namespace ondrel::test
