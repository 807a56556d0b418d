// The two ways of moving a node down: the short one where every record has the cookie and the name that it is filed
// under, the long one, which adds everything anew, where one may not.

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>
#include <utility>

#include "support/archive_bytes.h"
#include "support/failing_allocation.h"
#include "support/model/documents.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

using Probe = CMMCObjectSetProbe;

CMMCObjectParams RecordNamed(__int64 cookie, LPCWSTR name) { return MakeRecord({.cookie = cookie, .name = name}); }

std::string ArchiveOf(const CMMCObjectParams& record) {
  return Stored([&](CVellum& archive) { record.Serialize(archive); });
}

/// Nodes 1, 2 (siblings with children 11 and 21) and 3, dialogs 5 and 6, all fitting.
class NodeTreeMovingWays : public testing::Test {
 protected:
  void SetUp() override {
    AddNamed(m_set, -1, 1, _T("first"));
    AddNamed(m_set, -1, 2, _T("second"));
    AddNamed(m_set, -1, 3, _T("third"));
    AddNamed(m_set, 1, 11, _T("child of first"));
    AddNamed(m_set, 2, 21, _T("child of second"));
    ASSERT_EQ(m_set.AddDialog(5, RecordNamed(5, _T("five"))), S_OK);
    ASSERT_EQ(m_set.AddDialog(6, RecordNamed(6, _T("six"))), S_OK);
  }

  CMMCObjectParams& Record(__int64 cookie) {
    CMMCObjectParams* record = nullptr;
    EXPECT_TRUE(m_set.GetParams(cookie, record)) << cookie;
    return *record;
  }

  void Replace(__int64 cookie, const CMMCObjectParams& record) { m_set.SetParams(cookie, &record); }

  /// Whether a move takes no memory, as the short way alone does. A move that fails changes nothing.
  bool MovesInPlace() {
    const FailingAllocation failing(0);
    try {
      return m_set.MoveNodeDown(1) == S_OK && !failing.HasFailed();
    } catch (const std::bad_alloc&) {
      return false;
    }
  }

  CMMCObjectSet m_set{LeaveToSet};
};

TEST_F(NodeTreeMovingWays, ASetWhoseRecordsFitIsChangedInPlace) {
  const CMMCObjectParams* const first = &Record(1);
  const CMMCObjectParams* const second = &Record(2);
  const CMMCObjectParams* const child = &Record(11);
  const CMMCObjectParams* const dialog = &Record(5);
  EXPECT_TRUE(MovesInPlace());
  EXPECT_EQ(&Record(2), first);
  EXPECT_EQ(&Record(1), second);
  EXPECT_EQ(&Record(11), child);
  EXPECT_EQ(&Record(5), dialog);
  EXPECT_EQ(DescribeObjects(m_set),
            "node (-1, 1): " + Describe(RecordFields{.cookie = 1, .name = _T("second")}) + "\n" +     //
                "node (-1, 2): " + Describe(RecordFields{.cookie = 2, .name = _T("first")}) + "\n" +  //
                "node (-1, 3): " + Describe(RecordFields{.cookie = 3, .name = _T("third")}) + "\n" +  //
                "node (1, 21): " + Describe(RecordFields{.cookie = 21, .name = _T("child of second")}) +
                "\n"  //
                "node (2, 11): " +
                Describe(RecordFields{.cookie = 11, .name = _T("child of first")}) + "\n" +           //
                "dialog (0, 5): " + Describe(RecordFields{.cookie = 5, .name = _T("five")}) + "\n" +  //
                "dialog (0, 6): " + Describe(RecordFields{.cookie = 6, .name = _T("six")}) + "\n" +   //
                "dialog name \"five\": 5\n"
                "dialog name \"six\": 6\n"
                "object 1: node (-1, 1)\n"
                "object 2: node (-1, 2)\n"
                "object 3: node (-1, 3)\n"
                "object 5: dialog (0, 5)\n"
                "object 6: dialog (0, 6)\n"
                "object 11: node (2, 11)\n"
                "object 21: node (1, 21)\n");
  EXPECT_TRUE(MovesInPlace()) << "it fits afterwards, too";
}

