// Damaged programs, read by this system's own reader: whatever the bytes, a call ends with an icon or with its status,
// soon, and leaves nothing behind. Windows tells less in the last error, and its own reader is given no such programs.
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/damaged_programs.h"
#include "graphics/icon_reading.h"
#include "graphics/posix_extraction_costs.h"
#include "support/live_handles.h"

namespace ondrel::test {
namespace {

class PosixDamagedProgram : public testing::Test {
 protected:
  static Extraction Extract(const std::filesystem::path& path) {
    constexpr long kMostBytesOfSmallProgram = 1024 * 1024;
    return ExtractCheaply(path, {.bytes = kMostBytesOfSmallProgram});
  }

  void TearDown() override {
    EXPECT_EQ(CountLiveHandles().icons, 0);
    EXPECT_EQ(CountLiveHandles().bitmaps, 0);
  }
};

// In place: to write a whole file again and again would make the test wait for the disk.
void ChangeByte(const std::filesystem::path& path, std::size_t offset, char byte) {
  std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(static_cast<std::streamoff>(offset)).put(byte);
  ASSERT_TRUE(file.flush().good()) << path;
}

TEST_F(PosixDamagedProgram, EveryDamageLeavesItsReason) {
  const TemporaryFolder folder;
  for (const DamagedProgram& program : DamagedPrograms()) {
    const Extraction extraction = Extract(folder.Write("a.exe", program.bytes));
    EXPECT_TRUE(FailedWith(extraction, kNoIconsFound, program.error)) << program.name;
  }
}

TEST_F(PosixDamagedProgram, EveryTruncationEndsInItsStatus) {
  for (const ProgramKind kind : {ProgramKind::pe32, ProgramKind::pe32Plus}) {
    const ProgramBytes program = ProgramToDamage(kind);
    constexpr std::size_t kSignatureEnd = 0x44;
    // Each piece of data is padded to 4 bytes; the group, which stands last, by 2 bytes. In front of the group stands
    // the mask of the second image.
    const std::size_t groupEnd = program.dataEnd - 2;
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.Write("cut.exe", program.bytes);
    for (std::size_t length = program.bytes.size(); length-- > 0;) {
      std::filesystem::resize_file(path, length);
      const Extraction extraction = Extract(path);
      if (length < kSignatureEnd) {
        ASSERT_TRUE(FailedWith(extraction, kNoIconsFound, ERROR_RESOURCE_DATA_NOT_FOUND)) << length << " bytes";
      } else if (length < groupEnd) {
        ASSERT_TRUE(FailedWith(extraction, kNoIconsFound, ERROR_INVALID_DATA)) << length << " bytes";
      } else {
        ASSERT_TRUE(Succeeded(extraction)) << length << " bytes";
      }
    }
  }
}

TEST_F(PosixDamagedProgram, EveryByteOfHeadersAndTreeSetToAnExtremeEndsInAStatusOrAnIcon) {
  for (const ProgramKind kind : {ProgramKind::pe32, ProgramKind::pe32Plus}) {
    const ProgramBytes program = ProgramToDamage(kind);
    const std::size_t sectionTableEnd = program.resourceSection + 40;
    std::vector<std::size_t> offsets;
    for (std::size_t offset = 0; offset < sectionTableEnd; ++offset) offsets.push_back(offset);
    for (std::size_t offset = program.resources; offset < program.data; ++offset) offsets.push_back(offset);
    constexpr std::size_t kGroupBytes = 6 + 2 * 14;
    for (std::size_t offset = program.dataEnd - 2 - kGroupBytes; offset < program.dataEnd; ++offset) {
      offsets.push_back(offset);
    }
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.Write("damaged.exe", program.bytes);
    int failures = 0;
    for (const std::size_t offset : offsets) {
      for (const unsigned value : {0x00U, 0x01U, 0x7FU, 0x80U, 0xFFU}) {
        ChangeByte(path, offset, static_cast<char>(value));
        const Extraction extraction = Extract(path);
        ChangeByte(path, offset, program.bytes[offset]);
        if (extraction.result == kIconExtracted) {
          ASSERT_TRUE(Succeeded(extraction)) << "byte " << offset << " set to " << value;
          continue;
        }
        ++failures;
        ASSERT_TRUE(extraction.error == ERROR_INVALID_DATA || extraction.error == ERROR_RESOURCE_DATA_NOT_FOUND)
            << "byte " << offset << " set to " << value << ": last error " << extraction.error;
        ASSERT_TRUE(FailedWith(extraction, kNoIconsFound, extraction.error))
            << "byte " << offset << " set to " << value;
      }
    }
    EXPECT_GT(failures, 0);
  }
}

}  // namespace
}  // namespace ondrel::test
