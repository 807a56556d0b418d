// Memory that runs short while nodes and dialogs are edited and listed: the set is as it was, and so is its flag.

#include <gtest/gtest.h>

#include <functional>

#include "faults/allocation_sweep.h"
#include "faults/definition.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

using Probe = CMMCObjectSetProbe;

class EditsMemory : public testing::Test {
 protected:
  /// An operation on a set that is not modified yet, so that setting the flag too early shows.
  void Sweep(const char* name, const std::function<HRESULT(CMMCObjectSet&)>& run) {
    FailEachAllocation({.name = name,
                        .make =
                            [this] {
                              auto set = m_definition.Make();
                              Probe::SetModifiedFlag(*set, 0);
                              return set;
                            },
                        .run = run});
  }

  static HRESULT StatusOf(__int64 newCookie, __int64 expected) { return newCookie == expected ? S_OK : E_UNEXPECTED; }

  const Definition m_definition;
  const CString m_longName{_T('n'), 100};
};

TEST_F(EditsMemory, RunningShortWhileANodeIsAddedLeavesTheSetAsItWas) {
  Sweep("AddNewNode", [&](CMMCObjectSet& set) {
    return StatusOf(set.AddNewNode(kSecondChild, m_longName, CMMCObjectParams::eHTML), 22);
  });
  const CMMCObjectParams record = MakeRecord({.cookie = 70, .name = m_longName, .scripts = {1, 2}});
  Sweep("AddNode", [&](CMMCObjectSet& set) { return set.AddNode(kTopNode, 70, record); });
}

TEST_F(EditsMemory, RunningShortWhileADialogIsAddedLeavesTheSetAsItWas) {
  Sweep("AddNewDialog", [&](CMMCObjectSet& set) { return StatusOf(set.AddNewDialog(m_longName + _T("2")), 22); });
  const CMMCObjectParams record = MakeRecord({.cookie = 70, .name = m_longName, .scripts = {1, 2}});
  Sweep("AddDialog", [&](CMMCObjectSet& set) { return set.AddDialog(70, record); });
}

TEST_F(EditsMemory, RunningShortWhileANodeIsMovedLeavesTheSetAsItWas) {
  // Records that all have their cookies and names are moved without any; a set in doubt about them takes it.
  Sweep("MoveNodeDown", [](CMMCObjectSet& set) {
    Probe::DoubtCookies(set);
    return set.MoveNodeDown(kFirstChild);
  });
}

TEST_F(EditsMemory, RunningShortWhileTheRemovalOfANodeIsRefusedLeavesTheSetAsItWas) {
  // Looking for children takes memory only where there are some, so a removal that succeeds takes none.
  Sweep("RemoveNode", [](CMMCObjectSet& set) { return set.RemoveNode(kTopNode) == kNotEmpty ? S_OK : E_UNEXPECTED; });
}

TEST_F(EditsMemory, RunningShortWhileARecordIsReplacedLeavesTheSetAsItWas) {
  const CMMCObjectParams record = MakeRecord({.cookie = 70,
                                              .name = m_longName,
                                              .icon = 71,
                                              .type = CMMCObjectParams::eDialog,
                                              .childQueries = {{m_longName, 1}},
                                              .styleSheet = 72,
                                              .menuScript = 73,
                                              .scripts = {1, 2},
                                              .renderQueries = {{m_longName, 1}}});
  Sweep("SetParams", [&](CMMCObjectSet& set) {
    set.SetParams(kFirstChild, &record);
    return S_OK;
  });
}

TEST_F(EditsMemory, RunningShortWhileADialogIsRemovedLeavesTheSetAsItWas) {
  Sweep("RemoveDialog", [](CMMCObjectSet& set) { return set.RemoveDialog(21); });
}

TEST_F(EditsMemory, RunningShortWhileListsAreMadeLeavesTheSetAsItWas) {
  Sweep("GetChildNodes",
        [](CMMCObjectSet& set) { return set.GetChildNodes(kTopNode).size() == 2 ? S_OK : E_UNEXPECTED; });
  Sweep("GetDialogs", [](CMMCObjectSet& set) { return set.GetDialogs().size() == 2 ? S_OK : E_UNEXPECTED; });
  Sweep("GetIconFiles", [](CMMCObjectSet& set) { return set.GetIconFiles().size() == 3 ? S_OK : E_UNEXPECTED; });
  Sweep("GetCodeFiles", [](CMMCObjectSet& set) { return set.GetCodeFiles().size() == 4 ? S_OK : E_UNEXPECTED; });
}

}  // namespace
}  // namespace ondrel::test
