// Moving a node down among its siblings: it exchanges cookies with the next one.

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

void AddDialog(CMMCObjectSet& set, __int64 cookie, LPCWSTR name) {
  ASSERT_EQ(set.AddDialog(cookie, MakeRecord({.cookie = cookie, .name = name, .type = CMMCObjectParams::eDialog})), 0);
}
TEST(NodeTreeMoving, KeepsTheCookiesAndExchangesTheRecordsWithTheirSubtrees) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("parent"));
  AddNamed(set, 1, 10, _T("moved"));
  AddNamed(set, 1, 20, _T("next"));
  AddNamed(set, 1, 30, _T("last"));
  AddNamed(set, 10, 11, _T("child of moved"));
  AddNamed(set, 11, 12, _T("grandchild of moved"));
  AddNamed(set, 20, 21, _T("child of next"));
  AddNamed(set, 20, 22, _T("child of next, too"));

  EXPECT_EQ(set.MoveNodeDown(10), 0);

  EXPECT_TRUE(set.IsModified());
  EXPECT_EQ(set.GetChildNodes(1), (Cookies{10, 20, 30}));
  EXPECT_TRUE(HasRecord(set, 10, {.cookie = 10, .name = _T("next")}));
  EXPECT_TRUE(HasRecord(set, 20, {.cookie = 20, .name = _T("moved")}));
  EXPECT_TRUE(HasRecord(set, 30, {.cookie = 30, .name = _T("last")}));
  EXPECT_EQ(set.GetChildNodes(10), (Cookies{21, 22}));
  EXPECT_EQ(set.GetChildNodes(20), Cookies{11});
  EXPECT_EQ(set.GetChildNodes(11), Cookies{12});
  EXPECT_EQ(NameOf(set, 12), CString(_T("grandchild of moved")));
}

TEST(NodeTreeMoving, CarriesEveryFieldAlong) {
  CMMCObjectSet set(LeaveToSet);
  RecordFields first = FullRecord(CMMCObjectParams::eHTML);
  RecordFields second = FullRecord(CMMCObjectParams::eDialog);
  second.cookie = 13;
  second.name = _T("second");
  second.scripts = {1};
  ASSERT_EQ(set.AddNode(-1, 12, MakeRecord(first)), 0);
  ASSERT_EQ(set.AddNode(-1, 13, MakeRecord(second)), 0);
  EXPECT_EQ(set.MoveNodeDown(12), 0);
  first.cookie = 13;
  second.cookie = 12;
  EXPECT_TRUE(HasRecord(set, 13, first));
  EXPECT_TRUE(HasRecord(set, 12, second));
}

TEST(NodeTreeMoving, TheLastAndTheOnlyChildChangesNothing) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("only"));
  AddNamed(set, 1, 2, _T("first"));
  AddNamed(set, 1, 3, _T("last"));
  AddNamed(set, 2, 4, _T("cousin"));
  const std::string before = DescribeObjects(set);
  for (const bool modified : {false, true}) {
    CMMCObjectSetProbe::SetModifiedFlag(set, modified);
    for (const __int64 cookie : {1, 3, 4}) {
      EXPECT_EQ(set.MoveNodeDown(cookie), 0) << cookie;
      EXPECT_EQ(DescribeObjects(set), before) << cookie;
      EXPECT_EQ(set.IsModified(), modified) << cookie;
    }
  }
}

TEST(NodeTreeMoving, OfALastChildKeepsRecordsWhereTheyAre) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("only"));
  CMMCObjectParams* before = nullptr;
  CMMCObjectParams* after = nullptr;
  ASSERT_TRUE(set.GetParams(1, before));
  EXPECT_EQ(set.MoveNodeDown(1), 0);
  ASSERT_TRUE(set.GetParams(1, after));
  EXPECT_EQ(after, before);
}

TEST(NodeTreeMoving, OfAnUnknownCookieIsNotFound) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("a"));
  const std::string before = DescribeObjects(set);
  EXPECT_EQ(set.MoveNodeDown(2), kNotFound);
  EXPECT_EQ(set.MoveNodeDown(CMMCObjectSet::RootNode), kNotFound);
  EXPECT_EQ(DescribeObjects(set), before);
  EXPECT_FALSE(set.IsModified());
}

