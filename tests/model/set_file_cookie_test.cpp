// Random file cookies: how they are drawn, and which are drawn again.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <set>
#include <type_traits>
#include <vector>

#include "support/model/seeded_random_device.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

using Probe = CMMCObjectSetProbe;

constexpr unsigned kSeed = 20'210;

/// The numbers that an engine of this seed gives, one after the other.
std::vector<__int64> Draws(int count) {
  std::mt19937 engine(kSeed);
  std::uniform_int_distribution<__int64> cookies(0, std::numeric_limits<__int64>::max());
  std::vector<__int64> draws;
  while (count-- > 0) draws.push_back(cookies(engine));
  return draws;
}

TEST(SetFileCookie, IsTheFirstDrawOfAFreshEngineWithOneSeed) {
  const std::vector<__int64> draws = Draws(1);
  CMMCObjectSet set(LeaveToSet);
  const SeededRandomDevice device(kSeed);
  EXPECT_EQ(Probe::GenerateFileCookie(set), draws[0]);
  EXPECT_EQ(device.Asked(), 1);
  EXPECT_EQ(Probe::GenerateFileCookie(set), draws[0]) << "every call makes a new engine";
  EXPECT_EQ(device.Asked(), 2) << "every call takes a new seed";
  EXPECT_FALSE(set.IsModified());
}

TEST(SetFileCookie, IsDrawnAgainWhileAnIconOrCodeFileOnDiskHasIt) {
  const std::vector<__int64> draws = Draws(4);
  CMMCObjectSet set(LeaveToSet);
  const SeededRandomDevice device(kSeed);
  ASSERT_EQ(Probe::InsertCodeFile(set, _T("a.js"), draws[0], Unchanged), 0);
  EXPECT_EQ(Probe::GenerateFileCookie(set), draws[1]);
  // An icon file that is not there at all would not be taken; the table alone is asked.
  auto& tables = const_cast<std::remove_cvref_t<decltype(Probe::Tables(set))>&>(Probe::Tables(set));
  tables.iconCookiePaths[draws[1]] = tables.iconPaths.emplace(_T("a.ico"), draws[1]).first;
  EXPECT_EQ(Probe::GenerateFileCookie(set), draws[2]);
  ASSERT_EQ(Probe::InsertCodeFile(set, _T("b.js"), draws[2], Unchanged), 0);
  EXPECT_EQ(Probe::GenerateFileCookie(set), draws[3]);
}

TEST(SetFileCookie, MayBeThatOfANodeADialogOrAFileInMemory) {
  const std::vector<__int64> draws = Draws(1);
  const SeededRandomDevice device(kSeed);
  CMMCObjectSet withNode(LeaveToSet);
  ASSERT_EQ(withNode.AddNode(-1, draws[0], MakeRecord({.cookie = draws[0]})), 0);
  EXPECT_EQ(Probe::GenerateFileCookie(withNode), draws[0]);
  CMMCObjectSet withDialog(LeaveToSet);
  ASSERT_EQ(withDialog.AddDialog(draws[0], MakeRecord({.cookie = draws[0]})), 0);
  EXPECT_EQ(Probe::GenerateFileCookie(withDialog), draws[0]);
  CMMCObjectSet withContents(LeaveToSet);
  ASSERT_EQ(Probe::InsertCodeFile(withContents, draws[0], {'x'}), 0);
  EXPECT_EQ(Probe::GenerateFileCookie(withContents), draws[0]);
  CMMCObjectSet withIcon(LeaveToSet);
  ASSERT_EQ(Probe::InsertIconFile(withIcon, draws[0], CMMCObjectIcon()), 0);
  EXPECT_EQ(Probe::GenerateFileCookie(withIcon), draws[0]);
}

TEST(SetFileCookie, IsNeverZeroAndUsesTheWholeRange) {
  constexpr int kDraws = 5000;
  CMMCObjectSet set(LeaveToSet);
  std::set<__int64> cookies;
  __int64 allBits = 0;
  for (int draw = 0; draw < kDraws; ++draw) {
    const __int64 cookie = Probe::GenerateFileCookie(set);
    ASSERT_GT(cookie, 0);
    cookies.insert(cookie);
    allBits |= cookie;
  }
  EXPECT_EQ(allBits, std::numeric_limits<__int64>::max());
  // Seeds have 32 bits, so a few of the cookies may meet.
  EXPECT_GT(cookies.size(), std::size_t{kDraws} - 10);
}

TEST(SetFileCookie, OfAFileIsTheOneThatIsLookedUp) {
  const std::vector<__int64> draws = Draws(2);
  CMMCObjectSet set(LeaveToSet);
  const SeededRandomDevice device(kSeed);
  __int64 first = 0;
  __int64 second = 0;
  ASSERT_EQ(set.AddCodeFile(_T("a.js"), Unchanged, first), 0);
  ASSERT_EQ(set.AddCodeFile(_T("b.js"), Unchanged, second), 0);
  EXPECT_EQ(first, draws[0]);
  EXPECT_EQ(second, draws[1]);
  CString path;
  ASSERT_TRUE(set.GetFilePath(second, path));
  EXPECT_EQ(path, CString(_T("b.js")));
}

}  // namespace
}  // namespace ondrel::test
