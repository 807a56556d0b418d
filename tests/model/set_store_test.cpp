// A set as it is made and emptied, and the records that it hands out and takes back.

#include <gtest/gtest.h>

#include <list>
#include <type_traits>

#include "support/failing_lock.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

using Probe = CMMCObjectSetProbe;
using Cookies = std::list<__int64>;

TEST(Set, IsEmptyAndUnmodifiedWhenItIsMade) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_FALSE(set.IsModified());
  EXPECT_EQ(set.GetChildNodes(CMMCObjectSet::RootNode), Cookies());
  EXPECT_EQ(set.GetDialogs(), Cookies());
  EXPECT_EQ(set.GetIconFiles(), Cookies());
  EXPECT_EQ(set.GetCodeFiles(), Cookies());
  EXPECT_EQ(DescribeObjects(set), "");
  EXPECT_FALSE(set.IsModified()) << "looking changes nothing";
}

TEST(Set, HasItsConstants) {
  EXPECT_EQ(CMMCObjectSet::RootNode, -1);
  EXPECT_EQ(CMMCObjectSet::m_nCurrentVersion, 1U);
  static_assert(std::has_virtual_destructor_v<CMMCObjectSet>);
}

TEST(Set, CannotBeMadeWithoutItsLock) {
  const auto raised = Raised<COleException>([] {
    const FailingLock failing;
    const CMMCObjectSet set(LeaveToSet);
  });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_sc, static_cast<HRESULT>(0x80070008)) << "the system's reason: not enough memory";
  EXPECT_FALSE(CMMCObjectSet(LeaveToSet).IsModified()) << "and can be made again";
}

TEST(SetRecords, ThereIsNoneForTheRoot) {
  CMMCObjectSet set(LeaveToSet);
  set.AddNewNode(CMMCObjectSet::RootNode, _T("top"), CMMCObjectParams::eList);
  CMMCObjectParams untouched;
  CMMCObjectParams* params = &untouched;
  EXPECT_FALSE(set.GetParams(CMMCObjectSet::RootNode, params));
  EXPECT_EQ(params, &untouched) << "a miss leaves the argument as it is";
}

TEST(SetRecords, AreHandedOutLive) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewNode(CMMCObjectSet::RootNode, _T("top"), CMMCObjectParams::eHTML), 0);
  ASSERT_EQ(set.AddNewDialog(_T("Settings")), 1);
  CMMCObjectParams* node = nullptr;
  CMMCObjectParams* dialog = nullptr;
  ASSERT_TRUE(set.GetParams(0, node));
  ASSERT_TRUE(set.GetParams(1, dialog));
  EXPECT_TRUE(SameRecord(*node, {.cookie = 0, .name = _T("top"), .type = CMMCObjectParams::eHTML}));
  EXPECT_TRUE(SameRecord(*dialog, {.cookie = 1, .name = _T("Settings"), .type = CMMCObjectParams::eDialog}));
  node->SetIcon(7);
  CMMCObjectParams* again = nullptr;
  ASSERT_TRUE(set.GetParams(0, again));
  EXPECT_EQ(again, node);
  EXPECT_EQ(again->GetIcon(), 7);
}

TEST(SetRecords, StayWhereTheyAreWhileOthersComeAndGo) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewNode(-1, _T("kept"), CMMCObjectParams::eList), 0);
  CMMCObjectParams* kept = nullptr;
  ASSERT_TRUE(set.GetParams(0, kept));
  for (int round = 0; round < 100; ++round) set.AddNewNode(0, _T("other"), CMMCObjectParams::eList);
  for (__int64 cookie = 1; cookie <= 50; ++cookie) ASSERT_EQ(set.RemoveNode(cookie), 0);
  CMMCObjectParams* again = nullptr;
  ASSERT_TRUE(set.GetParams(0, again));
  EXPECT_EQ(again, kept);
  EXPECT_EQ(kept->GetName(), CString(_T("kept")));
}

