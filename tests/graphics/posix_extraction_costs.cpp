// Counting of what an extraction costs.
#include "graphics/posix_extraction_costs.h"

#include "support/live_handles.h"
#include "support/posix/allocation_peak.h"
#include "support/posix/thread_time.h"

namespace ondrel::test {

Extraction ExtractCheaply(const std::filesystem::path& path, const MostCosts& most) {
  constexpr int kAttempts = 5;
  const LiveHandles before = CountLiveHandles();
  Extraction extraction;
  std::chrono::nanoseconds time{};
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    extraction = {};
    const auto start = ThreadTime();
    const AllocationPeak peak;
    extraction = ExtractIcons(path);
    const long bytes = peak.Bytes();
    time = ThreadTime() - start;
    EXPECT_LE(bytes, most.bytes);
    if (time <= most.time) break;
  }
  EXPECT_LE(std::chrono::duration<double>(time), most.time);
  const long made = (extraction.large != nullptr ? 1 : 0) + (extraction.smallIcon != nullptr ? 1 : 0);
  EXPECT_EQ(CountLiveHandles().icons, before.icons + made);
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
  return extraction;
}

Extraction ExtractCheaplyOf(const std::string& bytes, const MostCosts& most) {
  const TemporaryFolder folder;
  return ExtractCheaply(folder.Write("test.ico", bytes), most);
}

testing::AssertionResult EndedWell(const Extraction& extraction) {
  return extraction.result == kIconExtracted ? Succeeded(extraction)
                                             : FailedWith(extraction, kNoIconsFound, ERROR_INVALID_DATA);
}

}  // namespace ondrel::test