TEST(NodeTreeMoving, OfADialogIsNotFound) {
  CMMCObjectSet set(LeaveToSet);
  AddDialog(set, 5, _T("a"));
  AddDialog(set, 6, _T("b"));
  AddNamed(set, 0, 7, _T("a node under cookie 0"));
  const std::string before = DescribeObjects(set);
  EXPECT_EQ(set.MoveNodeDown(5), kNotFound);
  EXPECT_EQ(DescribeObjects(set), before);
  EXPECT_FALSE(set.IsModified());
}

TEST(NodeTreeMoving, MovesDownWhileItIsCalledWithTheNewCookie) {
  CMMCObjectSet set(LeaveToSet);
  for (const __int64 cookie : {1, 2, 3})
    AddNamed(set, -1, cookie, cookie == 1 ? _T("a") : cookie == 2 ? _T("b") : _T("c"));
  EXPECT_EQ(set.MoveNodeDown(1), 0);
  EXPECT_EQ(set.MoveNodeDown(2), 0);
  EXPECT_EQ(NameOf(set, 1), CString(_T("b")));
  EXPECT_EQ(NameOf(set, 2), CString(_T("c")));
  EXPECT_EQ(NameOf(set, 3), CString(_T("a")));
}

TEST(NodeTreeMoving, ReachesSiblingsWithNegativeCookies) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, 4, -5, _T("not listed"));
  AddNamed(set, 4, 6, _T("listed"));
  EXPECT_EQ(set.MoveNodeDown(-5), 0);
  EXPECT_EQ(NameOf(set, -5), CString(_T("listed")));
  EXPECT_EQ(NameOf(set, 6), CString(_T("not listed")));
}

TEST(NodeTreeMoving, KeepsANodeBelowItsOwnParentWhenSiblingsAreNested) {
  // The next sibling's child is filed under the cookie that now is the moved node's, and follows to the other.
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, 2, 2, _T("its own parent"));
  AddNamed(set, 2, 3, _T("sibling"));
  EXPECT_EQ(set.MoveNodeDown(2), 0);
  EXPECT_EQ(DescribeObjects(set),
            "node (3, 2): " + Describe(RecordFields{.cookie = 2, .name = _T("sibling")}) + "\n" +
                "node (3, 3): " + Describe(RecordFields{.cookie = 3, .name = _T("its own parent")}) +
                "\n"
                "object 2: node (3, 2)\n"
                "object 3: node (3, 3)\n");
}

TEST(NodeTreeMoving, FilesEveryNodeAnewUnderItsRecordsCookie) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("moved"));
  AddNamed(set, -1, 2, _T("next"));
  AddNamed(set, 2, 3, _T("child"));
  AddNamed(set, 3, 4, _T("grandchild"));
  const CMMCObjectParams renumbered = MakeRecord({.cookie = 30, .name = _T("renumbered")});
  set.SetParams(3, &renumbered);
  const CMMCObjectParams first = MakeRecord({.cookie = 99, .name = _T("moved")});
  set.SetParams(1, &first);
  EXPECT_EQ(set.MoveNodeDown(1), 0);
  EXPECT_EQ(DescribeObjects(set),
            "node (-1, 1): " + Describe(RecordFields{.cookie = 1, .name = _T("next")}) + "\n" +             //
                "node (-1, 2): " + Describe(RecordFields{.cookie = 2, .name = _T("moved")}) + "\n" +        //
                "node (1, 30): " + Describe(RecordFields{.cookie = 30, .name = _T("renumbered")}) + "\n" +  //
                "node (3, 4): " + Describe(RecordFields{.cookie = 4, .name = _T("grandchild")}) + "\n" +
                "object 1: node (-1, 1)\n"
                "object 2: node (-1, 2)\n"
                "object 4: node (3, 4)\n"
                "object 30: node (1, 30)\n");
}

