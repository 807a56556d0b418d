// One set that several threads save, load, edit and look at, as far as its contract lets them: while it is saved or
// loaded, nobody else changes it.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <list>
#include <random>
#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/model/random_sets.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/sanitizers.h"
#include "support/temporary_folder.h"
#include "threads/on_threads.h"
#include "threads/rooms.h"

namespace ondrel::test {
namespace {

constexpr int kEditing = 0;
constexpr int kSaving = 1;

/// Asks for everything that can be asked for by value, and for what lies under the cookies that were listed.
void LookAt(CMMCObjectSet& set) {
  std::list<__int64> open = set.GetChildNodes(CMMCObjectSet::RootNode);
  while (!open.empty()) {
    // Only whether there is one: a load of another thread may take it away.
    CMMCObjectParams* params = nullptr;
    set.GetParams(open.front(), params);
    open.splice(open.end(), set.GetChildNodes(open.front()));
    open.pop_front();
  }
  for (const __int64 dialog : set.GetDialogs()) EXPECT_GE(dialog, 0);
  EXPECT_GE(set.GetDialog(_T("no dialog")), 0);
  for (const __int64 cookie : set.GetCodeFiles()) {
    CString path;
    std::vector<char> contents;
    set.GetFilePath(cookie, path);
    set.GetCodeFileContents(cookie, contents);
  }
  for (const __int64 cookie : set.GetIconFiles()) {
    int image = 0;
    set.GetIconFileImage(cookie, image);
  }
  set.IsModified();
}

TEST(SharedSet, IsSavedByManyAtOnceAndLookedAtMeanwhile) {
  constexpr int kRounds = 12;
  for (unsigned seed = 1; seed <= 2; ++seed) {
    const TemporaryFolder folder;
    const CString projectName = Wide(folder.Path()) + _T("\\p.xml");
    std::mt19937 random(seed);
    CMMCObjectSet set(LeaveToSet);
    FillRandomly(set, random, Form::projectAndImage, folder);
    const std::string image = SavedImage(set);
    const std::string project = SavedProject(set, projectName);
    const std::string contents = Observed(set);
    OnThreads([&](int thread) {
      for (int round = 0; round < kRounds; ++round) {
        switch ((thread + round) % 4) {
          case 0:
            EXPECT_TRUE(SavedImage(set) == image) << "thread " << thread << ", seed " << seed;
            break;
          case 1:
            EXPECT_TRUE(SavedProject(set, projectName) == project) << "thread " << thread << ", seed " << seed;
            break;
          case 2:
            EXPECT_EQ(Observed(set), contents) << "thread " << thread << ", seed " << seed;
            break;
          default:
            LookAt(set);
        }
      }
    });
  }
}

/// A set whose nodes and dialogs were added one after the other has every cookie below their number, once.
void ExpectEveryCookie(CMMCObjectSet& set, std::size_t& dialogs) {
  std::list<__int64> cookies = set.GetChildNodes(CMMCObjectSet::RootNode);
  ASSERT_EQ(cookies.size(), 1U);
  cookies.splice(cookies.end(), set.GetChildNodes(cookies.front()));
  const std::list<__int64> all = set.GetDialogs();
  dialogs = all.size();
  cookies.insert(cookies.end(), all.begin(), all.end());
  cookies.sort();
  __int64 expected = 0;
  for (const __int64 cookie : cookies) ASSERT_EQ(cookie, expected++);
}

TEST(SharedSet, IsWholeWheneverItIsSavedBetweenEdits) {
  constexpr int kRounds = kSanitized ? 15 : 30;  // the work grows with the square
  constexpr int kEditors = 5;
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewNode(CMMCObjectSet::RootNode, _T("top"), CMMCObjectParams::eList), 0);
  Rooms rooms;
  std::atomic<int> looks = 0;
  OnThreads([&](int thread) {
    for (int round = 0; round < kRounds; ++round) {
      if (thread < kEditors) {
        const Rooms::Stay stay(rooms, kEditing);
        CString name;
        name.Format(_T("%d of %d"), round, thread);
        EXPECT_GT(set.AddNewNode(0, name, CMMCObjectParams::eHTML), 0);
        EXPECT_GT(set.AddNewDialog(name), 0);
        __int64 cookie = 0;
        EXPECT_EQ(set.AddCodeFile(name, Unchanged, cookie), S_OK);
        EXPECT_EQ(set.MoveNodeDown(set.GetChildNodes(0).front()), S_OK);
        continue;
      }
      CMMCObjectSet saved(LeaveToSet);
      std::string project;
      {
        const Rooms::Stay stay(rooms, kSaving);
        project = SavedProject(set);
      }
      LoadProject(saved, project);
      std::size_t dialogs = 0;
      ExpectEveryCookie(saved, dialogs);
      EXPECT_EQ(saved.GetCodeFiles().size(), dialogs) << "an editor adds one of each before it leaves";
      ++looks;
    }
  });
  EXPECT_EQ(looks, (kThreads - kEditors) * kRounds);
  std::size_t dialogs = 0;
  ExpectEveryCookie(set, dialogs);
  EXPECT_EQ(dialogs, static_cast<std::size_t>(kEditors * kRounds));
  EXPECT_EQ(set.GetChildNodes(0).size(), static_cast<std::size_t>(kEditors * kRounds));
}

/// Loads again and again on one thread while the others look at the set.
void LookWhileItIsLoaded(CMMCObjectSet& set, const std::function<void()>& load) {
  constexpr int kLooks = 12;
  std::atomic<int> looking = kThreads - 1;
  OnThreads([&](int thread) {
    if (thread == 0) {
      do load();
      while (looking > 0);
      return;
    }
    for (int look = 0; look < kLooks; ++look) LookAt(set);
    --looking;
  });
}

TEST(SharedSet, CanBeLookedAtWhileItIsLoaded) {
  const TemporaryFolder folder;
  const CString projectName = Wide(folder.Path()) + _T("\\p.xml");
  std::mt19937 random(3);
  CMMCObjectSet set(LeaveToSet);
  FillRandomly(set, random, Form::projectAndImage, folder);
  const std::string project = SavedProject(set, projectName);
  const std::string image = SavedImage(set);
  const std::string contents = Observed(set);

  LookWhileItIsLoaded(set, [&] { LoadProject(set, project, projectName, MarkingTransform); });
  EXPECT_EQ(Observed(set), contents);

  const std::string refused = project.substr(0, project.rfind("</FileGroup>")) + "<File/></FileGroup></Project>";
  LookWhileItIsLoaded(set,
                      [&] { EXPECT_THROW(LoadProject(set, refused, projectName, MarkingTransform), COleException); });
  EXPECT_EQ(Observed(set), contents) << "a refused project leaves the set as it was";

  LookWhileItIsLoaded(set, [&] { LoadImage(set, image); });
  CMMCObjectSet alone(LeaveToSet);
  LoadImage(alone, image);
  EXPECT_EQ(Observed(set), Observed(alone));
}

TEST(SharedSet, GivesEveryFileACookieOfItsOwn) {
  constexpr int kFiles = 150;
  CMMCObjectSet set(LeaveToSet);
  std::vector<std::vector<__int64>> given(kThreads);
  OnThreads([&](int thread) {
    for (int file = 0; file < kFiles; ++file) {
      CString path;
      path.Format(_T("%d\\%d.js"), thread, file);
      __int64 cookie = 0;
      EXPECT_EQ(set.AddCodeFile(path, Unchanged, cookie), S_OK);
      given[static_cast<std::size_t>(thread)].push_back(cookie);
      CString kept;
      EXPECT_TRUE(set.GetFilePath(cookie, kept));
      EXPECT_EQ(kept, path);
    }
  });
  std::vector<__int64> all;
  for (const auto& cookies : given) all.insert(all.end(), cookies.begin(), cookies.end());
  std::sort(all.begin(), all.end());
  EXPECT_EQ(std::adjacent_find(all.begin(), all.end()), all.end()) << "no cookie is given twice";
  EXPECT_GT(all.front(), 0);
  EXPECT_EQ(set.GetCodeFiles().size(), all.size());
}

}  // namespace
}  // namespace ondrel::test
