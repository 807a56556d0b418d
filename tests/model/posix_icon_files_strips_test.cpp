// Image strips that no bitmap can be made of, off Windows for their depth: Windows rounds depths that it does not have.
// And what a strip may cost, which only these systems count.

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/live_handles.h"
#include "support/model/hand_bytes.h"
#include "support/model/icon_strips.h"
#include "support/model/set_forms.h"
#include "support/posix/allocation_peak.h"

namespace ondrel::test {
namespace {

TEST(IconFilesStrips, DepthsThatThePlatformRefusesGiveNullHandlesAndTheReason) {
  CMMCObjectSet set(LeaveToSet);
  const std::string colour = BitmapBytes(8, 8, 2, 2, std::string(16, '\0'));  // no platform bitmap has 2 bits
  InsertRecord(set, 1, colour + std::string(24, '\0') + colour + std::string(24, '\0'));
  const auto before = CountLiveHandles();
  auto* smallIcon = reinterpret_cast<HBITMAP>(&set);
  auto* large = reinterpret_cast<HBITMAP>(&set);
  SetLastError(ERROR_SUCCESS);
  set.GetIconBitmapImages(kKey, smallIcon, large);
  EXPECT_EQ(smallIcon, nullptr);
  EXPECT_EQ(large, nullptr);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
  EXPECT_EQ(IndexOf(set, 1), 0) << "the indices are noted before the handles are made";
}

TEST(IconFilesStrips, AFailureOfTheLargeStripDeletesTheSmallOneAndKeepsTheReason) {
  CMMCObjectSet set(LeaveToSet);
  const std::string large = BitmapBytes(8, 8, 2, 2, std::string(16, '\0'));
  const std::string smallIcon = BitmapBytes(1, 1, 4, 32, "1234");
  InsertRecord(set, 1, large + std::string(24, '\0') + smallIcon + std::string(24, '\0'));
  const auto before = CountLiveHandles();
  SetLastError(ERROR_SUCCESS);
  const Strips strips(set);
  const DWORD reason = GetLastError();
  EXPECT_EQ(strips.smallIcon, nullptr);
  EXPECT_EQ(strips.large, nullptr);
  EXPECT_EQ(reason, ERROR_INVALID_PARAMETER);
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
}

TEST(IconFilesStrips, RowsThatThePlatformPadsToManyTimesTheirLengthAreRefused) {
  constexpr std::int64_t kRows = std::int64_t{1} << 28;
  constexpr long kPadded = 2L * kRows;  // bytes: a bit of each row, padded to 16
  CMMCObjectSet set(LeaveToSet);
  InsertRecord(set, 1, BitmapBytes(1, kRows, 0, 1, "") + std::string(3 * 24, '\0'));
  const auto before = CountLiveHandles();
  const AllocationPeak peak;
  SetLastError(ERROR_SUCCESS);
  const Strips strips(set);
  const DWORD reason = GetLastError();
  EXPECT_EQ(strips.smallIcon, nullptr);
  EXPECT_EQ(strips.large, nullptr);
  EXPECT_EQ(reason, ERROR_INVALID_PARAMETER);
  EXPECT_LT(peak.Bytes(), kPadded / 4);
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
}

TEST(IconFilesStrips, PaddedRowsMayTakeAsMuchAsPixels) {
  constexpr std::int64_t kMostRows = 0x7FFFFFFF / 16;  // of one pixel of a bit
  const std::string none(24, '\0');
  for (const std::int64_t rows : {kMostRows, kMostRows + 1}) {
    CMMCObjectSet set(LeaveToSet);
    InsertRecord(set, 1, BitmapBytes(1, rows, 0, 1, "") + none + BitmapBytes(1, 1, 4, 32, "1234") + none);
    const Strips strips(set);
    EXPECT_EQ(strips.large != nullptr, rows == kMostRows);
    EXPECT_EQ(strips.smallIcon != nullptr, rows == kMostRows);
  }
}

}  // namespace
}  // namespace ondrel::test
