// Memory that runs short while files are added: nothing is left of them, and the cookie is 0.

#include <gtest/gtest.h>

#include <new>
#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/failing_allocation.h"
#include "support/live_handles.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

/// More than any of these runs takes.
constexpr long kMostAllocations = 1000;

/// Runs `add`, which gives a status, with one allocation after the other failing, until it passes. How many failed.
template <class Add>
long FailEachAllocation(CMMCObjectSet& set, const Add& add) {
  const std::string before = Observed(set);
  const auto handles = CountLiveHandles();
  for (long index = 0; index < kMostAllocations; ++index) {
    __int64 cookie = 0;
    HRESULT status = kOutOfMemory;
    {
      const FailingAllocation failing(index);
      try {
        status = add(cookie);
      } catch (const CMemoryException&) {
      } catch (const std::bad_alloc&) {
      }
    }
    if (status == S_OK) return index;
    EXPECT_EQ(status, kOutOfMemory) << "allocation " << index;
    EXPECT_EQ(cookie, 0) << "allocation " << index;
    EXPECT_EQ(Observed(set), before) << "allocation " << index;
    EXPECT_EQ(CountLiveHandles().icons, handles.icons) << "allocation " << index;
    EXPECT_EQ(CountLiveHandles().bitmaps, handles.bitmaps) << "allocation " << index;
  }
  ADD_FAILURE() << "there is no end of allocations";
  return kMostAllocations;
}

TEST(IconFilesMemory, RunningShortWhileAnIconFileIsAddedLeavesNothing) {
  const TemporaryFolder folder;
  const CString path = WriteIcon(folder, "icon.ico", {SolidIcon(32, 0), SolidIcon(16, 0)});
  CMMCObjectSet set(LeaveToSet);
  // Four bitmaps and three tables at least; what the reading of the file allocates is the platform's.
  EXPECT_GE(FailEachAllocation(set, [&](__int64& cookie) { return set.AddIconFile(path, cookie); }), 7);
  EXPECT_EQ(set.GetIconFiles().size(), 1U);
  EXPECT_TRUE(set.IsModified());
}

TEST(IconFilesMemory, RunningShortWhileACodeFileIsAddedLeavesNothing) {
  const CString path(_T('p'), 100);
  CMMCObjectSet set(LeaveToSet);
  EXPECT_GT(FailEachAllocation(set, [&](__int64& cookie) { return set.AddCodeFile(path, Unchanged, cookie); }), 1);
  EXPECT_EQ(set.GetCodeFiles().size(), 1U);
  EXPECT_TRUE(set.IsModified());
}

TEST(IconFilesMemory, RunningShortWhileAnIconRecordIsLoadedLeavesNothing) {
  const std::string record = Cookie(5) + TinyIconBytes();
  CMMCObjectSet set(LeaveToSet);
  EXPECT_GT(FailEachAllocation(set,
                               [&](__int64&) {
                                 LoadingArchive archive(record);
                                 set.DeserializeIconFile(*archive);
                                 return S_OK;
                               }),
            3);
  EXPECT_EQ(set.GetIconFiles(), std::list<__int64>{5});
}

}  // namespace
}  // namespace ondrel::test
