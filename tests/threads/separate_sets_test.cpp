// Sets of their own on several threads: each is what it is on one thread, to the byte.

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/model/random_sets.h"
#include "support/model/set_forms.h"
#include "support/temporary_folder.h"
#include "threads/on_threads.h"

namespace ondrel::test {
namespace {

constexpr unsigned kSetsOfAThread = 4;

/// Everything that comes of a random set: what it holds, its two forms, and what is loaded from them.
std::string Story(unsigned seed, const TemporaryFolder& folder) {
  const CString projectName = Wide(folder.Path()) + _T("\\p.xml");
  std::mt19937 random(seed);
  CMMCObjectSet set(LeaveToSet);
  FillRandomly(set, random, Form::projectAndImage, folder);
  const std::string image = SavedImage(set);
  const std::string project = SavedProject(set, projectName);
  CMMCObjectSet fromImage(LeaveToSet);
  LoadImage(fromImage, image);
  CMMCObjectSet fromProject(LeaveToSet);
  LoadProject(fromProject, project, projectName, MarkingTransform);
  for (const __int64 cookie : fromProject.GetChildNodes(CMMCObjectSet::RootNode)) fromProject.MoveNodeDown(cookie);
  return Observed(set) + image + project + Observed(fromImage) + Observed(fromProject) + SavedImage(fromProject);
}

TEST(SeparateSets, GiveOnManyThreadsWhatTheyGiveOnOne) {
  const std::array<TemporaryFolder, kThreads> folders;
  const auto seedOf = [](int thread, unsigned set) { return static_cast<unsigned>(thread) * 100 + set; };
  std::array<std::array<std::string, kSetsOfAThread>, kThreads> alone;
  for (int thread = 0; thread < kThreads; ++thread) {
    const auto number = static_cast<std::size_t>(thread);
    for (unsigned set = 0; set < kSetsOfAThread; ++set) {
      alone[number][set] = Story(seedOf(thread, set), folders[number]);
    }
  }
  OnThreads([&](int thread) {
    const auto number = static_cast<std::size_t>(thread);
    for (unsigned set = 0; set < kSetsOfAThread; ++set) {
      EXPECT_TRUE(Story(seedOf(thread, set), folders[number]) == alone[number][set])
          << "thread " << thread << ", set " << set;
    }
  });
}

}  // namespace
}  // namespace ondrel::test
