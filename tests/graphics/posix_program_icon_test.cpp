// The icons of programs, read by this system's own reader: how large a program and its parts may be. Windows would fill
// the disk for such a file, and is given no program with an image outside the file.
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/damaged_programs.h"
#include "graphics/icon_choice.h"
#include "graphics/posix_extraction_costs.h"
#include "support/little_endian_bytes.h"

namespace ondrel::test {
namespace {

TEST(PosixProgramIcon, ProgramOfAnyLengthIsReadWhereItsIconIs) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.Write("long.exe", ProgramToDamage().bytes);
  std::filesystem::resize_file(path, 33ULL << 30);  // takes no room on the disk
  const Extraction extraction = ExtractCheaply(path);
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, PatternPicture(32, 32, 4)));
}

TEST(PosixProgramIcon, ImagesAreFoundAmongTheMostThereCanBe) {
  // Every number but 0, and as many texts in front of them. Those that the group does not list lead nowhere.
  const IconPicture picture = Square(32, 32, 0x111111);
  constexpr std::size_t kMost = 65535;
  constexpr std::size_t kListed = 1024;
  std::vector<GroupEntry> entries;
  for (std::size_t index = 0; index < kListed; ++index) {
    entries.push_back({static_cast<std::uint16_t>(kMost - index), StoredImage(picture)});
  }
  // The directory of images is written behind a program that has one image.
  ProgramBytes program =
      BuildProgram({{kIconImageType, {{1, ImageBytes(picture)}}}, {kIconGroupType, {{1, IconGroupBytes(entries)}}}});
  std::string& bytes = program.bytes;
  const auto place = static_cast<std::uint32_t>(bytes.size() - program.resources);
  const std::string header = bytes.substr(program.directories[1], 12);
  const std::size_t entry = program.directories[1] + 16;
  const std::string image = bytes.substr(entry + 4, 4);
  bytes += header;
  AppendWord(bytes, kMost);
  AppendWord(bytes, kMost);
  for (std::uint32_t index = 0; index < kMost; ++index) {
    AppendDword(bytes, 0x80000000);
    AppendDword(bytes, 0xFFFFFFFF);
  }
  for (std::uint32_t number = 1; number <= kMost; ++number) {
    AppendDword(bytes, number);
    if (number > kMost - kListed) {
      bytes += image;
    } else {
      AppendDword(bytes, 0xFFFFFFFF);
    }
  }
  PutDword(bytes, program.directories[0] + 16 + 4, 0x80000000 | place);
  PutDword(bytes, program.resourceSection + 16, static_cast<std::uint32_t>(bytes.size() - program.resources));

  const TemporaryFolder folder;
  const std::filesystem::path path = folder.Write("many.exe", bytes);
  const Extraction extraction = ExtractCheaply(path);
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
}

TEST(PosixProgramIcon, ImageOutsideTheFileThatIsNotChosenDoesNoHarm) {
  const IconPicture picture = Square(32, 32, 0x111111);
  ProgramBytes program = BuildProgram(IconResources({Square(48, 32, 0x222222), picture}));
  PutDword(program.bytes, program.descriptions[0] + 4, 0x7FFFFFFF);
  const Extraction extraction = ExtractIconsOf(program.bytes);
  ASSERT_TRUE(Succeeded(extraction));
  EXPECT_TRUE(Shows(extraction.large.get(), 32, picture));
}

TEST(PosixProgramIcon, OneImageMoreThanAnyIconHasIsDamage) {
  const IconPicture picture = Square(32, 32, 0x111111);
  for (const std::size_t count : {1024, 1025}) {
    const std::vector<GroupEntry> entries(count, {1, StoredImage(picture)});
    const Extraction extraction = ExtractIconsOf(
        BuildProgram({{kIconImageType, {{1, ImageBytes(picture)}}}, {kIconGroupType, {{1, IconGroupBytes(entries)}}}})
            .bytes);
    EXPECT_TRUE(count == 1024 ? Succeeded(extraction) : FailedWith(extraction, kNoIconsFound, ERROR_INVALID_DATA))
        << count;
  }
}

TEST(PosixProgramIcon, MoreBytesOfImagesThanAnyIconHasAreDamage) {
  // 124 times the same 270,376 bytes are just below 32 MiB.
  const std::string image = ImageBytes(PatternPicture(256, 256, 32));
  ASSERT_EQ(image.size(), 40U + 256 * 256 * 4 + 256 * 256 / 8);
  for (const std::size_t count : {124, 125}) {
    const std::vector<GroupEntry> entries(count, {1, StoredImage(0, 0, 32, image)});
    const Extraction extraction = ExtractIconsOf(
        BuildProgram({{kIconImageType, {{1, image}}}, {kIconGroupType, {{1, IconGroupBytes(entries)}}}}).bytes);
    EXPECT_TRUE(count == 124 ? Succeeded(extraction) : FailedWith(extraction, kNoIconsFound, ERROR_INVALID_DATA))
        << count;
  }
}

TEST(PosixProgramIcon, MostSectionsThatTheSystemLoads) {
  EXPECT_TRUE(Succeeded(ExtractIconsOf(ProgramToDamage(ProgramKind::pe32, 94).bytes)));
}

}  // namespace
}  // namespace ondrel::test