TEST_F(NodeTreeMovingWays, ChangesThatLeaveCookiesAndDialogNamesAloneKeepTheShortWay) {
  const std::pair<const char*, std::function<void()>> changes[] = {
      {"another name of a node", [&] { Replace(3, RecordNamed(3, _T("other"))); }},
      {"another name in place", [&] { Record(3).SetName(_T("third time")); }},
      {"an assignment of the same cookie", [&] { Record(3) = RecordNamed(3, _T("assigned")); }},
      {"a load of the same cookie",
       [&] {
         LoadingArchive archive(ArchiveOf(RecordNamed(3, _T("loaded"))));
         Record(3).Deserialize(*archive);
       }},
      {"another type of a dialog",
       [&] { Replace(5, MakeRecord({.cookie = 5, .name = _T("five"), .type = CMMCObjectParams::eHTML})); }},
      {"a dialog that is renamed and gets its name back",
       [&] {
         Record(5).SetName(_T("other"));
         Record(5).SetName(_T("five"));
       }},
      {"a new dialog", [&] { m_set.AddNewDialog(_T("new")); }},
      {"a removed dialog", [&] { m_set.RemoveDialog(6); }},
      {"a new node", [&] { m_set.AddNewNode(3, _T("new"), CMMCObjectParams::eList); }},
      {"a removed node", [&] { m_set.RemoveNode(11); }},
      {"a changed copy",
       [&] {
         CMMCObjectParams copy(Record(3));
         copy = RecordNamed(90, _T("copy"));
       }},
      {"a changed record that was moved out",
       [&] {
         CMMCObjectParams taken(std::move(Record(3)));
         taken = RecordNamed(90, _T("taken"));
       }},
  };
  for (const auto& [what, change] : changes) {
    change();
    EXPECT_TRUE(MovesInPlace()) << what;
  }
}

TEST_F(NodeTreeMovingWays, AChangedCookieTakesTheLongWayOnce) {
  const CComPtr<IXMLDOMDocument> document =
      ParseDocument(R"(<Node Cookie="34" Name="read" Icon="0" Type="List"><MenuScript/></Node>)");
  const std::pair<const char*, std::function<void()>> changes[] = {
      {"SetParams of a node", [&] { Replace(3, RecordNamed(31, _T("31"))); }},
      {"an assignment", [&] { Record(31) = RecordNamed(32, _T("32")); }},
      {"a load from an archive",
       [&] {
         LoadingArchive archive(ArchiveOf(RecordNamed(33, _T("33"))));
         Record(32).Deserialize(*archive);
       }},
      {"a load from an element",
       [&] { EXPECT_EQ(Record(33).Deserialize(CComPtr<IXMLDOMNode>(RootOf(document))), S_OK); }},
      {"SetParams of the node that moves", [&] { Replace(1, RecordNamed(90, _T("moving"))); }},
      {"SetParams of its child", [&] { Replace(11, RecordNamed(12, _T("child"))); }},
      {"SetParams of a dialog", [&] { Replace(5, RecordNamed(50, _T("five"))); }},
      {"a node added under another cookie", [&] { EXPECT_EQ(m_set.AddNode(-1, 7, RecordNamed(70, _T("70"))), S_OK); }},
      {"a dialog added under another cookie", [&] { EXPECT_EQ(m_set.AddDialog(8, RecordNamed(80, _T("80"))), S_OK); }},
      {"a cookie that is changed and comes back",
       [&] {
         Record(34) = RecordNamed(35, _T("35"));
         Record(34) = RecordNamed(34, _T("34"));
       }},
  };
  for (const auto& [what, change] : changes) {
    SCOPED_TRACE(what);
    change();
    EXPECT_FALSE(MovesInPlace());
    const CMMCObjectParams* const before = &Record(21);
    EXPECT_EQ(m_set.MoveNodeDown(1), S_OK);
    EXPECT_NE(&Record(21), before) << "the record was not added anew";
    EXPECT_TRUE(MovesInPlace()) << "all fit once they were added anew";
  }
}

