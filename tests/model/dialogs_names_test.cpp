// Dialogs by name, renamed dialogs among them, and their removal.

#include <gtest/gtest.h>

#include <list>
#include <string>

#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

using Cookies = std::list<__int64>;

void Rename(CMMCObjectSet& set, __int64 cookie, LPCWSTR name) {
  CMMCObjectParams record = RecordOf(set, cookie);
  record.SetName(name);
  set.SetParams(cookie, &record);
}

TEST(DialogsNames, AnUnknownNameIsZero) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(set.GetDialog(_T("Settings")), 0);
  ASSERT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = _T("Settings")})), 0);
  EXPECT_EQ(set.GetDialog(_T("settings")), 0);
  EXPECT_EQ(set.GetDialog(_T("Setting")), 0);
  EXPECT_EQ(set.GetDialog(_T("")), 0);
  EXPECT_EQ(set.GetDialog(_T("Settings")), 5);
}

TEST(DialogsNames, AreComparedByAllTheirUnits) {
  CMMCObjectSet set(LeaveToSet);
  const CString plain(_T("a"));
  const CString withZero(_T("a\0b"), 3);
  ASSERT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = plain})), 0);
  ASSERT_EQ(set.AddDialog(6, MakeRecord({.cookie = 6, .name = withZero})), 0);
  EXPECT_EQ(set.GetDialog(plain), 5);
  EXPECT_EQ(set.GetDialog(withZero), 6);
}

TEST(DialogsNames, TheDialogOfCookieZeroLooksLikeNone) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewDialog(_T("first")), 0);
  EXPECT_EQ(set.GetDialog(_T("first")), 0);
  EXPECT_EQ(set.GetDialog(_T("none")), 0);
}

TEST(DialogsNames, OfNodesAreNotFound) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(-1, 5, MakeRecord({.cookie = 5, .name = _T("node"), .type = CMMCObjectParams::eDialog})), 0);
  EXPECT_EQ(set.GetDialog(_T("node")), 0);
  EXPECT_EQ(set.AddNewDialog(_T("node")), 6) << "a node's name is free for a dialog";
}

TEST(DialogsRemoval, FreesTheNameAndTheCookie) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewNode(-1, _T("node"), CMMCObjectParams::eList), 0);
  ASSERT_EQ(set.AddNewDialog(_T("Settings")), 1);
  ASSERT_EQ(set.AddNewDialog(_T("Other")), 2);
  CMMCObjectSetProbe::SetModifiedFlag(set, 0);
  EXPECT_EQ(set.RemoveDialog(1), 0);
  EXPECT_TRUE(set.IsModified());
  EXPECT_EQ(set.GetDialog(_T("Settings")), 0);
  EXPECT_EQ(set.GetDialogs(), Cookies{2});
  CMMCObjectParams* params = nullptr;
  EXPECT_FALSE(set.GetParams(1, params));
  EXPECT_EQ(set.RemoveDialog(1), kNotFound);
  EXPECT_EQ(set.AddDialog(1, MakeRecord({.cookie = 1, .name = _T("Settings")})), 0);
  EXPECT_EQ(set.GetDialog(_T("Settings")), 1);
}

TEST(DialogsRemoval, OfAnUnknownCookieIsNotFound) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = _T("a")})), 0);
  const std::string before = DescribeObjects(set);
  EXPECT_EQ(set.RemoveDialog(4), kNotFound);
  EXPECT_EQ(set.RemoveDialog(0), kNotFound);
  EXPECT_EQ(set.RemoveDialog(CMMCObjectSet::RootNode), kNotFound);
  EXPECT_EQ(DescribeObjects(set), before);
  EXPECT_FALSE(set.IsModified());
}

TEST(DialogsRemoval, OfANodeIsNotFound) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(-1, 5, MakeRecord({.cookie = 5, .name = _T("node")})), 0);
  ASSERT_EQ(set.AddNode(0, 6, MakeRecord({.cookie = 6, .name = _T("a node under cookie 0")})), 0);
  ASSERT_EQ(set.AddDialog(7, MakeRecord({.cookie = 7, .name = _T("node")})), 0);
  const std::string before = DescribeObjects(set);
  EXPECT_EQ(set.RemoveDialog(5), kNotFound);
  EXPECT_EQ(set.RemoveDialog(6), kNotFound);
  EXPECT_EQ(DescribeObjects(set), before);
  EXPECT_FALSE(set.IsModified());
}

TEST(DialogsRenamed, AreFoundUnderTheirOldNameAlone) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = _T("old")})), 0);
  Rename(set, 5, _T("new"));
  EXPECT_EQ(set.GetDialog(_T("old")), 5);
  EXPECT_EQ(set.GetDialog(_T("new")), 0);
  EXPECT_EQ(set.AddDialog(6, MakeRecord({.cookie = 6, .name = _T("old")})), kAlreadyExists);
  EXPECT_EQ(set.AddDialog(7, MakeRecord({.cookie = 7, .name = _T("new")})), 0);
}

TEST(DialogsRenamed, LeaveTheirOldNameBehindWhenTheyAreRemoved) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = _T("old")})), 0);
  Rename(set, 5, _T("new"));
  EXPECT_EQ(set.RemoveDialog(5), 0);
  EXPECT_EQ(DescribeObjects(set), "dialog name \"old\": 5\n");
  EXPECT_EQ(set.GetDialog(_T("old")), 5);
  EXPECT_EQ(set.AddNewDialog(_T("old")), -2);
  EXPECT_EQ(set.AddNewDialog(_T("new")), 0);
}

TEST(DialogsRenamed, TakeTheNameOfAnotherWithThemWhenTheyAreRemoved) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddDialog(5, MakeRecord({.cookie = 5, .name = _T("a")})), 0);
  ASSERT_EQ(set.AddDialog(6, MakeRecord({.cookie = 6, .name = _T("b")})), 0);
  Rename(set, 5, _T("b"));
  EXPECT_EQ(set.RemoveDialog(5), 0);
  EXPECT_EQ(set.GetDialog(_T("a")), 5);
  EXPECT_EQ(set.GetDialog(_T("b")), 0);
  EXPECT_EQ(set.GetDialogs(), Cookies{6});
}

}  // namespace
}  // namespace ondrel::test
