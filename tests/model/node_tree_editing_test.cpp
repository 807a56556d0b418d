// Listing, adding and removing nodes.

#include <gtest/gtest.h>

#include <limits>
#include <list>
#include <string>

#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

using Cookies = std::list<__int64>;

HRESULT Add(CMMCObjectSet& set, __int64 parent, __int64 cookie, LPCWSTR name = _T("")) {
  return set.AddNode(parent, cookie, MakeRecord({.cookie = cookie, .name = name}));
}

TEST(NodeTreeListing, GivesTheChildrenOfAParentAscending) {
  CMMCObjectSet set(LeaveToSet);
  for (const __int64 cookie : {9, 3, 12, 0}) ASSERT_EQ(Add(set, 7, cookie), 0);
  ASSERT_EQ(Add(set, 6, 1), 0);
  ASSERT_EQ(Add(set, 8, 2), 0);
  ASSERT_EQ(Add(set, 9, 4), 0);
  EXPECT_EQ(set.GetChildNodes(7), (Cookies{0, 3, 9, 12}));
  EXPECT_EQ(set.GetChildNodes(6), Cookies{1});
  EXPECT_EQ(set.GetChildNodes(8), Cookies{2});
  EXPECT_EQ(set.GetChildNodes(5), Cookies());
  EXPECT_EQ(set.GetChildNodes(CMMCObjectSet::RootNode), Cookies());
}

TEST(NodeTreeListing, LeavesOutChildrenWithNegativeCookies) {
  CMMCObjectSet set(LeaveToSet);
  for (const __int64 cookie : {-3, 5, -1, 0}) ASSERT_EQ(Add(set, CMMCObjectSet::RootNode, cookie), 0);
  ASSERT_EQ(Add(set, -3, 8), 0);
  ASSERT_EQ(Add(set, 5, -8), 0);
  EXPECT_EQ(set.GetChildNodes(CMMCObjectSet::RootNode), (Cookies{0, 5}));
  EXPECT_EQ(set.GetChildNodes(-3), Cookies{8}) << "a parent may be negative";
  EXPECT_EQ(set.GetChildNodes(5), Cookies());
  EXPECT_TRUE(HasRecord(set, -8, {.cookie = -8})) << "what is not listed is still there";
}

TEST(NodeTreeListing, ReachesTheEndsOfTheCookieRange) {
  constexpr __int64 kLargest = std::numeric_limits<__int64>::max();
  constexpr __int64 kSmallest = std::numeric_limits<__int64>::min();
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(Add(set, kLargest, kLargest), 0);
  ASSERT_EQ(Add(set, kSmallest, 1), 0);
  EXPECT_EQ(set.GetChildNodes(kLargest), Cookies{kLargest});
  EXPECT_EQ(set.GetChildNodes(kSmallest), Cookies{1});
}

TEST(NodeTreeAdding, StartsAtCookieZeroAndGoesOnByOneWhateverTheParent) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(set.AddNewNode(CMMCObjectSet::RootNode, _T("a"), CMMCObjectParams::eHTML), 0);
  EXPECT_EQ(set.AddNewNode(0, _T("b"), CMMCObjectParams::eList), 1);
  EXPECT_EQ(set.AddNewNode(999, _T("c"), CMMCObjectParams::eUnknown), 2) << "a parent need not exist";
  EXPECT_EQ(set.AddNewNode(0, _T("c"), CMMCObjectParams::eList), 3) << "names of nodes may be alike";
  EXPECT_EQ(set.GetChildNodes(0), (Cookies{1, 3}));
  EXPECT_EQ(set.GetChildNodes(999), Cookies{2});
  EXPECT_TRUE(HasRecord(set, 0, {.cookie = 0, .name = _T("a"), .type = CMMCObjectParams::eHTML}));
  EXPECT_TRUE(HasRecord(set, 2, {.cookie = 2, .name = _T("c"), .type = CMMCObjectParams::eUnknown}));
}

TEST(NodeTreeAdding, TakesTheLargestCookieOfNodesAndDialogsPlusOne) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(set.AddNewDialog(_T("d")), 0);
  EXPECT_EQ(set.AddNewNode(-1, _T("a"), CMMCObjectParams::eList), 1);
  ASSERT_EQ(Add(set, -1, 50), 0);
  ASSERT_EQ(set.AddDialog(60, MakeRecord({.cookie = 60, .name = _T("e")})), 0);
  EXPECT_EQ(set.AddNewNode(-1, _T("b"), CMMCObjectParams::eList), 61);
}

TEST(NodeTreeAdding, GoesOnFromALargestCookieThatIsNegative) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(Add(set, -1, -10), 0);
  EXPECT_EQ(set.AddNewNode(-1, _T("a"), CMMCObjectParams::eList), -9);
}

