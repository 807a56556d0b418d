// Icon files with fields that cannot be or claim too much, read by this system's own reader.
#include <string>

#include <gtest/gtest.h>

#include "graphics/posix_extraction_costs.h"

namespace ondrel::test {
namespace {

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

Extraction ExtractImage(const std::string& image) {
  return ExtractCheaplyOf(IconFileBytes({StoredImage(32, 32, 8, image)}));
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
    EXPECT_TRUE(FailedWith(ExtractImage(image), kNoIconsFound, ERROR_INVALID_DATA)) << c.name;
  }
}

TEST(PosixDamagedIcon, ClaimOfAHugeImageTakesNoMemory) {
  for (const int bits : {1, 32}) {
    std::string image = ImageBytes(PatternPicture(32, 32, bits));
    Put(image, kWidth, 30000);
    Put(image, kHeight, 60000);
    EXPECT_TRUE(FailedWith(ExtractImage(image), kNoIconsFound, ERROR_INVALID_DATA)) << bits << " bits";
  }
}

TEST(PosixDamagedIcon, EntryOutsideTheFile) {
  const std::string file = IconFileBytes({PatternPicture(32, 32, 8)});
  constexpr std::size_t kLength = kIconFileHeaderBytes + 8;
  constexpr std::size_t kOffset = kIconFileHeaderBytes + 12;
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
    EXPECT_TRUE(FailedWith(ExtractCheaplyOf(damaged), kNoIconsFound, ERROR_INVALID_DATA)) << c.name;
  }
}

TEST(PosixDamagedIcon, LengthThatReachesBeyondTheFileIsCutBack) {
  const IconPicture picture = PatternPicture(32, 32, 8);
  std::string file = IconFileBytes({picture});
  Put(file, kIconFileHeaderBytes + 8, 0xFFFFFFFF);
  const Extraction extraction = ExtractCheaplyOf(file);
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
}

// A file whose entries all lead to the same image.
std::string FileOfManyEntries(std::size_t count, const IconPicture& picture) {
  std::string file = IconFileBytes({picture});
  Put(file, 4, static_cast<std::uint32_t>(count), 2);
  std::string entry = file.substr(kIconFileHeaderBytes, kIconFileEntryBytes);
  Put(entry, 12, static_cast<std::uint32_t>(kIconFileHeaderBytes + count * kIconFileEntryBytes));
  std::string directory;
  for (std::size_t index = 0; index < count; ++index) directory += entry;
  return file.replace(kIconFileHeaderBytes, kIconFileEntryBytes, directory);
}

TEST(PosixDamagedIcon, MoreEntriesThanAnyFileHas) {
  const IconPicture picture = PatternPicture(32, 32, 8);
  const Extraction most = ExtractCheaplyOf(FileOfManyEntries(1024, picture));
  ASSERT_TRUE(Succeeded(most));
  EXPECT_TRUE(Shows(most.large.get(), 32, picture));
  EXPECT_TRUE(FailedWith(ExtractCheaplyOf(FileOfManyEntries(1025, picture)), kNoIconsFound, ERROR_INVALID_DATA));
  EXPECT_TRUE(FailedWith(ExtractCheaplyOf(FileOfManyEntries(0xFFFF, picture)), kNoIconsFound, ERROR_INVALID_DATA));
}

TEST(PosixDamagedIcon, MorePixelsThanAnyImageHas) {
  const IconPicture picture = PatternPicture(1024, 1024, 1);
  const Extraction most = ExtractCheaplyOf(IconFileBytes({picture}), kMostOfLargest);
  ASSERT_TRUE(Succeeded(most));
  EXPECT_TRUE(Shows(most.large.get(), 32, picture));
  EXPECT_TRUE(
      FailedWith(ExtractCheaplyOf(IconFileBytes({PatternPicture(1024, 1025, 1)})), kNoIconsFound, ERROR_INVALID_DATA));
}

}  // namespace
}  // namespace ondrel::test
