// The set's lock: which operations wait for it, and that it is free whatever leaves an operation.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <new>
#include <string>
#include <thread>

#include "support/failing_allocation.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

using Probe = CMMCObjectSetProbe;
using std::chrono::milliseconds;

struct Operation {
  const char* name;
  std::function<void(CMMCObjectSet&)> run;
};

/// Whether an operation on another thread waits while this thread holds the set's lock.
bool WaitsForTheLock(const std::function<void(CMMCObjectSet&)>& run) {
  CMMCObjectSet set(LeaveToSet);
  set.AddNewNode(-1, _T("a"), CMMCObjectParams::eList);
  set.AddNewNode(-1, _T("b"), CMMCObjectParams::eList);
  std::atomic<bool> started = false;
  std::atomic<bool> ended = false;
  CSingleLock lock(&Probe::Lock(set), TRUE);
  std::thread other([&] {
    started = true;
    run(set);
    ended = true;
  });
  while (!started) std::this_thread::yield();
  // An operation without the lock ends long before; one that waits never does.
  std::this_thread::sleep_for(milliseconds(20));
  const bool waited = !ended;
  lock.Unlock();
  other.join();
  return waited;
}

TEST(SetLock, IsTakenByEveryOperationOnTheStores) {
  static const CMMCObjectParams record = MakeRecord({.cookie = 7, .name = _T("r")});
  const Operation operations[] = {
      {"GetParams",
       [](auto& set) {
         CMMCObjectParams* params = nullptr;
         set.GetParams(0, params);
       }},
      {"SetParams", [](auto& set) { set.SetParams(0, &record); }},
      {"GetChildNodes", [](auto& set) { set.GetChildNodes(-1); }},
      {"AddNewNode", [](auto& set) { set.AddNewNode(-1, _T("n"), CMMCObjectParams::eList); }},
      {"AddNode", [](auto& set) { set.AddNode(-1, 7, record); }},
      {"RemoveNode", [](auto& set) { set.RemoveNode(0); }},
      {"MoveNodeDown", [](auto& set) { set.MoveNodeDown(0); }},
      {"GetDialogs", [](auto& set) { set.GetDialogs(); }},
      {"GetDialog", [](auto& set) { set.GetDialog(_T("d")); }},
      {"AddNewDialog", [](auto& set) { set.AddNewDialog(_T("d")); }},
      {"AddDialog", [](auto& set) { set.AddDialog(7, record); }},
      {"RemoveDialog", [](auto& set) { set.RemoveDialog(7); }},
      {"GenerateFileCookie", [](auto& set) { Probe::GenerateFileCookie(set); }},
      {"AddCodeFile",
       [](auto& set) {
         __int64 cookie = 0;
         set.AddCodeFile(_T("a.js"), Unchanged, cookie);
       }},
      {"InsertCodeFile in memory", [](auto& set) { Probe::InsertCodeFile(set, 5, {'x'}); }},
      {"InsertIconFile in memory", [](auto& set) { Probe::InsertIconFile(set, 5, CMMCObjectIcon()); }},
      {"GetCodeFiles", [](auto& set) { set.GetCodeFiles(); }},
      {"GetCodeFileContents",
       [](auto& set) {
         std::vector<char> contents;
         set.GetCodeFileContents(5, contents);
       }},
      {"GetFilePath",
       [](auto& set) {
         CString path;
         set.GetFilePath(5, path);
       }},
      {"GetIconFiles", [](auto& set) { set.GetIconFiles(); }},
      {"GetIconFile",
       [](auto& set) {
         const CMMCObjectIcon* icon = nullptr;
         set.GetIconFile(5, &icon);
       }},
      {"GetIconFileImage",
       [](auto& set) {
         int image = 0;
         set.GetIconFileImage(5, image);
       }},
  };
  for (const Operation& operation : operations) EXPECT_TRUE(WaitsForTheLock(operation.run)) << operation.name;
}

