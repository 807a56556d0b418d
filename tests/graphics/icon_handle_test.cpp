// Icon handles: their bitmaps and their life.
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"
#include "support/live_handles.h"

namespace ondrel::test {
namespace {

TEST(IconHandle, BitmapsBelongToTheCallerAndOutliveTheIcon) {
  Extraction extraction = ExtractIconsOf(ThirtyTwoBitIconFile());
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

TEST(IconHandle, NullHandleHasNoInformationAndIsNotDestroyed) {
  ICONINFO info = {};
  EXPECT_FALSE(GetIconInfo(nullptr, &info));
  EXPECT_EQ(info.hbmColor, nullptr);
  EXPECT_EQ(info.hbmMask, nullptr);
  EXPECT_FALSE(DestroyIcon(nullptr));
}

TEST(IconHandle, HandlesAreCountedWhileTheyLive) {
  ASSERT_EQ(CountLiveHandles().icons, 0);
  {
    const Extraction extraction = ExtractIconsOf(ThirtyTwoBitIconFile());
    EXPECT_EQ(CountLiveHandles().icons, 2);
    EXPECT_EQ(CountLiveHandles().bitmaps, 0);
    ReadIcon(extraction.large.get());
    EXPECT_EQ(CountLiveHandles().bitmaps, 0);
  }
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

TEST(IconHandle, SeveralThreadsExtractAtOnce) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.Write("a.ico", ThirtyTwoBitIconFile());
  std::vector<std::thread> threads;
  std::vector<int> extracted(4);
  for (int& count : extracted) {
    threads.emplace_back([&path, &count] {
      for (int round = 0; round < 20; ++round) count += Succeeded(ExtractIcons(path)) ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(extracted, std::vector<int>(4, 20));
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

}  // namespace
}  // namespace ondrel::test
