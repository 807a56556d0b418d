// Icon handles: their bitmaps, their life, and what is left when memory runs short.
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"
#include "support/failing_allocation.h"

namespace ondrel::test {
namespace {

std::string GoodFile() { return IconFileBytes({PatternPicture(32, 32, 32), PatternPicture(16, 16, 8)}); }

TEST(IconHandle, BitmapsBelongToTheCallerAndOutliveTheIcon) {
  Extraction extraction = ExtractIconsOf(GoodFile());
  ASSERT_TRUE(Succeeded(extraction));
  ICONINFO info = {};
  ASSERT_TRUE(GetIconInfo(extraction.large.get(), &info));
  const platform::UniqueBitmap colour(info.hbmColor);
  const platform::UniqueBitmap mask(info.hbmMask);
  EXPECT_EQ(info.fIcon, TRUE);
  EXPECT_EQ(info.xHotspot, 16U);
  EXPECT_EQ(info.yHotspot, 16U);
  extraction.large.reset();
  const IconContents contents = {ReadBitmap(colour.get()), ReadBitmap(mask.get())};
  const IconPicture picture = PatternPicture(32, 32, 32);
  EXPECT_EQ(contents.Colour(31, 30), picture.Colour(31, 30));
  EXPECT_EQ(contents.IsTransparent(1, 2), picture.IsTransparent(1, 2));
}

TEST(IconHandle, NullHandleKeepsTheReasonWhyThereIsNoIcon) {
  ICONINFO info = {};
  SetLastError(ERROR_FILE_NOT_FOUND);
  EXPECT_FALSE(GetIconInfo(nullptr, &info));
  EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(info.hbmColor, nullptr);
  EXPECT_EQ(info.hbmMask, nullptr);
}

TEST(IconHandle, NullHandleIsNotDestroyed) {
  SetLastError(ERROR_SUCCESS);
  EXPECT_FALSE(DestroyIcon(nullptr));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST(IconHandle, NowhereToPutTheInformation) {
  const Extraction extraction = ExtractIconsOf(GoodFile());
  SetLastError(ERROR_SUCCESS);
  EXPECT_FALSE(GetIconInfo(extraction.large.get(), nullptr));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(IconHandle, HandlesAreCountedWhileTheyLive) {
  ASSERT_EQ(platform::CountLiveHandles().icons, 0);
  {
    const Extraction extraction = ExtractIconsOf(GoodFile());
    EXPECT_EQ(platform::CountLiveHandles().icons, 2);
    EXPECT_EQ(platform::CountLiveHandles().bitmaps, 0);
    ReadIcon(extraction.large.get());
    EXPECT_EQ(platform::CountLiveHandles().bitmaps, 0);
  }
  EXPECT_EQ(platform::CountLiveHandles().icons, 0);
}

TEST(IconHandle, ShortMemoryEndsInAStatusWhereverItStrikes) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("a.ico", GoodFile()));
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
    EXPECT_NE(result, kIconExtracted) << "allocation " << failures;
    EXPECT_EQ(error, ERROR_OUTOFMEMORY) << "allocation " << failures;
    EXPECT_EQ(large, nullptr) << "allocation " << failures;
    EXPECT_EQ(smallIcon, nullptr) << "allocation " << failures;
    EXPECT_EQ(platform::CountLiveHandles().icons, 0) << "allocation " << failures;
  }
  EXPECT_GT(failures, 5) << "the sweep passed few allocations";
  DestroyIcon(large);
  DestroyIcon(smallIcon);
}

TEST(IconHandle, ShortMemoryLeavesNoBitmap) {
  const Extraction extraction = ExtractIconsOf(GoodFile());
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
    EXPECT_EQ(platform::CountLiveHandles().bitmaps, 0) << "allocation " << failures;
  }
  EXPECT_EQ(failures, 4) << "an object and its bits for each of the two bitmaps";
  DeleteObject(info.hbmColor);
  DeleteObject(info.hbmMask);
}

TEST(IconHandle, SeveralThreadsExtractAtOnce) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.Write("a.ico", GoodFile());
  std::vector<std::thread> threads;
  std::vector<int> extracted(4);
  for (int& count : extracted) {
    threads.emplace_back([&path, &count] {
      for (int round = 0; round < 20; ++round) count += Succeeded(ExtractIcons(path)) ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(extracted, std::vector<int>(4, 20));
  EXPECT_EQ(platform::CountLiveHandles().icons, 0);
}

}  // namespace
}  // namespace ondrel::test
