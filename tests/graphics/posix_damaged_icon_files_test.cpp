// Icon files of every form, cut at every byte and with every byte of their headers set to extremes: a call ends with
// icons or with its status, leaves nothing behind, and costs little.
#include <string>

#include <gtest/gtest.h>

#include "graphics/damaged_icon_files.h"
#include "graphics/posix_extraction_costs.h"

namespace ondrel::test {
namespace {

class PosixIconDamage : public testing::TestWithParam<GoodIconFile> {};

TEST_P(PosixIconDamage, TheWholeFileGivesIcons) { EXPECT_TRUE(Succeeded(ExtractCheaplyOf(GetParam().bytes))); }

TEST_P(PosixIconDamage, EveryCutEndsInItsStatus) {
  const GoodIconFile& file = GetParam();
  CutEverywhere(file, [&](const std::filesystem::path& path, std::size_t length) {
    const Extraction extraction = ExtractCheaply(path);
    if (length < kIconFileHeaderBytes) {
      ASSERT_TRUE(FailedWith(extraction, kNoIconsFound, ERROR_RESOURCE_DATA_NOT_FOUND)) << length << " bytes";
    } else if (length < file.needed) {
      ASSERT_TRUE(FailedWith(extraction, kNoIconsFound, ERROR_INVALID_DATA)) << length << " bytes";
    } else {
      ASSERT_TRUE(Succeeded(extraction)) << length << " bytes";
    }
  });
}

TEST_P(PosixIconDamage, EveryExtremeInAHeaderEndsInAStatusOrInIcons) {
  int failures = 0;
  SetHeaderBytesToExtremes(GetParam(), [&](const std::filesystem::path& path, std::size_t place, unsigned value) {
    const Extraction extraction = ExtractCheaply(path);
    if (place < kIconFileHeaderBytes && extraction.error == ERROR_RESOURCE_DATA_NOT_FOUND) {
      ASSERT_TRUE(FailedWith(extraction, kNoIconsFound, ERROR_RESOURCE_DATA_NOT_FOUND))
          << "byte " << place << ": " << value;
    } else {
      ASSERT_TRUE(EndedWell(extraction)) << "byte " << place << " set to " << value;
    }
    if (extraction.result != kIconExtracted) ++failures;
  });
  EXPECT_GT(failures, 100) << "most headers are needed";
}

INSTANTIATE_TEST_SUITE_P(Files, PosixIconDamage, testing::ValuesIn(GoodIconFiles()), NameOfGoodFile);

}  // namespace
}  // namespace ondrel::test
