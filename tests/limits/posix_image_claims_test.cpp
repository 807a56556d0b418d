// What it costs to refuse an image that claims too much, counted in the processor's time and in bytes of memory, which
// only these systems tell of a thread.
#include <gtest/gtest.h>

#include <chrono>

#include "support/archive_bytes.h"
#include "support/claimed_images.h"
#include "support/model/hand_bytes.h"
#include "support/model/set_forms.h"
#include "support/posix/allocation_peak.h"
#include "support/posix/thread_time.h"

namespace ondrel::test {
namespace {

constexpr std::chrono::milliseconds kLongestRefusal{100};
constexpr long kMostMemory = 16 * 1024 * 1024;

TEST(PosixImageClaims, AreRefusedAtOnceAndWithLittleMemory) {
  for (const auto& [place, claim, bytes, cause] : ClaimedImages()) {
    const AllocationPeak peak;
    const auto start = ThreadTime();
    CMMCObjectSet set(LeaveToSet);
    EXPECT_THROW(LoadImage(set, bytes), CArchiveException) << place << " of " << claim;
    EXPECT_LT(ThreadTime() - start, kLongestRefusal) << place << " of " << claim;
    EXPECT_LT(peak.Bytes(), kMostMemory) << place << " of " << claim;
    EXPECT_GT(peak.Bytes(), 0) << "nothing was counted";
  }
}

TEST(PosixImageClaims, OfGeometryAreKeptAndTakeNoMemory) {
  constexpr std::int64_t kMost = 0x7FFFFFFF;
  constexpr long kMostOfAFewBytes = 1024 * 1024;
  const std::string bitmap = BitmapBytes(kMost, kMost, kMost, 32, "");
  const std::string image = Long(1) + Long(1) + Count(0) + Count(0) + Count(1) + Cookie(7) + bitmap + bitmap + bitmap +
                            bitmap + Count(0) + Count(0);
  const AllocationPeak peak;
  const auto start = ThreadTime();
  CMMCObjectSet set(LeaveToSet);
  LoadImage(set, image);
  EXPECT_EQ(Hex(SavedImage(set)), Hex(image));
  EXPECT_LT(ThreadTime() - start, kLongestRefusal);
  EXPECT_LT(peak.Bytes(), kMostOfAFewBytes);
  const CMMCObjectIcon* icon = nullptr;
  ASSERT_TRUE(set.GetIconFile(7, &icon));
  EXPECT_EQ(icon->GetColourBitmap(false).bmHeight, kMost);
}

}  // namespace
}  // namespace ondrel::test