TEST(SetRecords, AreReplacedAsAWhole) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(-1, 12, MakeRecord({.cookie = 12, .name = _T("old"), .scripts = {1, 2, 3}})), 0);
  CMMCObjectParams* before = nullptr;
  ASSERT_TRUE(set.GetParams(12, before));
  const CMMCObjectParams record = MakeRecord(FullRecord(CMMCObjectParams::eDialog));
  set.SetParams(12, &record);
  EXPECT_TRUE(HasRecord(set, 12, FullRecord(CMMCObjectParams::eDialog)));
  EXPECT_TRUE(SameRecord(record, FullRecord(CMMCObjectParams::eDialog))) << "the argument is copied";
  EXPECT_TRUE(set.IsModified());
  CMMCObjectParams* after = nullptr;
  ASSERT_TRUE(set.GetParams(12, after));
  EXPECT_EQ(after, before) << "the record is assigned to";
}

TEST(SetRecords, OfUnknownCookiesAreNotTakenAndLeaveTheSetUnmodified) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(-1, 5, MakeRecord({.cookie = 5})), 0);
  const std::string before = DescribeObjects(set);
  const CMMCObjectParams record = MakeRecord({.cookie = 6, .name = _T("new")});
  set.SetParams(6, &record);
  set.SetParams(CMMCObjectSet::RootNode, &record);
  EXPECT_FALSE(set.IsModified());
  EXPECT_EQ(DescribeObjects(set), before);
}

TEST(SetRecords, OfAnotherCookieAndNameAreTakenUnderTheOldKeys) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(3, 5, MakeRecord({.cookie = 5, .name = _T("node")})), 0);
  ASSERT_EQ(set.AddDialog(6, MakeRecord({.cookie = 6, .name = _T("dialog")})), 0);
  const CMMCObjectParams record = MakeRecord({.cookie = 77, .name = _T("renamed")});
  set.SetParams(5, &record);
  set.SetParams(6, &record);
  EXPECT_EQ(DescribeObjects(set),
            "node (3, 5): " + Describe(FieldsOf(record)) + "\n" +        //
                "dialog (0, 6): " + Describe(FieldsOf(record)) + "\n" +  //
                "dialog name \"dialog\": 6\n"
                "object 5: node (3, 5)\n"
                "object 6: dialog (0, 6)\n");
  CMMCObjectParams* params = nullptr;
  EXPECT_FALSE(set.GetParams(77, params));
  EXPECT_EQ(set.GetChildNodes(3), Cookies{5});
  EXPECT_EQ(set.GetDialogs(), Cookies{6});
}

TEST(SetModifiedFlag, FollowsAnyNumberButZero) {
  CMMCObjectSet set(LeaveToSet);
  for (const int modified : {1, 0, -1, 0, 256, 0x10000}) {
    Probe::SetModifiedFlag(set, modified);
    EXPECT_EQ(set.IsModified(), modified != 0) << modified;
  }
}

TEST(SetModifiedFlag, IsSetByEachEditThatSucceeds) {
  const auto changed = [](const char* edit, auto prepare, auto change) {
    CMMCObjectSet set(LeaveToSet);
    prepare(set);
    Probe::SetModifiedFlag(set, 0);
    change(set);
    EXPECT_TRUE(set.IsModified()) << edit;
  };
  const auto nothing = [](CMMCObjectSet&) {};
  const auto twoNodes = [](CMMCObjectSet& set) {
    set.AddNewNode(-1, _T("a"), CMMCObjectParams::eList);
    set.AddNewNode(-1, _T("b"), CMMCObjectParams::eList);
  };
  const auto aDialog = [](CMMCObjectSet& set) { set.AddNewDialog(_T("d")); };
  changed("AddNewNode", nothing, [](auto& set) { EXPECT_EQ(set.AddNewNode(-1, _T("a"), CMMCObjectParams::eList), 0); });
  changed("AddNewDialog", nothing, [](auto& set) { EXPECT_EQ(set.AddNewDialog(_T("a")), 0); });
  changed("SetParams", twoNodes, [](auto& set) {
    const CMMCObjectParams same = RecordOf(set, 0);
    set.SetParams(0, &same);
  });
  changed("RemoveNode", twoNodes, [](auto& set) { EXPECT_EQ(set.RemoveNode(1), 0); });
  changed("MoveNodeDown", twoNodes, [](auto& set) { EXPECT_EQ(set.MoveNodeDown(0), 0); });
  changed("RemoveDialog", aDialog, [](auto& set) { EXPECT_EQ(set.RemoveDialog(0), 0); });
  changed("AddCodeFile", nothing, [](auto& set) {
    __int64 cookie = 0;
    EXPECT_EQ(set.AddCodeFile(_T("a.js"), Unchanged, cookie), 0);
  });
}

