// Long runs of random edits, each checked against the plain telling of the rules.

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <stdexcept>
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

/// What the programs are to meet, each of it at least once, to be of use.
constexpr const char* kOutcomes[] = {
    "AddNewNode: a cookie",
    "AddNewNode: -2",
    "AddNode: 0x00000000",
    "AddNode: 0x800700B7",
    "RemoveNode: 0x00000000",
    "RemoveNode: 0x80070490",
    "RemoveNode: 0x800710D3",
    "MoveNodeDown: 0x00000000",
    "MoveNodeDown: 0x800700B7",
    "MoveNodeDown: 0x80070490",
    "AddNewDialog: a cookie",
    "AddNewDialog: -2",
    "AddDialog: 0x00000000",
    "AddDialog: 0x800700B7",
    "RemoveDialog: 0x00000000",
    "RemoveDialog: 0x80070490",
    "SetParams: a record",
    "SetParams: nothing",
    "GetDialog: a cookie",
    "GetDialog: 0",
    "GetChildNodes: some",
    "GetParams: true",
    "GetParams: false",
    "ChangeInPlace: a record",
    "AddCodeFile: 0x00000000",
    "AddCodeFile: 0x800700B7",
    "AddIconFile: 0x00000000",
    "AddIconFile: 0x80070002",
    "AddIconFile: 0x8007000D",
    "AddIconFile: 0x800700B7",
    "AddIconFile: 0x80070714",
    "InsertCodeFile: 0x800700B7",
    "InsertCodeContents: 0x800700B7",
    "InsertIconFile: 0x800700B7",
    "InsertIcon: 0x800700B7",
    "GetCodeFileContents: true",
    "GetFilePath: true",
    "GetIconFile: true",
    "GetIconFileImage: true",
    "GetIconImageList: images",
    "GetIconBitmapImages: a strip",
    "GetIconBitmapImages: the smallest strip",
    "StoreCodeFile: nothing",
    "StoreCodeFile: CArchiveException 1",
    "StoreIconFile: an icon",
    "LoadCodeFile: nothing",
    "LoadCodeFile: CArchiveException 3",
    "LoadCodeFile: COleException 0x800700B7",
    "LoadIconFile: nothing",
    "LoadIconFile: CArchiveException 3",
    "LoadIconFile: COleException 0x800700B7",
    "StoreWhereOneLoads: CArchiveException 2",
    "StoreWhereOneLoads: CArchiveException 4",
    "ReloadImage: nothing",
    "ReloadImage: CArchiveException 7",
    "ReloadImage: CFileException",
    "ReloadImage: COleException 0x800700B7",
    "ReloadImage: std::bad_function_call",
    "ReloadImage: std::runtime_error",
    "LoadDamagedImage: CArchiveException 3",
    "LoadDamagedImage: CArchiveException 7",
    "ReloadProject: nothing",
    "ReloadProject: COleException 0x80070002",
    "ReloadProject: COleException 0x800700B7",
    "ReloadProject: std::bad_function_call",
    "LoadCutProject: COleException 0x8007000D",
};

TEST(SetRandomEdits, AnswerAndLeaveWhatTheRulesSay) {
  constexpr std::uint32_t kPrograms = kSlowed ? 100 : 300;
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
  for (const char* const outcome : kOutcomes) EXPECT_GT(outcomes[outcome], 0) << outcome;
}

/// A tree of nodes that mostly fit together, with more siblings than the runs above have.
TEST(SetRandomEdits, MovesInWideTreesLeaveWhatTheRulesSay) {
  constexpr int kRuns = kSlowed ? 8 : 20;
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
