// Adding dialogs: their cookies, their names, and what is refused.

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

TEST(DialogsAdding, ANewDialogHasItsNameTheDialogTypeAndNothingElse) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewDialog(_T("Settings")), 0);
  EXPECT_TRUE(HasRecord(set, 0, {.cookie = 0, .name = _T("Settings"), .type = CMMCObjectParams::eDialog}));
  EXPECT_EQ(set.GetDialogs(), Cookies{0});
  EXPECT_EQ(set.GetChildNodes(0), Cookies()) << "a dialog stands outside the tree";
  EXPECT_EQ(set.GetChildNodes(CMMCObjectSet::RootNode), Cookies());
}

TEST(DialogsAdding, ANewCookieIsTheLargestOfNodesAndDialogsPlusOne) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(set.AddNewDialog(_T("a")), 0);
  EXPECT_EQ(set.AddNewDialog(_T("b")), 1);
  EXPECT_EQ(set.AddNewNode(-1, _T("n"), CMMCObjectParams::eList), 2);
  EXPECT_EQ(set.AddNewDialog(_T("c")), 3);
  ASSERT_EQ(set.AddNode(0, 100, MakeRecord({.cookie = 100})), 0);
  EXPECT_EQ(set.AddNewDialog(_T("d")), 101);
  ASSERT_EQ(set.RemoveDialog(101), 0);
  EXPECT_EQ(set.AddNewDialog(_T("e")), 101) << "a cookie that is free again is given again";
  EXPECT_EQ(set.GetDialogs(), (Cookies{0, 1, 3, 101}));
}

TEST(DialogsAdding, ThereIsNoCookieBeyondTheLargestNumber) {
  constexpr __int64 kLargest = std::numeric_limits<__int64>::max();
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(-1, kLargest, MakeRecord({.cookie = kLargest})), 0);
  const std::string before = DescribeObjects(set);
  EXPECT_EQ(set.AddNewDialog(_T("a")), -2);
  EXPECT_EQ(set.AddNewNode(-1, _T("a"), CMMCObjectParams::eList), -2);
  EXPECT_EQ(DescribeObjects(set), before);
  EXPECT_FALSE(set.IsModified());
}

TEST(DialogsAdding, TheCookieMinusTwoIsGivenTooAlthoughItLooksLikeAFailure) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddDialog(-3, MakeRecord({.cookie = -3, .name = _T("a")})), 0);
  EXPECT_EQ(set.AddNewDialog(_T("b")), -2);
  EXPECT_EQ(set.GetDialogs(), (Cookies{-3, -2}));
  EXPECT_EQ(set.GetDialog(_T("b")), -2);
  EXPECT_TRUE(set.IsModified());
}

TEST(DialogsAdding, ANameThatIsTakenIsRefused) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewDialog(_T("Settings")), 0);
  const std::string before = DescribeObjects(set);
  CMMCObjectSetProbe::SetModifiedFlag(set, 0);
  EXPECT_EQ(set.AddNewDialog(_T("Settings")), -2);
  EXPECT_FALSE(set.IsModified()) << "a failure sets no flag";
  EXPECT_EQ(set.GetDialogs(), Cookies{0});
  EXPECT_EQ(DescribeObjects(set), before);
  EXPECT_EQ(set.AddNewDialog(_T("Other")), 1) << "the refused dialog has used no cookie";
}

TEST(DialogsAdding, NamesThatDifferInCaseAreDifferentNames) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(set.AddNewDialog(_T("Settings")), 0);
  EXPECT_EQ(set.AddNewDialog(_T("settings")), 1);
  EXPECT_EQ(set.AddNewDialog(_T("Settings ")), 2);
  EXPECT_EQ(set.AddNewDialog(_T("")), 3);
  EXPECT_EQ(set.GetDialog(_T("settings")), 1);
  EXPECT_EQ(set.GetDialog(_T("Settings ")), 2);
  EXPECT_EQ(set.GetDialog(_T("")), 3);
}

TEST(DialogsAdding, ARecordIsFiledAsItIsWhateverItsTypeAndCookie) {
  CMMCObjectSet set(LeaveToSet);
  const RecordFields fields{.cookie = 77, .name = _T("n"), .icon = 3, .type = CMMCObjectParams::eList, .scripts = {4}};
  EXPECT_EQ(set.AddDialog(5, MakeRecord(fields)), 0);
  EXPECT_EQ(DescribeObjects(set), "dialog (0, 5): " + Describe(fields) +
                                      "\n"
                                      "dialog name \"n\": 77\n"
                                      "object 5: dialog (0, 5)\n");
  EXPECT_EQ(set.GetDialog(_T("n")), 77) << "the name leads to the record's own cookie";
  EXPECT_FALSE(set.IsModified());
}

TEST(DialogsAdding, TheCookieOfANodeOrDialogIsRefusedAndNothingChanges) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(-1, 4, MakeRecord({.cookie = 4, .name = _T("node")})), 0);
  ASSERT_EQ(set.AddNode(0, 6, MakeRecord({.cookie = 6, .name = _T("a node under cookie 0")})), 0);
  ASSERT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = _T("dialog")})), 0);
  const std::string before = DescribeObjects(set);
  for (const __int64 cookie : {4, 5, 6}) {
    EXPECT_EQ(set.AddDialog(cookie, MakeRecord({.cookie = cookie, .name = _T("new")})), kAlreadyExists) << cookie;
    EXPECT_EQ(DescribeObjects(set), before) << cookie;
  }
  EXPECT_EQ(set.GetDialog(_T("new")), 0);
  EXPECT_FALSE(set.IsModified());
}

TEST(DialogsAdding, ACookieThatTheTableHasIsRefusedEvenWhenItIsNotKnown) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = _T("old")})), 0);
  CMMCObjectSetProbe::ForgetObject(set, 5);
  const std::string before = DescribeObjects(set);
  EXPECT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = _T("new")})), kAlreadyExists);
  EXPECT_EQ(DescribeObjects(set), before);
}

TEST(DialogsAdding, ARecordWhoseNameIsTakenIsRefusedAndNothingChanges) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = _T("dialog")})), 0);
  const std::string before = DescribeObjects(set);
  EXPECT_EQ(set.AddDialog(6, MakeRecord({.cookie = 6, .name = _T("dialog")})), kAlreadyExists);
  EXPECT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = _T("dialog")})), kAlreadyExists);
  EXPECT_EQ(DescribeObjects(set), before);
  EXPECT_FALSE(set.IsModified());
}

TEST(DialogsAdding, NegativeCookiesAreListedToo) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddDialog(3, MakeRecord({.cookie = 3, .name = _T("a")})), 0);
  ASSERT_EQ(set.AddDialog(-9, MakeRecord({.cookie = -9, .name = _T("b")})), 0);
  ASSERT_EQ(set.AddDialog(-1, MakeRecord({.cookie = -1, .name = _T("c")})), 0);
  EXPECT_EQ(set.GetDialogs(), (Cookies{-9, -1, 3}));
}

}  // namespace
}  // namespace ondrel::test
