// Damaged icon files, read by this system's own reader: whatever the bytes, a call ends with an icon or with its
// status, and leaves nothing behind.
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/icon_reading.h"
#include "support/live_handles.h"

namespace ondrel::test {
namespace {

constexpr std::size_t kFileHeaderBytes = 6;
constexpr std::size_t kEntryBytes = 16;
constexpr std::size_t kImageHeaderBytes = 40;

// Where an image's header keeps its fields.
constexpr std::size_t kHeaderSize = 0;
constexpr std::size_t kWidth = 4;
constexpr std::size_t kHeight = 8;
constexpr std::size_t kBitsPerPixel = 14;
constexpr std::size_t kCompression = 16;

void Put(std::string& bytes, std::size_t offset, std::uint32_t value, int count = 4) {
  for (int part = 0; part < count; ++part)
    bytes[offset + static_cast<std::size_t>(part)] = static_cast<char>(value >> (8 * part));
}

// In place: to write a whole file again and again would make the test wait for the disk.
void ReplaceByte(const std::filesystem::path& path, std::size_t offset, char byte) {
  std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(static_cast<std::streamoff>(offset)).put(byte);
  ASSERT_TRUE(file.flush().good()) << path;
}

Extraction ExtractImage(const std::string& image) {
  return ExtractIconsOf(IconFileBytes({StoredImage(32, 32, 8, image)}));
}

TEST(PosixDamagedIcon, EveryTruncationEndsInItsStatus) {
  for (const int bits : {1, 8, 32}) {
    const IconPicture large = PatternPicture(32, 32, bits);
    const IconPicture smallIcon = PatternPicture(16, 16, bits);
    const std::string file = IconFileBytes({large, smallIcon});
    const std::size_t directoryEnd = kFileHeaderBytes + 2 * kEntryBytes;
    const std::size_t smallColourEnd = directoryEnd + ImageBytes(large).size() + BytesBeforeMask(smallIcon);
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.Write("cut.ico", file);
    for (std::size_t length = file.size(); length-- > 0;) {
      std::filesystem::resize_file(path, length);
      const Extraction extraction = ExtractIcons(path);
      if (length < kFileHeaderBytes) {
        ASSERT_TRUE(FailedWith(extraction, kNoIcon, ERROR_RESOURCE_DATA_NOT_FOUND)) << bits << " bits, " << length;
      } else if (length < smallColourEnd) {
        ASSERT_TRUE(FailedWith(extraction, kNoIcon, ERROR_INVALID_DATA)) << bits << " bits, " << length;
      } else {
        ASSERT_TRUE(Succeeded(extraction)) << bits << " bits, " << length;  // the cut is in the mask
      }
    }
  }
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

TEST(PosixDamagedIcon, EveryHeaderByteSetToAnExtremeEndsInAStatusOrAnIcon) {
  const IconPicture large = PatternPicture(32, 32, 4);
  const IconPicture smallIcon = PatternPicture(16, 16, 24);
  const std::string file = IconFileBytes({large, smallIcon});
  const std::size_t directoryEnd = kFileHeaderBytes + 2 * kEntryBytes;
  const std::size_t smallStart = directoryEnd + ImageBytes(large).size();
  std::vector<std::size_t> offsets;
  for (std::size_t offset = 0; offset < directoryEnd + kImageHeaderBytes; ++offset) offsets.push_back(offset);
  for (std::size_t offset = 0; offset < kImageHeaderBytes; ++offset) offsets.push_back(smallStart + offset);
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.Write("damaged.ico", file);
  int failures = 0;
  for (const std::size_t offset : offsets) {
    for (const unsigned value : {0x00U, 0x01U, 0x7FU, 0x80U, 0xFFU}) {
      ReplaceByte(path, offset, static_cast<char>(value));
      const Extraction extraction = ExtractIcons(path);
      ReplaceByte(path, offset, file[offset]);
      if (extraction.result == kIconExtracted) {
        ASSERT_TRUE(Succeeded(extraction)) << "byte " << offset << " set to " << value;
        continue;
      }
      ++failures;
      const bool tellsNoIcon = offset < kFileHeaderBytes;
      ASSERT_TRUE(extraction.error == ERROR_INVALID_DATA ||
                  (tellsNoIcon && extraction.error == ERROR_RESOURCE_DATA_NOT_FOUND))
          << "byte " << offset << " set to " << value << ": last error " << extraction.error;
      ASSERT_TRUE(FailedWith(extraction, kNoIcon, extraction.error)) << "byte " << offset << " set to " << value;
    }
  }
  EXPECT_GT(failures, 0);
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

TEST(PosixDamagedIcon, FieldsOfTheImageHeaderThatCannotBe) {
  struct Case {
    const char* name;
    std::size_t offset;
    std::uint32_t value;
    int bytes;
  };
  for (const Case& c : {Case{"header of no length", kHeaderSize, 0, 4}, Case{"old header", kHeaderSize, 12, 4},
                        Case{"header beyond the file", kHeaderSize, 0xFFFFFFFF, 4}, Case{"no width", kWidth, 0, 4},
                        Case{"negative width", kWidth, 0xFFFFFFE0, 4}, Case{"widest", kWidth, 0x7FFFFFFF, 4},
                        Case{"no height", kHeight, 0, 4}, Case{"half a row", kHeight, 1, 4},
                        Case{"lowest height", kHeight, 0x80000000, 4}, Case{"highest", kHeight, 0x7FFFFFFF, 4},
                        Case{"no depth", kBitsPerPixel, 0, 2}, Case{"2 bits", kBitsPerPixel, 2, 2},
                        Case{"deepest", kBitsPerPixel, 0xFFFF, 2}, Case{"compressed", kCompression, 1, 4},
                        Case{"bit fields", kCompression, 3, 4}}) {
    std::string image = ImageBytes(PatternPicture(32, 32, 8));
    Put(image, c.offset, c.value, c.bytes);
    EXPECT_TRUE(FailedWith(ExtractImage(image), kNoIcon, ERROR_INVALID_DATA)) << c.name;
  }
}

TEST(PosixDamagedIcon, ClaimOfAHugeImageTakesNoMemory) {
  for (const int bits : {1, 32}) {
    std::string image = ImageBytes(PatternPicture(32, 32, bits));
    Put(image, kWidth, 30000);
    Put(image, kHeight, 60000);
    EXPECT_TRUE(FailedWith(ExtractImage(image), kNoIcon, ERROR_INVALID_DATA)) << bits << " bits";
  }
}

TEST(PosixDamagedIcon, EntryOutsideTheFile) {
  const std::string file = IconFileBytes({PatternPicture(32, 32, 8)});
  constexpr std::size_t kLength = kFileHeaderBytes + 8;
  constexpr std::size_t kOffset = kFileHeaderBytes + 12;
  struct Case {
    const char* name;
    std::uint32_t offset;
    std::uint32_t length;
  };
  for (const Case& c :
       {Case{"at the end", static_cast<std::uint32_t>(file.size()), 1000}, Case{"beyond the end", 0x7FFFFFFF, 1000},
        Case{"sum overflows", 0xFFFFFFF0, 0x20}, Case{"farthest", 0xFFFFFFFF, 0xFFFFFFFF}, Case{"of no length", 22, 0},
        Case{"shorter than a header", 22, 39}, Case{"over the directory", 0, 0xFFFFFFFF}}) {
    std::string damaged = file;
    Put(damaged, kOffset, c.offset);
    Put(damaged, kLength, c.length);
    EXPECT_TRUE(FailedWith(ExtractIconsOf(damaged), kNoIcon, ERROR_INVALID_DATA)) << c.name;
  }
}

TEST(PosixDamagedIcon, LengthThatReachesBeyondTheFileIsCutBack) {
  const IconPicture picture = PatternPicture(32, 32, 8);
  std::string file = IconFileBytes({picture});
  Put(file, kFileHeaderBytes + 8, 0xFFFFFFFF);
  const Extraction extraction = ExtractIconsOf(file);
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
}

// A file whose entries all lead to the same image.
std::string FileOfManyEntries(std::size_t count, const IconPicture& picture) {
  std::string file = IconFileBytes({picture});
  Put(file, 4, static_cast<std::uint32_t>(count), 2);
  std::string entry = file.substr(kFileHeaderBytes, kEntryBytes);
  Put(entry, 12, static_cast<std::uint32_t>(kFileHeaderBytes + count * kEntryBytes));
  std::string directory;
  for (std::size_t index = 0; index < count; ++index) directory += entry;
  return file.replace(kFileHeaderBytes, kEntryBytes, directory);
}

TEST(PosixDamagedIcon, MoreEntriesThanAnyFileHas) {
  const IconPicture picture = PatternPicture(32, 32, 8);
  const Extraction most = ExtractIconsOf(FileOfManyEntries(1024, picture));
  ASSERT_TRUE(Succeeded(most));
  EXPECT_TRUE(Shows(most.large.get(), 32, picture));
  EXPECT_TRUE(FailedWith(ExtractIconsOf(FileOfManyEntries(1025, picture)), kNoIcon, ERROR_INVALID_DATA));
  EXPECT_TRUE(FailedWith(ExtractIconsOf(FileOfManyEntries(0xFFFF, picture)), kNoIcon, ERROR_INVALID_DATA));
}

TEST(PosixDamagedIcon, MorePixelsThanAnyImageHas) {
  const IconPicture picture = PatternPicture(1024, 1024, 1);
  const Extraction most = ExtractIconsOf(IconFileBytes({picture}));
  ASSERT_TRUE(Succeeded(most));
  EXPECT_TRUE(Shows(most.large.get(), 32, picture));
  EXPECT_TRUE(FailedWith(ExtractIconsOf(IconFileBytes({PatternPicture(1024, 1025, 1)})), kNoIcon, ERROR_INVALID_DATA));
}

}  // namespace
}  // namespace ondrel::test
