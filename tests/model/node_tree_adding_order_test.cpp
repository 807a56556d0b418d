// Adding nodes in orders in which the place of the node before says nothing about the next one's, against plain maps.

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <list>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

constexpr HRESULT kTaken = static_cast<HRESULT>(0x800700B7);

/// A set and, beside it, the parent of each cookie.
class AddingOrder : public testing::Test {
 protected:
  void Add(__int64 parent, __int64 cookie) {
    const bool isNew = m_parents.emplace(cookie, parent).second;
    const CMMCObjectParams params(cookie, _T("n"), CMMCObjectParams::eList);
    ASSERT_EQ(m_set.AddNode(parent, cookie, params), isNew ? S_OK : kTaken) << cookie << " below " << parent;
  }
  void Remove(__int64 cookie) {
    ASSERT_EQ(m_set.RemoveNode(cookie), S_OK) << cookie;
    m_parents.erase(cookie);
  }
  void ExpectSame() {
    std::map<__int64, std::list<__int64>> children;
    std::set<std::pair<__int64, __int64>> keys;
    for (const auto& [cookie, parent] : m_parents) {
      keys.emplace(parent, cookie);
      children[cookie];
      if (cookie >= 0) children[parent].push_back(cookie);
    }
    for (const auto& [parent, expected] : children) {
      ASSERT_EQ(m_set.GetChildNodes(parent), expected) << "below " << parent;
    }
    const auto& tables = CMMCObjectSetProbe::Tables(m_set);
    ASSERT_EQ(tables.nodes.size(), keys.size());
    auto key = keys.begin();
    for (const auto& [storedKey, record] : tables.nodes) {
      ASSERT_EQ(storedKey, *key);
      ASSERT_EQ(record.GetCookie(), storedKey.second);
      ++key;
    }
    ASSERT_EQ(tables.objects.size(), m_parents.size());
    auto object = m_parents.begin();
    for (const auto& [cookie, entry] : tables.objects) {
      ASSERT_EQ(cookie, object->first);
      ASSERT_EQ(entry->first, std::make_pair(object->second, cookie));
      ++object;
    }
  }

  CMMCObjectSet m_set{LeaveToSet};
  std::map<__int64, __int64> m_parents;
};

TEST_F(AddingOrder, MayAscend) {
  for (__int64 cookie = 0; cookie < 300; ++cookie) Add(cookie / 7 - 1, cookie);
  ExpectSame();
}

TEST_F(AddingOrder, MayDescend) {
  for (__int64 cookie = 300; cookie > 0; --cookie) Add(-1, cookie);
  for (__int64 cookie = 900; cookie > 600; --cookie) Add(900 - cookie, cookie);
  ExpectSame();
}

