// Loading a library when memory runs short. Only off Windows is a path made into the system's form on the way, and only
// there can the allocation for it be made to fail.
#include <gtest/gtest.h>

#include <ondrel/platform/framework/library_loading.h>

#include "support/failing_allocation.h"

namespace ondrel::test {
namespace {

TEST(PosixLibraryMemory, RunningShortLoadsNothingAndSaysSo) {
  const CString path(CString('n', 300));
  SetLastError(ERROR_SUCCESS);
  HINSTANCE library = nullptr;
  DWORD reason = ERROR_SUCCESS;
  {
    const FailingAllocation failing(0);
    library = AfxLoadLibrary(path);
    reason = GetLastError();
  }
  EXPECT_EQ(library, nullptr);
  EXPECT_EQ(reason, ERROR_NOT_ENOUGH_MEMORY);
}

}  // namespace
}  // namespace ondrel::test
