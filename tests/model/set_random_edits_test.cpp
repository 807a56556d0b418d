// Long runs of random edits, each checked against the plain telling of the rules.

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/model/edit_program.h"
#include "support/model/plain_conversions.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/sanitizers.h"

namespace ondrel::test {
namespace {

std::vector<std::uint8_t> RandomBytes(std::uint32_t seed, int count) {
  std::mt19937 random(seed);
  std::vector<std::uint8_t> bytes;
  while (count-- > 0) bytes.push_back(static_cast<std::uint8_t>(random()));
  return bytes;
}

TEST(SetRandomEdits, AnswerAndLeaveWhatTheRulesSay) {
  constexpr std::uint32_t kPrograms = kSanitized ? 150 : 400;
  constexpr int kBytes = 1200;
  PlainDisk disk;
  std::map<std::string, int> outcomes;
  for (std::uint32_t seed = 1; seed <= kPrograms; ++seed) {
    const std::vector<std::uint8_t> bytes = RandomBytes(seed, kBytes);
    EditProgram program(bytes, disk);
    try {
      program.Run();
    } catch (const std::logic_error& difference) {
      FAIL() << "seed " << seed << ", " << difference.what();
    }
    for (const auto& [outcome, count] : program.Outcomes()) outcomes[outcome] += count;
  }
  std::string told;
  for (const auto& [outcome, count] : outcomes) told += outcome + " " + std::to_string(count) + "\n";
  RecordProperty("outcomes", told);
  std::printf("%s", told.c_str());
}

/// A tree of nodes that mostly fit together, with more siblings than the runs above have.
TEST(SetRandomEdits, MovesInWideTreesLeaveWhatTheRulesSay) {
  constexpr int kRuns = kSanitized ? 8 : 20;
  constexpr int kNodes = 60;
  constexpr int kMoves = 40;
  int moved = 0;
  for (std::uint32_t seed = 1; seed <= kRuns; ++seed) {
    std::mt19937 random(seed + 1000);
    const auto number = [&](int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); };
    CMMCObjectSet set(LeaveToSet);
    PlainSet plain;
    for (int count = 0; count < kNodes; ++count) {
      const __int64 parent = number(8) - 1;
      const PlainText name(1, static_cast<char16_t>(u'a' + number(8)));
      ASSERT_EQ(set.AddNewNode(parent, Real(name), CMMCObjectParams::eList),
                plain.AddNewNode(parent, name, kPlainList));
    }
    for (int move = 0; move < kMoves; ++move) {
      const __int64 cookie = number(kNodes);
      const std::string before = plain.DescribeObjects();
      ASSERT_EQ(set.MoveNodeDown(cookie), plain.MoveNodeDown(cookie));
      ASSERT_EQ(DescribeObjects(set), plain.DescribeObjects()) << "seed " << seed << ", cookie " << cookie;
      if (plain.DescribeObjects() != before) ++moved;
    }
  }
  EXPECT_GT(moved, kRuns * kMoves / 2);
}

}  // namespace
}  // namespace ondrel::test