TEST(SetModifiedFlag, StaysAsItIsWhenRecordsAreFiled) {
  for (const bool modified : {false, true}) {
    CMMCObjectSet set(LeaveToSet);
    Probe::SetModifiedFlag(set, modified);
    EXPECT_EQ(set.AddNode(-1, 0, CMMCObjectParams()), 0);
    EXPECT_EQ(set.AddDialog(1, MakeRecord({.cookie = 1})), 0);
    EXPECT_EQ(Probe::InsertCodeFile(set, _T("a.js"), 5, Unchanged), 0);
    EXPECT_EQ(Probe::InsertCodeFile(set, 6, {'x'}), 0);
    EXPECT_EQ(Probe::InsertIconFile(set, 7, CMMCObjectIcon()), 0);
    EXPECT_EQ(set.IsModified(), modified);
  }
}

TEST(SetInitialise, EmptiesEveryStoreAndClearsTheFlag) {
  CMMCObjectSet set(LeaveToSet);
  set.AddNewNode(-1, _T("node"), CMMCObjectParams::eList);
  set.AddNewDialog(_T("dialog"));
  ASSERT_EQ(Probe::InsertCodeFile(set, _T("a.js"), 5, Unchanged), 0);
  ASSERT_EQ(Probe::InsertCodeFile(set, 6, {'x'}), 0);
  ASSERT_EQ(Probe::InsertIconFile(set, 7, CMMCObjectIcon()), 0);
  ASSERT_TRUE(set.IsModified());

  Probe::Initialise(set);

  EXPECT_FALSE(set.IsModified());
  EXPECT_EQ(DescribeObjects(set), "");
  EXPECT_EQ(set.GetIconFiles(), Cookies());
  EXPECT_EQ(set.GetCodeFiles(), Cookies());
  CString path;
  EXPECT_FALSE(set.GetFilePath(5, path));
  std::vector<char> contents;
  EXPECT_FALSE(set.GetCodeFileContents(6, contents));
  const auto& tables = Probe::Tables(set);
  EXPECT_TRUE(tables.iconPaths.empty() && tables.iconCookiePaths.empty() && tables.icons.empty());
  EXPECT_TRUE(tables.codePaths.empty() && tables.codeCookiePaths.empty() && tables.codeContents.empty());
}

TEST(SetInitialise, KeepsTheImageIndices) {
  CMMCObjectSet set(LeaveToSet);
  Probe::ImageIndices(set) = {{7, 3}, {8, 4}};
  Probe::Initialise(set);
  int image = -1;
  EXPECT_TRUE(set.GetIconFileImage(7, image));
  EXPECT_EQ(image, 3);
  EXPECT_TRUE(set.GetIconFileImage(8, image));
  EXPECT_EQ(image, 4);
}

TEST(SetInitialise, LeavesASetThatStartsAgainAtCookieZero) {
  CMMCObjectSet set(LeaveToSet);
  for (int round = 0; round < 3; ++round) set.AddNewNode(-1, _T("old"), CMMCObjectParams::eList);
  Probe::Initialise(set);
  EXPECT_EQ(set.AddNewNode(-1, _T("new"), CMMCObjectParams::eList), 0);
  EXPECT_EQ(set.AddNewDialog(_T("dialog")), 1);
}

}  // namespace
}  // namespace ondrel::test
