// Icon handles of this system's own: what their failures leave in the last error, and what is left when memory runs
// short, which can be made to happen in every allocation here.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/damaged_programs.h"
#include "graphics/icon_reading.h"
#include "support/failing_allocation.h"
#include "support/live_handles.h"
#include "support/png_bytes.h"

namespace ondrel::test {
namespace {

TEST(PosixIconHandle, NullHandleKeepsTheReasonWhyThereIsNoIcon) {
  ICONINFO info = {};
  SetLastError(ERROR_FILE_NOT_FOUND);
  EXPECT_FALSE(GetIconInfo(nullptr, &info));
  EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(info.hbmColor, nullptr);
  EXPECT_EQ(info.hbmMask, nullptr);
}

TEST(PosixIconHandle, NullHandleIsNotDestroyed) {
  SetLastError(ERROR_SUCCESS);
  EXPECT_FALSE(DestroyIcon(nullptr));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST(PosixIconHandle, NowhereToPutTheInformation) {
  const Extraction extraction = ExtractIconsOf(ThirtyTwoBitIconFile());
  SetLastError(ERROR_SUCCESS);
  EXPECT_FALSE(GetIconInfo(extraction.large.get(), nullptr));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

/// A file with an icon, and how often reading it allocates at least.
struct FileToRead {
  const char* name;
  std::string bytes;
  long allocations;
};

std::vector<FileToRead> FilesToRead() {
  PngPicture interlaced = PatternPng(32, 32, PngColour::palette, 8);
  interlaced.interlaced = true;
  return {{"Uncompressed", ThirtyTwoBitIconFile(), 5},
          {"Png", IconFileBytes({StoredPng(interlaced), StoredPng(PatternPng(16, 16, PngColour::trueColour, 16))}), 20},
          {"Program", ProgramToDamage().bytes, 10}};
}

class PosixIconMemory : public testing::TestWithParam<FileToRead> {};

TEST_P(PosixIconMemory, RunningShortEndsInAStatusWhereverItStrikes) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("icon", GetParam().bytes));
  HICON large = nullptr;
  HICON smallIcon = nullptr;
  long failures = 0;
  for (bool failed = true; failed; ++failures) {
    SetLastError(ERROR_SUCCESS);
    UINT result = 0;
    DWORD error = 0;
    {
      const FailingAllocation failing(failures);
      result = ExtractIconExW(path, 0, &large, &smallIcon, 1);
      error = GetLastError();
      failed = failing.HasFailed();
    }
    if (!failed) {
      EXPECT_EQ(result, kIconExtracted);
      break;
    }
    EXPECT_EQ(result, kNoIconsFound) << "allocation " << failures;
    EXPECT_EQ(error, ERROR_OUTOFMEMORY) << "allocation " << failures;
    EXPECT_EQ(large, nullptr) << "allocation " << failures;
    EXPECT_EQ(smallIcon, nullptr) << "allocation " << failures;
    EXPECT_EQ(CountLiveHandles().icons, 0) << "allocation " << failures;
  }
  EXPECT_GT(failures, GetParam().allocations) << "the sweep passed few allocations";
  DestroyIcon(large);
  DestroyIcon(smallIcon);
}

INSTANTIATE_TEST_SUITE_P(Files, PosixIconMemory, testing::ValuesIn(FilesToRead()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(PosixIconHandle, ShortMemoryLeavesNoBitmap) {
  const Extraction extraction = ExtractIconsOf(ThirtyTwoBitIconFile());
  ASSERT_TRUE(Succeeded(extraction));
  ICONINFO info = {};
  long failures = 0;
  for (;; ++failures) {
    SetLastError(ERROR_SUCCESS);
    BOOL done = FALSE;
    {
      const FailingAllocation failing(failures);
      done = GetIconInfo(extraction.large.get(), &info);
    }
    if (done) break;
    EXPECT_EQ(GetLastError(), ERROR_OUTOFMEMORY) << "allocation " << failures;
    EXPECT_EQ(CountLiveHandles().bitmaps, 0) << "allocation " << failures;
  }
  EXPECT_EQ(failures, 4) << "an object and its bits for each of the two bitmaps";
  DeleteObject(info.hbmColor);
  DeleteObject(info.hbmMask);
}

}  // namespace
}  // namespace ondrel::test