TEST(SetLock, IsNotTakenWhereItsCallersHoldIt) {
  const Operation operations[] = {
      {"IsModified", [](auto& set) { set.IsModified(); }},
      {"SetModifiedFlag", [](auto& set) { Probe::SetModifiedFlag(set, 1); }},
      {"InsertCodeFile by path", [](auto& set) { Probe::InsertCodeFile(set, _T("a.js"), 5, Unchanged); }},
  };
  for (const Operation& operation : operations) {
    CMMCObjectSet set(LeaveToSet);
    CSingleLock lock(&Probe::Lock(set), TRUE);
    // Would not return if it took the lock: the test runs into its time limit then.
    std::thread([&] { operation.run(set); }).join();
  }
  CMMCObjectSet set(LeaveToSet);
  CSingleLock lock(&Probe::Lock(set), TRUE);
  std::thread([&] { Probe::Initialise(set); }).join();
}

/// Runs an operation with its first, second, ... allocation failing, up to the run that needs no more. After each
/// failure the objects and the flag must be as before, and another thread must get the lock.
void FailEachAllocation(const char* name, const std::function<void(CMMCObjectSet&)>& run) {
  int failures = 0;
  for (long index = 0;; ++index) {
    CMMCObjectSet set(LeaveToSet);
    const CString longName(_T('n'), 100);  // beyond what a string holds without an allocation
    ASSERT_EQ(set.AddNode(-1, 1, MakeRecord({.cookie = 1, .name = longName, .scripts = {1}})), 0);
    ASSERT_EQ(set.AddNode(-1, 2, MakeRecord({.cookie = 2, .name = longName, .childQueries = {{longName, 1}}})), 0);
    ASSERT_EQ(set.AddNode(2, 3, MakeRecord({.cookie = 3, .name = longName})), 0);
    ASSERT_EQ(set.AddDialog(4, MakeRecord({.cookie = 4, .name = longName, .renderQueries = {{longName, 1}}})), 0);
    const std::string before = DescribeObjects(set);
    bool raised = false;
    bool ranShort = false;
    {
      const FailingAllocation failing(index);
      try {
        run(set);
      } catch (const std::bad_alloc&) {
        raised = true;
      } catch (const CMemoryException&) {
        raised = true;
      }
      ranShort = failing.HasFailed();
    }
    EXPECT_EQ(raised, ranShort) << name << ", allocation " << index;
    std::thread([&] { set.GetChildNodes(-1); }).join();  // hangs if the lock is still held
    if (!ranShort) break;
    ++failures;
    EXPECT_EQ(DescribeObjects(set), before) << name << ", allocation " << index;
    EXPECT_FALSE(set.IsModified()) << name << ", allocation " << index;
  }
  EXPECT_GT(failures, 0) << name << " allocates nothing, so nothing was tested";
}

TEST(SetLock, IsFreeAndTheSetAsBeforeWhenMemoryRunsShort) {
  static const CString longName(_T('m'), 100);
  static const CMMCObjectParams record = MakeRecord({.cookie = 7, .name = longName, .scripts = {1, 2}});
  const Operation operations[] = {
      {"GetChildNodes", [](auto& set) { set.GetChildNodes(-1); }},
      {"GetDialogs", [](auto& set) { set.GetDialogs(); }},
      {"AddNewNode", [](auto& set) { set.AddNewNode(-1, longName, CMMCObjectParams::eList); }},
      {"AddNode", [](auto& set) { set.AddNode(-1, 7, record); }},
      {"AddNewDialog", [](auto& set) { set.AddNewDialog(longName); }},
      {"AddDialog", [](auto& set) { set.AddDialog(7, record); }},
      {"MoveNodeDown", [](auto& set) { set.MoveNodeDown(1); }},
      {"RemoveDialog", [](auto& set) { set.RemoveDialog(4); }},
  };
  for (const Operation& operation : operations) FailEachAllocation(operation.name, operation.run);
}

TEST(SetLock, IsFreeWhenARecordCannotBeReplaced) {
  static const CMMCObjectParams record = MakeRecord({.cookie = 1, .name = CString(_T('m'), 100), .scripts = {1, 2}});
  for (long index = 0;; ++index) {
    CMMCObjectSet set(LeaveToSet);
    ASSERT_EQ(set.AddNode(-1, 1, MakeRecord({.cookie = 1})), 0);
    bool raised = false;
    {
      const FailingAllocation failing(index);
      try {
        set.SetParams(1, &record);
      } catch (const std::bad_alloc&) {
        raised = true;
      }
    }
    std::thread([&] { set.GetChildNodes(-1); }).join();  // hangs if the lock is still held
    EXPECT_EQ(set.IsModified(), !raised) << "allocation " << index;
    if (!raised) break;
  }
}

}  // namespace
}  // namespace ondrel::test