TEST_F(AddingOrder, MayChangeBetweenParents) {
  for (__int64 cookie = 0; cookie < 300; ++cookie) Add(cookie % 3 == 0 ? 1'000 : cookie % 3 == 1 ? -5 : 2, cookie);
  ExpectSame();
}

TEST_F(AddingOrder, MayGoFromOneEndToTheOther) {
  constexpr __int64 kLeast = std::numeric_limits<__int64>::min();
  constexpr __int64 kMost = std::numeric_limits<__int64>::max();
  Add(kMost, kMost);
  Add(kLeast, kLeast);
  Add(kMost, kLeast + 1);
  Add(kLeast, kMost - 1);
  Add(-1, 0);
  Add(kMost, kMost);
  Add(0, kLeast);
  Add(kLeast, -1);
  ExpectSame();
}

TEST_F(AddingOrder, MayFollowTheRemovalOfTheLast) {
  for (__int64 cookie = 0; cookie < 100; ++cookie) {
    Add(-1, cookie);
    Add(cookie, 1'000 + cookie);
    Remove(1'000 + cookie);
    Add(cookie, 999 - cookie);
    if (cookie % 2 == 0) Remove(999 - cookie);
  }
  ExpectSame();
}

TEST_F(AddingOrder, MayFollowTheRemovalOfAll) {
  for (int round = 0; round < 3; ++round) {
    for (const __int64 cookie : {5, 3, 9}) Add(-1, cookie);
    for (const __int64 cookie : {9, 5, 3}) Remove(cookie);
    ExpectSame();
  }
  Add(-1, 4);
  ExpectSame();
}

TEST_F(AddingOrder, MayFollowARefusal) {
  Add(-1, 5);
  Add(-1, 8);
  for (const __int64 parent : {-1, 5, 8}) {
    Add(parent, 5);
    Add(parent, 8);
  }
  Add(-1, 6);
  Add(5, 7);
  ExpectSame();
}

TEST_F(AddingOrder, MayFollowAMove) {
  for (const bool isShort : {true, false}) {
    CMMCObjectSetProbe::Initialise(m_set);
    m_parents.clear();
    Add(-1, 1);
    Add(-1, 2);
    Add(1, 10);
    Add(2, 20);
    Add(2, 21);  // the last, which the move puts below 1
    if (!isShort) CMMCObjectSetProbe::DoubtCookies(m_set);
    ASSERT_EQ(CMMCObjectSetProbe::RecordsFitKeys(m_set), isShort);
    ASSERT_EQ(m_set.MoveNodeDown(1), S_OK);
    m_parents[10] = 2;
    m_parents[20] = 1;
    m_parents[21] = 1;
    ExpectSame();
    Add(2, 22);
    Add(1, 19);
    Add(1, 23);
    ExpectSame();
    ASSERT_EQ(m_set.MoveNodeDown(22), S_OK) << "has no sibling below it";
    ASSERT_EQ(m_set.MoveNodeDown(21), S_OK);  // with 23, the last that was added
    ExpectSame();
    Remove(23);
    Add(1, 24);
    ExpectSame();
  }
}

TEST_F(AddingOrder, MayFollowAFailedLoad) {
  Add(-1, 1);
  Add(1, 2);
  const std::string node = R"(<Node Cookie="1" Name="N" Icon="0" Type="List"><MenuScript/></Node>)";
  EXPECT_TRUE(Raised<COleException>(
      [&] { LoadProject(m_set, "<Project><NodeGroup>" + node + node + "</NodeGroup></Project>"); }));
  ExpectSame();
  Add(1, 3);
  Add(-1, 0);
  ExpectSame();

  CMMCObjectSet other(LeaveToSet);
  AddNamed(other, -1, 4, _T("n"));
  AddNamed(other, 4, 6, _T("n"));
  const std::string image = SavedImage(other);
  EXPECT_TRUE(Raised<CArchiveException>([&] { LoadImage(m_set, image.substr(0, image.size() - 40)); }));
  m_parents = {{4, -1}, {6, 4}};  // what was read stays
  ExpectSame();
  Add(4, 5);
  Add(6, 7);
  Add(-1, 3);
  ExpectSame();
}

TEST_F(AddingOrder, MayFollowALoad) {
  Add(-1, 900);
  CMMCObjectSet other(LeaveToSet);
  AddNamed(other, -1, 4, _T("n"));
  AddNamed(other, 4, 6, _T("n"));
  for (const bool isImage : {true, false}) {
    if (isImage) {
      LoadImage(m_set, SavedImage(other));
    } else {
      LoadProject(m_set, SavedProject(other));
    }
    m_parents = {{4, -1}, {6, 4}};
    ExpectSame();
    Add(6, 5);
    Add(-1, 7);
    Add(4, 901);
    ExpectSame();
  }
}

TEST_F(AddingOrder, MayBeRandomAmongRemovals) {
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    std::mt19937 random(seed);
    const auto number = [&](int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); };
    CMMCObjectSetProbe::Initialise(m_set);
    m_parents.clear();
    for (int step = 0; step < 150; ++step) {
      const __int64 cookie = number(60) - 10;
      const bool hasChildren = std::any_of(m_parents.begin(), m_parents.end(),
                                           [&](const auto& node) { return node.second == cookie && node.first >= 0; });
      if (number(3) == 0 && m_parents.contains(cookie) && !hasChildren) {
        Remove(cookie);
      } else {
        Add(number(30) - 5, cookie);
      }
      if (HasFatalFailure()) return;
    }
    ExpectSame();
    if (HasFatalFailure()) FAIL() << "seed " << seed;
  }
}

}  // namespace
}  // namespace ondrel::test
