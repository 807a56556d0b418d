// Several threads on one set: some add code files and icon files, others list them and look them up.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

constexpr int kFilesOfAThread = 20;

/// Looks at every file that is listed until `done`; counts what does not fit together.
void Watch(CMMCObjectSet& set, const std::atomic<bool>& done, std::atomic<int>& faults) {
  while (!done) {
    std::size_t listed = 0;
    for (const __int64 cookie : set.GetIconFiles()) {
      const CMMCObjectIcon* icon = nullptr;
      CString path;
      if (!set.GetIconFile(cookie, &icon) || icon->GetColourBitmap(true).bmWidth != 32) ++faults;
      if (!set.GetFilePath(cookie, path)) ++faults;
      ++listed;
    }
    if (set.GetIconFiles().size() < listed) ++faults;
    for (const __int64 cookie : set.GetCodeFiles()) {
      CString path;
      std::vector<char> contents;
      if (set.GetFilePath(cookie, path) == set.GetCodeFileContents(cookie, contents)) ++faults;
    }
    int image = 0;
    for (const __int64 cookie : set.GetIconFiles()) set.GetIconFileImage(cookie, image);
    set.IsModified();
  }
}

TEST(IconFilesThreads, FilesAreAddedWhileOthersListAndLookUp) {
  const TemporaryFolder folder;
  std::vector<CString> icons;
  for (int index = 0; index < 2 * kFilesOfAThread; ++index) {
    icons.push_back(WriteIcon(folder, std::to_string(index) + ".ico", {SolidIcon(32, 0), SolidIcon(16, 0)}));
  }
  CMMCObjectSet set(LeaveToSet);
  std::atomic<bool> done = false;
  std::atomic<int> faults = 0;
  const auto addIcons = [&](int first) {
    for (int index = first; index < first + kFilesOfAThread; ++index) {
      __int64 cookie = 0;
      if (set.AddIconFile(icons[static_cast<std::size_t>(index)], cookie) != S_OK || cookie == 0) ++faults;
    }
  };
  std::vector<std::thread> adding;
  adding.emplace_back(addIcons, 0);
  adding.emplace_back(addIcons, kFilesOfAThread);
  for (int writer = 0; writer < 2; ++writer) {
    adding.emplace_back([&, writer] {
      for (int index = 0; index < 10 * kFilesOfAThread; ++index) {
        CString path;
        path.Format(_T("%d\\%d.js"), writer, index);
        __int64 cookie = 0;
        if (set.AddCodeFile(path, Unchanged, cookie) != S_OK || cookie == 0) ++faults;
        // Both threads want this one; one of them gets it each time round.
        path.Format(_T("shared\\%d.js"), index);
        const HRESULT status = set.AddCodeFile(path, Unchanged, cookie);
        if ((status == S_OK) != (cookie != 0)) ++faults;
      }
    });
  }
  adding.emplace_back([&] {
    for (int index = 1; index <= kFilesOfAThread; ++index) {
      LoadingArchive archive(Cookie(-index) + ByteVector("abc"));
      set.DeserializeCodeFile(*archive);
    }
  });
  adding.emplace_back([&] {
    CImageList list;
    if (!list.Create(16, 16, ILC_COLOR32 | ILC_MASK, 0, 1)) ++faults;
    for (int index = 0; index < kFilesOfAThread; ++index) set.GetIconImageList(16, 16, list);
  });
  std::vector<std::thread> watching;
  for (int watcher = 0; watcher < 2; ++watcher) watching.emplace_back([&] { Watch(set, done, faults); });
  for (std::thread& thread : adding) thread.join();
  done = true;
  for (std::thread& thread : watching) thread.join();

  EXPECT_EQ(faults, 0);
  EXPECT_EQ(set.GetIconFiles().size(), 2U * kFilesOfAThread);
  const std::list<__int64> codeFiles = set.GetCodeFiles();
  EXPECT_EQ(codeFiles.size(), 3U * 10 * kFilesOfAThread + kFilesOfAThread);
  EXPECT_EQ(std::set<__int64>(codeFiles.begin(), codeFiles.end()).size(), codeFiles.size())
      << "no cookie is given twice";
  EXPECT_TRUE(set.IsModified());
}

TEST(IconFilesThreads, OfSeveralThreadsOneGetsAPath) {
  const TemporaryFolder folder;
  const CString path = WriteIcon(folder, "icon.ico", {SolidIcon(32, 0)});
  CMMCObjectSet set(LeaveToSet);
  std::atomic<int> added = 0;
  std::atomic<int> refused = 0;
  std::vector<std::thread> threads;
  for (int index = 0; index < 4; ++index) {
    threads.emplace_back([&] {
      __int64 cookie = 0;
      const HRESULT status = set.AddIconFile(path, cookie);
      if (status == S_OK) ++added;
      if (status == kAlreadyExists) ++refused;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(added, 1);
  EXPECT_EQ(refused, 3);
  EXPECT_EQ(set.GetIconFiles().size(), 1U);
}

}  // namespace
}  // namespace ondrel::test
