// Long runs of random edits, each checked against the plain telling of the rules.

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

#include "support/model/plain_set.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/sanitizers.h"

namespace ondrel::test {
namespace {

/// Random arguments from small ranges, so that cookies and names meet often.
class Arguments {
 public:
  explicit Arguments(std::uint32_t seed) : m_random(seed) {}

  int Number(int below) { return std::uniform_int_distribution<int>(0, below - 1)(m_random); }
  __int64 CookieOrNot() { return Number(18) - 4; }
  CString Name() { return CString(static_cast<WCHAR>(_T('a') + Number(8)), 1 + Number(2)); }
  CMMCObjectParams::_eTypeNode Type() { return static_cast<CMMCObjectParams::_eTypeNode>(Number(4)); }
  /// A record that mostly has the cookie that it is filed under.
  RecordFields Record(__int64 cookie) {
    RecordFields record{
        .cookie = Number(8) == 0 ? CookieOrNot() : cookie, .name = Name(), .icon = Number(3), .type = Type()};
    for (int count = Number(3); count > 0; --count) record.scripts.push_back(Number(5));
    for (int count = Number(2); count > 0; --count) record.childQueries.emplace_back(Name(), Number(5));
    return record;
  }

 private:
  std::mt19937 m_random;
};

struct Tally {
  int moves = 0;
  int refusedMoves = 0;
};

std::string Answers(CMMCObjectSet& set) {
  std::string text = set.IsModified() ? "modified" : "unmodified";
  for (__int64 parent = -5; parent < 20; ++parent) {
    text += "\nchildren of " + std::to_string(parent) + ":";
    for (const __int64 child : set.GetChildNodes(parent)) text += " " + std::to_string(child);
  }
  text += "\ndialogs:";
  for (const __int64 dialog : set.GetDialogs()) text += " " + std::to_string(dialog);
  return text;
}

std::string Answers(const PlainSet& set) {
  std::string text = set.IsModified() ? "modified" : "unmodified";
  for (__int64 parent = -5; parent < 20; ++parent) {
    text += "\nchildren of " + std::to_string(parent) + ":";
    for (const __int64 child : set.GetChildNodes(parent)) text += " " + std::to_string(child);
  }
  text += "\ndialogs:";
  for (const __int64 dialog : set.GetDialogs()) text += " " + std::to_string(dialog);
  return text;
}

/// Makes one edit on both and compares what it returned. The edit, for messages.
std::string EditBoth(Arguments& arguments, CMMCObjectSet& set, PlainSet& plain, Tally& tally) {
  const __int64 cookie = arguments.CookieOrNot();
  const __int64 parent = arguments.CookieOrNot();
  const CString name = arguments.Name();
  const std::string number = " " + std::to_string(cookie);
  switch (arguments.Number(12)) {
    case 0: {
      const CMMCObjectParams::_eTypeNode type = arguments.Type();
      EXPECT_EQ(set.AddNewNode(parent, name, type), plain.AddNewNode(parent, name, type));
      return "AddNewNode";
    }
    case 1:
    case 2:
    case 3: {
      const RecordFields record = arguments.Record(cookie);
      EXPECT_EQ(set.AddNode(parent, cookie, MakeRecord(record)), plain.AddNode(parent, cookie, record));
      return "AddNode" + number;
    }
    case 4:
      EXPECT_EQ(set.RemoveNode(cookie), plain.RemoveNode(cookie));
      return "RemoveNode" + number;
    case 5:
    case 6: {
      const HRESULT expected = plain.MoveNodeDown(cookie);
      EXPECT_EQ(set.MoveNodeDown(cookie), expected);
      if (expected == 0) ++tally.moves;
      if (expected == static_cast<HRESULT>(0x800700B7)) ++tally.refusedMoves;
      return "MoveNodeDown" + number;
    }
    case 7:
      EXPECT_EQ(set.AddNewDialog(name), plain.AddNewDialog(name));
      return "AddNewDialog";
    case 8: {
      const RecordFields record = arguments.Record(cookie);
      EXPECT_EQ(set.AddDialog(cookie, MakeRecord(record)), plain.AddDialog(cookie, record));
      return "AddDialog" + number;
    }
    case 9:
      EXPECT_EQ(set.RemoveDialog(cookie), plain.RemoveDialog(cookie));
      return "RemoveDialog" + number;
    case 10: {
      const RecordFields record = arguments.Record(cookie);
      const CMMCObjectParams changed = MakeRecord(record);
      set.SetParams(cookie, &changed);
      plain.SetParams(cookie, record);
      return "SetParams" + number;
    }
    default:
      EXPECT_EQ(set.GetDialog(name), plain.GetDialog(name));
      return "GetDialog";
  }
}

TEST(SetRandomEdits, AnswerAndLeaveWhatTheRulesSay) {
  constexpr int kRuns = kSanitized ? 30 : 60;
  constexpr int kEdits = 120;
  Tally tally;
  for (std::uint32_t seed = 1; seed <= kRuns; ++seed) {
    Arguments arguments(seed);
    CMMCObjectSet set(LeaveToSet);
    PlainSet plain;
    for (int edit = 0; edit < kEdits; ++edit) {
      const std::string what = EditBoth(arguments, set, plain, tally);
      const std::string where = "seed " + std::to_string(seed) + ", edit " + std::to_string(edit) + ", " + what;
      ASSERT_EQ(DescribeObjects(set), plain.Describe()) << where;
      ASSERT_EQ(Answers(set), Answers(plain)) << where;
      if (HasFailure()) FAIL() << where;
    }
  }
  // The runs are of use only when they met what they are for.
  EXPECT_GT(tally.moves, 3 * kRuns);
  EXPECT_GT(tally.refusedMoves, kRuns / 2);
}

/// A tree of nodes that mostly fit together, with more siblings than the runs above have.
TEST(SetRandomEdits, MovesInWideTreesLeaveWhatTheRulesSay) {
  constexpr int kRuns = kSanitized ? 8 : 20;
  constexpr int kNodes = 60;
  constexpr int kMoves = 40;
  int moved = 0;
  for (std::uint32_t seed = 1; seed <= kRuns; ++seed) {
    Arguments arguments(seed + 1000);
    CMMCObjectSet set(LeaveToSet);
    PlainSet plain;
    for (int count = 0; count < kNodes; ++count) {
      const __int64 parent = arguments.Number(8) - 1;
      const CString name = arguments.Name();
      ASSERT_EQ(set.AddNewNode(parent, name, CMMCObjectParams::eList),
                plain.AddNewNode(parent, name, CMMCObjectParams::eList));
    }
    for (int move = 0; move < kMoves; ++move) {
      const __int64 cookie = arguments.Number(kNodes);
      const std::string before = plain.Describe();
      ASSERT_EQ(set.MoveNodeDown(cookie), plain.MoveNodeDown(cookie));
      ASSERT_EQ(DescribeObjects(set), plain.Describe()) << "seed " << seed << ", cookie " << cookie;
      if (plain.Describe() != before) ++moved;
    }
  }
  EXPECT_GT(moved, kRuns * kMoves / 2);
}

}  // namespace
}  // namespace ondrel::test
