// The set's lock: which operations wait for it.

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <string>
#include <thread>

#include "support/archive_bytes.h"
#include "support/model/icon_fixtures.h"
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
  Probe::InsertIconFile(set, 9, CMMCObjectIcon());
  Probe::InsertCodeFile(set, _T("b.js"), 10, Unchanged);
  std::promise<void> started;
  std::promise<void> ended;
  CSingleLock lock(&Probe::Lock(set), TRUE);
  std::thread other([&] {
    started.set_value();
    run(set);
    ended.set_value();
  });
  started.get_future().wait();
  std::future<void> end = ended.get_future();
  // An operation without the lock ends long before; one that waits never does.
  const bool waited = end.wait_for(milliseconds(20)) == std::future_status::timeout;
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
      {"AddIconFile",
       [](auto& set) {
         __int64 cookie = 0;
         set.AddIconFile(_T("missing.ico"), cookie);
       }},
      {"GetIconImageList",
       [](auto& set) {
         CImageList list;
         set.GetIconImageList(16, 16, list);
       }},
      {"GetIconBitmapImages",
       [](auto& set) {
         HBITMAP smallStrip = nullptr;
         HBITMAP largeStrip = nullptr;
         set.GetIconBitmapImages(0, smallStrip, largeStrip);
         DeleteObject(smallStrip);
         DeleteObject(largeStrip);
       }},
      {"SerializeIconFile", [](auto& set) { Stored([&](CVellum& archive) { set.SerializeIconFile(9, archive); }); }},
      {"SerializeCodeFile",
       [](auto& set) {
         Stored([&](CVellum& archive) {
           EXPECT_THROW(set.SerializeCodeFile(99, archive, Unchanged, {}), CArchiveException);
         });
       }},
      {"DeserializeIconFile",
       [](auto& set) {
         LoadingArchive archive(Cookie(3) + TinyIconBytes());
         set.DeserializeIconFile(*archive);
       }},
      {"DeserializeCodeFile",
       [](auto& set) {
         LoadingArchive archive(Cookie(3) + ByteVector("x"));
         set.DeserializeCodeFile(*archive);
       }},
      {"the save of an image", [](auto& set) { EXPECT_THROW(SavedImage(set), CArchiveException); }},
      {"the save of a project", [](auto& set) { SavedProject(set); }},
      {"the load of an image", [](auto& set) { LoadImage(set, Long(1) + Long(1) + std::string(40, '\0')); }},
      {"the load of a project", [](auto& set) { LoadProject(set, "<Project/>"); }},
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

}  // namespace
}  // namespace ondrel::test
