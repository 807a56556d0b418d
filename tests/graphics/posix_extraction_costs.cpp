// Counting of what an extraction costs.
#include "graphics/posix_extraction_costs.h"

#include "support/live_handles.h"
#include "support/posix/allocation_peak.h"
#include "support/posix/thread_time.h"

namespace ondrel::test {

Extraction ExtractCheaply(const std::filesystem::path& path, std::chrono::milliseconds mostTime) {
  const LiveHandles before = CountLiveHandles();
  const auto start = ThreadTime();
  const AllocationPeak peak;
  Extraction extraction = ExtractIcons(path);
  const long bytes = peak.Bytes();
  const auto time = ThreadTime() - start;
  EXPECT_LE(std::chrono::duration<double>(time), mostTime);
  EXPECT_LE(bytes, kMostBytes);
  const long made = (extraction.large != nullptr ? 1 : 0) + (extraction.smallIcon != nullptr ? 1 : 0);
  EXPECT_EQ(CountLiveHandles().icons, before.icons + made);
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
  return extraction;
}

Extraction ExtractCheaplyOf(const std::string& bytes, std::chrono::milliseconds mostTime) {
  const TemporaryFolder folder;
  return ExtractCheaply(folder.Write("test.ico", bytes), mostTime);
}

testing::AssertionResult EndedWell(const Extraction& extraction) {
  return extraction.result == kIconExtracted ? Succeeded(extraction)
                                             : FailedWith(extraction, kNoIcon, ERROR_INVALID_DATA);
}

}  // namespace ondrel::test
