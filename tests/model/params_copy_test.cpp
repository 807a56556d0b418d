// Copies, moves and assignments of records, and the lists that go in by move and come out as copies.

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

#include "support/model/sets.h"

namespace ondrel::test {
namespace {

const RecordFields kFull = FullRecord(CMMCObjectParams::eHTML);

TEST(ParamsCopy, HoldsAllNineFieldsAndSharesNothing) {
  CMMCObjectParams source = MakeRecord(kFull);
  const CMMCObjectParams copy(source);
  EXPECT_TRUE(SameRecord(copy, kFull));
  source.SetName(_T("other"));
  source.SetScripts({});
  source.SetChildQueries({});
  source.SetRenderQueries({});
  EXPECT_TRUE(SameRecord(copy, kFull));
}

TEST(ParamsCopy, LeavesItsSourceAsItWas) {
  const CMMCObjectParams source = MakeRecord(kFull);
  const CMMCObjectParams copy(source);
  EXPECT_TRUE(SameRecord(source, kFull));
}

TEST(ParamsMove, TakesTheListsAndLeavesTheRestWithTheSource) {
  CMMCObjectParams source = MakeRecord(kFull);
  const CMMCObjectParams target(std::move(source));
  EXPECT_TRUE(SameRecord(target, kFull));
  RecordFields left = kFull;
  left.childQueries.clear();
  left.scripts.clear();
  left.renderQueries.clear();
  EXPECT_TRUE(SameRecord(source, left));  // NOLINT(bugprone-use-after-move): the source stays a record
}

TEST(ParamsAssignment, ReplacesAllNineFields) {
  const CMMCObjectParams source = MakeRecord(kFull);
  CMMCObjectParams target = MakeRecord({.cookie = 1,
                                        .name = _T("old"),
                                        .icon = 2,
                                        .type = CMMCObjectParams::eDialog,
                                        .childQueries = {{_T("a"), 3}, {_T("b"), 4}, {_T("c"), 5}},
                                        .styleSheet = 6,
                                        .menuScript = 7,
                                        .scripts = {8},
                                        .renderQueries = {{_T("d"), 9}}});
  CMMCObjectParams& result = (target = source);
  EXPECT_EQ(&result, &target);
  EXPECT_TRUE(SameRecord(target, kFull));
  EXPECT_TRUE(SameRecord(source, kFull));
}

TEST(ParamsAssignment, ToItselfChangesNothing) {
  CMMCObjectParams record = MakeRecord(kFull);
  const CMMCObjectParams& same = record;
  record = same;
  EXPECT_TRUE(SameRecord(record, kFull));
}

TEST(ParamsAssignment, HasNoMovingFormThatWouldEmptyTheSource) {
  CMMCObjectParams source = MakeRecord(kFull);
  CMMCObjectParams target;
  target = std::move(source);
  EXPECT_TRUE(SameRecord(target, kFull));
  EXPECT_TRUE(SameRecord(source, kFull));  // NOLINT(bugprone-use-after-move): an assignment copies
}

TEST(ParamsLists, AreTakenFromTheArgumentWhichIsLeftEmpty) {
  CMMCObjectParams record = MakeRecord(kFull);
  CMMCObjectParams::QueryList children{{_T("x"), 1}};
  CMMCObjectParams::ScriptList scripts{2, 2};
  CMMCObjectParams::QueryList renders{{_T("y"), 3}, {_T("y"), 3}};
  const auto* const childStorage = children.data();
  const auto* const scriptStorage = scripts.data();
  const auto* const renderStorage = renders.data();
  record.SetChildQueries(std::move(children));
  record.SetScripts(std::move(scripts));
  record.SetRenderQueries(std::move(renders));
  // NOLINTBEGIN(bugprone-use-after-move): what is left is the point
  EXPECT_TRUE(children.empty());
  EXPECT_TRUE(scripts.empty());
  EXPECT_TRUE(renders.empty());
  // NOLINTEND(bugprone-use-after-move)
  RecordFields expected = kFull;
  expected.childQueries = {{_T("x"), 1}};
  expected.scripts = {2, 2};
  expected.renderQueries = {{_T("y"), 3}, {_T("y"), 3}};
  EXPECT_TRUE(SameRecord(record, expected));
  EXPECT_NE(record.GetChildQueries().data(), childStorage) << "a getter gives a copy";
  EXPECT_NE(record.GetScripts().data(), scriptStorage) << "a getter gives a copy";
  EXPECT_NE(record.GetRenderQueries().data(), renderStorage) << "a getter gives a copy";
}

TEST(ParamsLists, OfACopyThatChangesStayAsTheyAre) {
  const CMMCObjectParams record = MakeRecord(kFull);
  record.GetChildQueries().clear();
  auto scripts = record.GetScripts();
  scripts.push_back(1);
  record.GetRenderQueries().front().second = 1;
  EXPECT_TRUE(SameRecord(record, kFull));
}

/// A record that hands its own lists to its setters.
class OwnLists : public CMMCObjectParams {
 public:
  using CMMCObjectParams::CMMCObjectParams;
  explicit OwnLists(const CMMCObjectParams& record) : CMMCObjectParams(record) {}
  void SetOwnChildQueries() { SetChildQueries(std::move(m_childQueries)); }
  void SetOwnScripts() { SetScripts(std::move(m_scripts)); }
  void SetOwnRenderQueries() { SetRenderQueries(std::move(m_renderQueries)); }
};

TEST(ParamsLists, StayAsTheyAreWhenARecordIsHandedItsOwn) {
  OwnLists record(MakeRecord(kFull));
  record.SetOwnScripts();
  EXPECT_TRUE(SameRecord(record, kFull)) << "after SetScripts";
  record.SetOwnChildQueries();
  EXPECT_TRUE(SameRecord(record, kFull)) << "after SetChildQueries";
  record.SetOwnRenderQueries();
  EXPECT_TRUE(SameRecord(record, kFull)) << "after SetRenderQueries";
}

}  // namespace
}  // namespace ondrel::test
