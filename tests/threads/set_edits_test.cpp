// Several threads on one set at once.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <list>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "threads/on_threads.h"

namespace ondrel::test {
namespace {

constexpr int kRounds = 300;

/// The index must know each node and dialog once, under its key, and nothing else.
void ExpectConsistent(const CMMCObjectSet& set) {
  const auto& tables = CMMCObjectSetProbe::Tables(set);
  EXPECT_EQ(tables.objects.size(), tables.nodes.size() + tables.dialogs.size());
  for (const auto& [key, record] : tables.nodes) {
    const auto object = tables.objects.find(key.second);
    ASSERT_NE(object, tables.objects.end()) << "node " << key.second;
    EXPECT_EQ(&object->second->second, &record) << "node " << key.second;
    EXPECT_EQ(record.GetCookie(), key.second);
  }
  for (const auto& [key, record] : tables.dialogs) {
    const auto object = tables.objects.find(key.second);
    ASSERT_NE(object, tables.objects.end()) << "dialog " << key.second;
    EXPECT_EQ(&object->second->second, &record) << "dialog " << key.second;
    EXPECT_EQ(record.GetCookie(), key.second);
  }
  EXPECT_EQ(tables.dialogNames.size(), tables.dialogs.size());
}

TEST(SetThreads, GetCookiesOfTheirOwn) {
  CMMCObjectSet set(LeaveToSet);
  std::vector<std::vector<__int64>> cookies(kThreads);
  OnThreads([&](int index) {
    for (int round = 0; round < kRounds; ++round) {
      cookies[index].push_back(set.AddNewNode(-1, _T("n"), CMMCObjectParams::eList));
      CString name;
      name.Format(_T("%d-%d"), index, round);
      cookies[index].push_back(set.AddNewDialog(name));
    }
  });
  std::set<__int64> all;
  for (const auto& given : cookies) all.insert(given.begin(), given.end());
  EXPECT_EQ(all.size(), std::size_t{2} * kThreads * kRounds);
  EXPECT_EQ(*all.begin(), 0);
  EXPECT_EQ(*all.rbegin(), 2 * kThreads * kRounds - 1);
  ExpectConsistent(set);
}

TEST(SetThreads, AddLookUpListMoveAndRemoveAtOnce) {
  CMMCObjectSet set(LeaveToSet);
  constexpr __int64 kSharedParent = 1'000'000;
  std::atomic<int> nodesLeft = 0;
  std::atomic<int> dialogsLeft = 0;
  OnThreads([&](int index) {
    std::mt19937 random(static_cast<unsigned>(index));
    const auto number = [&](int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); };
    for (int round = 0; round < kRounds; ++round) {
      switch (number(8)) {
        case 0:
          if (set.AddNewNode(kSharedParent, _T("n"), CMMCObjectParams::eHTML) >= 0) ++nodesLeft;
          break;
        case 1: {
          CString name;
          name.Format(_T("%d"), number(20));
          if (set.AddNewDialog(name) >= 0) ++dialogsLeft;
          break;
        }
        case 2:
          if (set.RemoveNode(number(60)) == 0) --nodesLeft;
          break;
        case 3:
          if (set.RemoveDialog(number(60)) == 0) --dialogsLeft;
          break;
        case 4:
          set.MoveNodeDown(number(60));
          break;
        case 5: {
          // Only whether there is one: another thread may remove the record at any time.
          CMMCObjectParams* params = nullptr;
          set.GetParams(number(60), params);
          break;
        }
        case 6: {
          std::list<__int64> children = set.GetChildNodes(kSharedParent);
          EXPECT_TRUE(std::is_sorted(children.begin(), children.end()));
          break;
        }
        default: {
          CString name;
          name.Format(_T("%d"), number(20));
          set.GetDialog(name);
          EXPECT_FALSE(set.GetDialogs().size() > 20) << "there are 20 names";
          set.IsModified();
        }
      }
    }
  });
  EXPECT_EQ(set.GetChildNodes(kSharedParent).size(), static_cast<std::size_t>(nodesLeft));
  EXPECT_EQ(set.GetDialogs().size(), static_cast<std::size_t>(dialogsLeft));
  EXPECT_GT(nodesLeft, 0);
  ExpectConsistent(set);
}

TEST(SetThreads, ReplaceRecordsWhileOthersMoveThem) {
  CMMCObjectSet set(LeaveToSet);
  for (int node = 0; node < 10; ++node) set.AddNewNode(-1, _T("n"), CMMCObjectParams::eList);
  OnThreads([&](int index) {
    for (int round = 0; round < kRounds; ++round) {
      const __int64 cookie = round % 10;
      if (index % 2 == 0) {
        const CMMCObjectParams record = MakeRecord({.cookie = cookie, .name = _T("replaced"), .scripts = {index}});
        set.SetParams(cookie, &record);
      } else {
        EXPECT_EQ(set.MoveNodeDown(cookie), 0);
      }
    }
  });
  EXPECT_EQ(set.GetChildNodes(-1), (std::list<__int64>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
  ExpectConsistent(set);
}

TEST(SetThreads, SetAndAskTheFlagWithoutTheLock) {
  CMMCObjectSet set(LeaveToSet);
  OnThreads([&](int index) {
    for (int round = 0; round < kRounds; ++round) {
      if (index % 2 == 0) {
        CMMCObjectSetProbe::SetModifiedFlag(set, round % 2);
      } else {
        set.IsModified();
      }
    }
  });
  EXPECT_TRUE(set.IsModified()) << "the last of an even number of rounds sets the flag";
}

}  // namespace
}  // namespace ondrel::test
