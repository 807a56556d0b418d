// Moving a node down by the short way and by the long one, on random sets whose records hosts have changed: whatever is
// asked afterwards, no one can tell which way it was.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "support/archive_bytes.h"
#include "support/model/random_sets.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/sanitizers.h"
#include "support/statuses.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

/// Two sets to which the same is done, but that one always moves nodes by the long way.
class TwoWays {
 public:
  explicit TwoWays(std::uint32_t seed) : m_random(seed), m_seed(seed) {}

  /// Many nodes of few cookies: below each other, below themselves, and beside all that is special.
  void FillFromFewCookies() {
    for (int left = 30; left > 0; --left) AddObject();
  }

  void FillAsUsual() {
    const TemporaryFolder folder;
    for (CMMCObjectSet* const set : {&m_asItComes, &m_byTheLongWay}) {
      std::mt19937 same(m_seed);
      FillRandomly(*set, same, Form::image, folder);
    }
  }

  void Move() {
    const __int64 cookie = Number(4) == 0 ? AnyCookie() : UsedCookie();
    const bool fits = CMMCObjectSetProbe::RecordsFitKeys(m_asItComes);
    CMMCObjectSetProbe::DoubtCookies(m_byTheLongWay);
    for (CMMCObjectSet* const set : {&m_asItComes, &m_byTheLongWay}) CMMCObjectSetProbe::SetModifiedFlag(*set, 0);
    const HRESULT status = m_asItComes.MoveNodeDown(cookie);
    ASSERT_EQ(status, m_byTheLongWay.MoveNodeDown(cookie)) << "cookie " << cookie;
    ASSERT_NO_FATAL_FAILURE(CompareObjects());
    if (status == kAlreadyExists) ++m_refused;
    if (m_asItComes.IsModified()) ++(fits ? m_short : m_long);
  }

  /// Something else, which mostly leaves a set that fits as fitting as it was.
  void Edit() {
    switch (Number(11)) {
      case 0:
        return ChangeRecord();
      case 1:
        return AddObject();
      case 2: {
        const __int64 cookie = UsedCookie();
        return Expect([&](CMMCObjectSet& set) { return set.RemoveNode(cookie); });
      }
      case 3: {
        const __int64 cookie = UsedCookie();
        return Expect([&](CMMCObjectSet& set) { return set.RemoveDialog(cookie); });
      }
      case 4: {
        const __int64 parent = UsedCookie();
        return Expect([&](CMMCObjectSet& set) { return set.AddNewNode(parent, _T("new"), CMMCObjectParams::eList); });
      }
      case 5: {
        const CString name = Name();
        return Expect([&](CMMCObjectSet& set) { return set.AddNewDialog(name); });
      }
      case 6: {
        const CString name = Name();
        return Expect([&](CMMCObjectSet& set) { return set.GetDialog(name); });
      }
      case 7:
        return Expect([&](CMMCObjectSet& set) { return set.GetDialogs(); });
      default: {
        const __int64 parent = UsedCookie();
        return Expect([&](CMMCObjectSet& set) { return set.GetChildNodes(parent); });
      }
    }
  }

  void CompareObjects() {
    ASSERT_EQ(DescribeObjects(m_asItComes), DescribeObjects(m_byTheLongWay));
    ASSERT_EQ(m_asItComes.IsModified(), m_byTheLongWay.IsModified());
  }
  void CompareAll() { ASSERT_EQ(Observed(m_asItComes), Observed(m_byTheLongWay)); }

  int Short() const { return m_short; }
  int Long() const { return m_long; }
  int Refused() const { return m_refused; }

 private:
  int Number(int below) { return std::uniform_int_distribution<int>(0, below - 1)(m_random); }

  __int64 AnyCookie() {
    constexpr __int64 kSpecial[] = {std::numeric_limits<__int64>::min(), -2, -1, 0,
                                    std::numeric_limits<__int64>::max()};
    return Number(3) == 0 ? kSpecial[Number(std::size(kSpecial))] : Number(24) - 4;
  }

  __int64 UsedCookie() {
    const auto& objects = CMMCObjectSetProbe::Tables(m_asItComes).objects;
    if (objects.empty()) return AnyCookie();
    return std::next(objects.begin(), Number(static_cast<int>(objects.size())))->first;
  }

  CString Name() { return CString(static_cast<WCHAR>(_T('a') + Number(6)), 1); }

  template <class Operation>
  void Expect(const Operation& operation) {
    ASSERT_EQ(operation(m_asItComes), operation(m_byTheLongWay));
  }

  void AddObject() {
    const __int64 cookie = AnyCookie();
    const __int64 parent = Number(4) == 0 ? cookie : AnyCookie();
    const CMMCObjectParams record =
        MakeRecord({.cookie = Number(60) == 0 ? AnyCookie() : cookie, .name = Name(), .scripts = {Number(100)}});
    const bool isDialog = Number(5) == 0;
    Expect([&](CMMCObjectSet& set) {
      return isDialog ? set.AddDialog(cookie, record) : set.AddNode(parent, cookie, record);
    });
  }

  void ChangeRecord() {
    const __int64 cookie = UsedCookie();
    const RecordFields fields{.cookie = Number(2) == 0   ? cookie
                                        : Number(2) == 0 ? AnyCookie()
                                                         : Number(1000),
                              .name = Name(),
                              .icon = Number(100)};
    const int way = Number(4);
    Expect([&](CMMCObjectSet& set) {
      const CMMCObjectParams record = MakeRecord(fields);
      CMMCObjectParams* stored = nullptr;
      if (!set.GetParams(cookie, stored)) return false;
      if (way == 0) set.SetParams(cookie, &record);
      if (way == 1) *stored = record;
      if (way == 2) stored->SetName(fields.name);
      if (way == 3) {
        LoadingArchive archive(Stored([&](CVellum& storing) { record.Serialize(storing); }));
        stored->Deserialize(*archive);
      }
      return true;
    });
  }

  std::mt19937 m_random;
  std::uint32_t m_seed;
  CMMCObjectSet m_asItComes{LeaveToSet};
  CMMCObjectSet m_byTheLongWay{LeaveToSet};
  int m_short = 0;
  int m_long = 0;
  int m_refused = 0;
};

TEST(NodeTreeMovingRandomly, LeavesWhatTheLongWayLeaves) {
  constexpr std::uint32_t kSets = kSlowed ? 30 : 100;
  constexpr int kSteps = 50;
  int inPlace = 0;
  int anew = 0;
  int refused = 0;
  for (std::uint32_t seed = 1; seed <= kSets; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    TwoWays ways(seed);
    if (seed % 4 == 0) {
      ways.FillAsUsual();
    } else {
      ways.FillFromFewCookies();
    }
    ASSERT_NO_FATAL_FAILURE(ways.CompareAll());
    for (int step = 0; step < kSteps; ++step) {
      SCOPED_TRACE("step " + std::to_string(step));
      ASSERT_NO_FATAL_FAILURE(ways.Move());
      ASSERT_NO_FATAL_FAILURE(ways.Edit());
    }
    ASSERT_NO_FATAL_FAILURE(ways.CompareAll());
    inPlace += ways.Short();
    anew += ways.Long();
    refused += ways.Refused();
  }
  // Each of them came up often enough to matter.
  constexpr int enough = kSets / 2;
  EXPECT_GT(inPlace, enough);
  EXPECT_GT(anew, enough);
  EXPECT_GT(refused, enough);
}

}  // namespace
}  // namespace ondrel::test