TEST_F(NodeTreeMovingWays, DialogNamesThatDoNotFitTakeTheLongWay) {
  const std::pair<const char*, std::function<void()>> changes[] = {
      {"SetParams", [&] { Replace(5, RecordNamed(5, _T("renamed"))); }},
      {"SetName", [&] { Record(5).SetName(_T("renamed again")); }},
      {"the name of a removed dialog stays",
       [&] {
         Record(6).SetName(_T("gone"));
         EXPECT_EQ(m_set.RemoveDialog(6), S_OK);
       }},
      {"two that exchange their names",
       [&] {
         EXPECT_EQ(m_set.AddDialog(6, RecordNamed(6, _T("six"))), S_OK);
         Record(6).SetName(Record(5).GetName());
         Record(5).SetName(_T("six"));
       }},
      {"a removal takes the name that a renamed one has",
       [&] {
         Record(5).SetName(Record(6).GetName());
         EXPECT_EQ(m_set.RemoveDialog(6), S_OK);
       }},
  };
  for (const auto& [what, change] : changes) {
    SCOPED_TRACE(what);
    change();
    EXPECT_FALSE(MovesInPlace());
    EXPECT_EQ(m_set.MoveNodeDown(1), S_OK);
    EXPECT_TRUE(MovesInPlace()) << "the names fit once the dialogs were added anew";
  }
}

TEST_F(NodeTreeMovingWays, RecordsThatDoNotFitTogetherAreRefusedEachTime) {
  Record(6).SetName(_T("five"));
  EXPECT_EQ(m_set.MoveNodeDown(1), kAlreadyExists);
  EXPECT_EQ(m_set.MoveNodeDown(1), kAlreadyExists);
  Record(6).SetName(_T("six"));
  EXPECT_TRUE(MovesInPlace());
  Replace(3, RecordNamed(2, _T("second")));
  EXPECT_EQ(m_set.MoveNodeDown(1), kAlreadyExists);
  EXPECT_EQ(m_set.MoveNodeDown(1), kAlreadyExists);
}

TEST_F(NodeTreeMovingWays, AnObjectIndexThatMissesANodeTakesTheLongWay) {
  Probe::ForgetObject(m_set, 21);
  EXPECT_FALSE(MovesInPlace());
  EXPECT_EQ(m_set.MoveNodeDown(1), S_OK);
  EXPECT_EQ(NameOf(m_set, 21), CString(_T("child of second")));
}

TEST_F(NodeTreeMovingWays, ALoadThatFailsLeavesTheWayAsItWas) {
  const auto loadInVain = [&] { EXPECT_THROW(LoadProject(m_set, "<Project><Node"), COleException); };
  const auto loadHalf = [&] {
    EXPECT_THROW(LoadProject(m_set, R"(<Project><NodeGroup><Node Cookie="1"/></NodeGroup></Project>)"), COleException);
  };
  loadInVain();
  EXPECT_TRUE(MovesInPlace());
  loadHalf();
  EXPECT_TRUE(MovesInPlace());
  Replace(3, RecordNamed(31, _T("31")));
  loadInVain();
  EXPECT_FALSE(MovesInPlace());
  loadHalf();
  EXPECT_FALSE(MovesInPlace());
}

TEST_F(NodeTreeMovingWays, WhatIsLoadedFits) {
  const std::string project = R"(<Project><NodeGroup>
      <Node Cookie="1" Name="a" Icon="0" Type="List"><MenuScript/></Node>
      <Node Cookie="2" Name="b" Icon="0" Type="List"><MenuScript/></Node>
      </NodeGroup></Project>)";
  Replace(3, RecordNamed(31, _T("31")));
  LoadProject(m_set, project);
  EXPECT_TRUE(MovesInPlace());
  Replace(1, RecordNamed(31, _T("31")));
  Probe::Initialise(m_set);
  AddNamed(m_set, -1, 1, _T("a"));
  AddNamed(m_set, -1, 2, _T("b"));
  EXPECT_TRUE(MovesInPlace());
}

}  // namespace
}  // namespace ondrel::test