TEST(NodeTreeAdding, GivesTheCookieMinusTwoTooAlthoughItLooksLikeAFailure) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(Add(set, -1, -3), 0);
  EXPECT_EQ(set.AddNewNode(7, _T("a"), CMMCObjectParams::eList), -2);
  EXPECT_TRUE(HasRecord(set, -2, {.cookie = -2, .name = _T("a")}));
  EXPECT_TRUE(set.IsModified());
}

TEST(NodeTreeAdding, DoesNotCompareTheRecordsCookie) {
  CMMCObjectSet set(LeaveToSet);
  const RecordFields fields{.cookie = 70, .name = _T("n"), .type = CMMCObjectParams::eHTML, .scripts = {1}};
  EXPECT_EQ(set.AddNode(3, 4, MakeRecord(fields)), 0);
  EXPECT_EQ(DescribeObjects(set), "node (3, 4): " + Describe(fields) + "\nobject 4: node (3, 4)\n");
  EXPECT_EQ(set.GetChildNodes(3), Cookies{4});
  EXPECT_FALSE(set.IsModified());
}

TEST(NodeTreeAdding, RefusesACookieThatIsTakenAndChangesNothing) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(Add(set, 3, 4, _T("node")), 0);
  ASSERT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = _T("dialog")})), 0);
  const std::string before = DescribeObjects(set);
  EXPECT_EQ(Add(set, 3, 4, _T("new")), kAlreadyExists) << "the same parent and cookie";
  EXPECT_EQ(Add(set, 2, 4, _T("new")), kAlreadyExists) << "another parent";
  EXPECT_EQ(Add(set, 4, 4, _T("new")), kAlreadyExists) << "another parent";
  EXPECT_EQ(Add(set, -1, 5, _T("new")), kAlreadyExists) << "a dialog's cookie";
  EXPECT_EQ(Add(set, 0, 5, _T("new")), kAlreadyExists) << "a dialog's cookie, under the parent 0";
  EXPECT_EQ(DescribeObjects(set), before);
  EXPECT_FALSE(set.IsModified());
}

TEST(NodeTreeAdding, RefusesAKeyThatTheTreeHasEvenWhenItsCookieIsNotKnown) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(Add(set, 3, 4, _T("old")), 0);
  CMMCObjectSetProbe::ForgetObject(set, 4);
  const std::string before = DescribeObjects(set);
  EXPECT_EQ(Add(set, 3, 4, _T("new")), kAlreadyExists);
  EXPECT_EQ(DescribeObjects(set), before);
}

TEST(NodeTreeRemoval, NeedsANodeWithoutChildren) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(Add(set, -1, 1), 0);
  ASSERT_EQ(Add(set, 1, 2), 0);
  const std::string before = DescribeObjects(set);
  EXPECT_EQ(set.RemoveNode(1), kNotEmpty);
  EXPECT_EQ(DescribeObjects(set), before);
  EXPECT_FALSE(set.IsModified());
  EXPECT_EQ(set.RemoveNode(2), 0);
  EXPECT_TRUE(set.IsModified());
  EXPECT_EQ(set.RemoveNode(1), 0);
  EXPECT_EQ(DescribeObjects(set), "");
}

TEST(NodeTreeRemoval, DoesNotSeeChildrenThatAreNotListed) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(Add(set, -1, 1), 0);
  ASSERT_EQ(Add(set, 1, -2), 0);
  EXPECT_EQ(set.RemoveNode(1), 0);
  EXPECT_TRUE(HasRecord(set, -2, {.cookie = -2}));
}

TEST(NodeTreeRemoval, OfAnUnknownCookieIsNotFound) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(Add(set, 9, 1), 0);
  const std::string before = DescribeObjects(set);
  EXPECT_EQ(set.RemoveNode(2), kNotFound);
  EXPECT_EQ(set.RemoveNode(CMMCObjectSet::RootNode), kNotFound);
  EXPECT_EQ(set.RemoveNode(9), kNotFound) << "only a parent of others";
  EXPECT_EQ(DescribeObjects(set), before);
  EXPECT_FALSE(set.IsModified());
}

TEST(NodeTreeRemoval, OfADialogIsNotFound) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = _T("dialog")})), 0);
  const std::string before = DescribeObjects(set);
  EXPECT_EQ(set.RemoveNode(5), kNotFound);
  EXPECT_EQ(DescribeObjects(set), before);
  EXPECT_FALSE(set.IsModified());
}

TEST(NodeTreeRemoval, GoesByTheKeyAndNotByTheRecordsCookie) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(3, 4, MakeRecord({.cookie = 70})), 0);
  EXPECT_EQ(set.RemoveNode(70), kNotFound);
  EXPECT_EQ(set.RemoveNode(4), 0);
  EXPECT_EQ(DescribeObjects(set), "");
}

}  // namespace
}  // namespace ondrel::test
