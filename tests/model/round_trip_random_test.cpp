// Random sets go through both persistent forms and come back equal.

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/live_handles.h"
#include "support/model/random_sets.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/print_text.h"

namespace ondrel::test {
namespace {

constexpr unsigned kSets = 40;

/// The bytes of every icon, with their cookies.
std::string IconsOf(const CMMCObjectSet& set) {
  return Stored([&](CVellum& archive) {
    for (const __int64 cookie : set.GetIconFiles()) set.SerializeIconFile(cookie, archive);
  });
}

/// The folders of the code files on disk. In these sets none differ in case.
std::set<std::string> FoldersOf(const CMMCObjectSet& set) {
  std::set<std::string> folders;
  for (const auto& [path, file] : CMMCObjectSetProbe::Tables(set).codePaths) {
    const std::string text = platform::ToUtf8(path);
    folders.insert(text.substr(0, text.find_last_of("\\/") + 1));
  }
  return folders;
}

TEST(RoundTrip, ThroughAProjectFileEverySetComesBackEqual) {
  for (unsigned seed = 0; seed < kSets; ++seed) {
    const TemporaryFolder folder;
    const CString fileName = Wide(folder.Path()) + (seed % 2 == 0 ? _T("\\p.xml") : _T(" elsewhere\\p.xml"));
    std::mt19937 random(seed);
    CMMCObjectSet set(LeaveToSet);
    FillRandomly(set, random, Form::projectAndImage, folder);
    const std::string project = SavedProject(set, fileName);

    CMMCObjectSet loaded(LeaveToSet);
    LoadProject(loaded, project, fileName, MarkingTransform);
    ASSERT_EQ(Observed(loaded), Observed(set)) << "seed " << seed << "\n" << project;
    EXPECT_EQ(SavedProject(loaded, fileName), project) << "seed " << seed;
    EXPECT_TRUE(SavedImage(loaded) == SavedImage(set)) << "seed " << seed;
  }
}

TEST(RoundTrip, ThroughAnImageEverySetComesBackEqual) {
  for (const Form form : {Form::image, Form::projectAndImage}) {
    for (unsigned seed = 0; seed < kSets; ++seed) {
      const TemporaryFolder folder;
      std::mt19937 random(seed);
      CMMCObjectSet set(LeaveToSet);
      FillRandomly(set, random, form, folder);
      const std::string image = SavedImage(set);
      EXPECT_TRUE(SavedImage(set) == image) << "seed " << seed;

      CMMCObjectSet loaded(LeaveToSet);
      LoadImage(loaded, image);
      ASSERT_EQ(DescribeObjects(loaded), DescribeObjects(set)) << "seed " << seed;
      EXPECT_TRUE(IconsOf(loaded) == IconsOf(set)) << "seed " << seed;
      EXPECT_EQ(loaded.GetCodeFiles().size(), set.GetCodeFiles().size()) << "seed " << seed;
      const std::size_t folders = FoldersOf(set).size();
      for (const auto& [path, file] : CMMCObjectSetProbe::Tables(set).codePaths) {
        CString native = path;
        native.Replace(_T('\\'), _T('/'));
        std::string expected = ReadBytes(platform::ToUtf8(native));
        expected.push_back(static_cast<char>(path.GetLength()));
        expected.push_back(static_cast<char>(folders));
        std::vector<char> contents;
        ASSERT_TRUE(loaded.GetCodeFileContents(file.first, contents)) << "seed " << seed;
        EXPECT_TRUE(std::string(contents.begin(), contents.end()) == expected)
            << "seed " << seed << ", " << platform::ToUtf8(path);
      }
      for (const auto& [cookie, contents] : CMMCObjectSetProbe::Tables(set).codeContents) {
        std::vector<char> read;
        ASSERT_TRUE(loaded.GetCodeFileContents(cookie, read)) << "seed " << seed;
        EXPECT_TRUE(read == contents) << "seed " << seed << ", cookie " << cookie;
      }

      // Loaded sets have no files on disk, so that their images are the same from here on.
      const std::string second = SavedImage(loaded);
      if (CMMCObjectSetProbe::Tables(set).codePaths.empty()) {
        EXPECT_TRUE(second == image) << "seed " << seed;
      }
      CMMCObjectSet again(LeaveToSet);
      LoadImage(again, second);
      EXPECT_EQ(Observed(again), Observed(loaded)) << "seed " << seed;
      EXPECT_TRUE(SavedImage(again) == second) << "seed " << seed;
    }
  }
}

TEST(RoundTrip, HandlesAreReleasedWithTheSets) {
  const auto before = CountLiveHandles();
  for (unsigned seed = 0; seed < 10; ++seed) {
    const TemporaryFolder folder;
    const CString fileName = Wide(folder.Path()) + _T("\\p.xml");
    std::mt19937 random(seed);
    CMMCObjectSet set(LeaveToSet);
    FillRandomly(set, random, Form::projectAndImage, folder);
    EXPECT_EQ(CountLiveHandles().icons, before.icons + 2 * static_cast<long>(set.GetIconFiles().size()));
    CMMCObjectSet loaded(LeaveToSet);
    LoadProject(loaded, SavedProject(set, fileName), fileName);
    LoadImage(set, SavedImage(loaded));
    LoadProject(loaded, "<Project/>");
    EXPECT_EQ(CountLiveHandles().icons, before.icons) << "seed " << seed;
  }
  EXPECT_EQ(CountLiveHandles().icons, before.icons);
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
}

}  // namespace
}  // namespace ondrel::test