TEST(NodeTreeMoving, RebuildsTheDialogNamesFromTheCurrentNames) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("a"));
  AddNamed(set, -1, 2, _T("b"));
  AddDialog(set, 5, _T("old"));
  AddDialog(set, 6, _T("removed"));
  const CMMCObjectParams renamed = MakeRecord({.cookie = 5, .name = _T("new")});
  set.SetParams(5, &renamed);
  const CMMCObjectParams renumbered = MakeRecord({.cookie = 60, .name = _T("renumbered")});
  set.SetParams(6, &renumbered);
  EXPECT_EQ(set.MoveNodeDown(1), 0);
  EXPECT_EQ(set.GetDialog(_T("old")), 0);
  EXPECT_EQ(set.GetDialog(_T("new")), 5);
  EXPECT_EQ(set.GetDialog(_T("removed")), 0);
  EXPECT_EQ(set.GetDialog(_T("renumbered")), 60);
  EXPECT_EQ(set.GetDialogs(), (Cookies{5, 60}));
  EXPECT_TRUE(HasRecord(set, 60, {.cookie = 60, .name = _T("renumbered")}));
}

TEST(NodeTreeMoving, LeavesIconAndCodeFilesAlone) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("a"));
  AddNamed(set, -1, 2, _T("b"));
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("a.js"), 1, Unchanged), 0);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, 2, {'x'}), 0);
  ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(set, 3, CMMCObjectIcon()), 0);
  EXPECT_EQ(set.MoveNodeDown(1), 0);
  EXPECT_EQ(set.GetCodeFiles(), (Cookies{1, 2}));
  EXPECT_EQ(set.GetIconFiles(), Cookies{3});
}

/// A move that must fail with 0x800700B7 and leave the set exactly as it was, the flag and the records' places too.
void ExpectRefusedMove(CMMCObjectSet& set, __int64 cookie) {
  const std::string before = DescribeObjects(set);
  CMMCObjectParams* recordBefore = nullptr;
  ASSERT_TRUE(set.GetParams(cookie, recordBefore));
  for (const bool modified : {false, true}) {
    CMMCObjectSetProbe::SetModifiedFlag(set, modified);
    EXPECT_EQ(set.MoveNodeDown(cookie), kAlreadyExists);
    EXPECT_EQ(DescribeObjects(set), before);
    EXPECT_EQ(set.IsModified(), modified);
    CMMCObjectParams* recordAfter = nullptr;
    ASSERT_TRUE(set.GetParams(cookie, recordAfter));
    EXPECT_EQ(recordAfter, recordBefore);
  }
}

TEST(NodeTreeMovingRefused, WhenTwoDialogsHaveOneNameByNow) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("a"));
  AddNamed(set, -1, 2, _T("b"));
  AddNamed(set, 2, 3, _T("c"));
  AddDialog(set, 5, _T("x"));
  AddDialog(set, 6, _T("y"));
  const CMMCObjectParams renamed = MakeRecord({.cookie = 6, .name = _T("x")});
  set.SetParams(6, &renamed);
  ExpectRefusedMove(set, 1);
  EXPECT_EQ(set.GetDialog(_T("y")), 6);
}

TEST(NodeTreeMovingRefused, WhenTwoNodesHaveOneCookieByNow) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("a"));
  AddNamed(set, -1, 2, _T("b"));
  AddNamed(set, 2, 3, _T("c"));
  AddNamed(set, 2, 4, _T("d"));
  const CMMCObjectParams renumbered = MakeRecord({.cookie = 3, .name = _T("d")});
  set.SetParams(4, &renumbered);
  ExpectRefusedMove(set, 1);
}

TEST(NodeTreeMovingRefused, WhenADialogHasANodesCookieByNow) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("a"));
  AddNamed(set, -1, 2, _T("b"));
  AddDialog(set, 5, _T("x"));
  const CMMCObjectParams renumbered = MakeRecord({.cookie = 2, .name = _T("x")});
  set.SetParams(5, &renumbered);
  ExpectRefusedMove(set, 1);
}

TEST(NodeTreeMovingRefused, WhenTwoDialogsHaveOneCookieByNow) {
  CMMCObjectSet set(LeaveToSet);
  AddNamed(set, -1, 1, _T("a"));
  AddNamed(set, -1, 2, _T("b"));
  AddDialog(set, 5, _T("x"));
  AddDialog(set, 6, _T("y"));
  const CMMCObjectParams renumbered = MakeRecord({.cookie = 5, .name = _T("y")});
  set.SetParams(6, &renumbered);
  ExpectRefusedMove(set, 1);
}

}  // namespace
}  // namespace ondrel::test
