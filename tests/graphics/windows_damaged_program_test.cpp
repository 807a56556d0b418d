// What Windows is kept from: its own reader takes what a program says of itself at its word, and may end the process
// over it.
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "graphics/damaged_programs.h"
#include "graphics/first_icon.h"
#include "graphics/icon_choice.h"
#include "support/little_endian_bytes.h"
#include "support/live_handles.h"

namespace ondrel::test {
namespace {

TEST(WindowsDamagedProgram, ImageOutsideTheFileIsDamageEvenWhenItIsNotChosenHere) {
  // The system may choose by what the group says; here counts what the images say of themselves.
  StoredImage stated = Square(48, 32, 0x222222);
  stated.statedWidth = stated.statedHeight = 32;
  StoredImage other = Square(32, 32, 0x111111);
  other.statedWidth = other.statedHeight = 48;
  ProgramBytes program = BuildProgram(IconResources({stated, other}));
  ASSERT_TRUE(EndedWith(FirstIconOf(program.bytes), ERROR_SUCCESS));
  PutDword(program.bytes, program.descriptions[0] + 4, 0x7FFFFFFF);
  EXPECT_TRUE(EndedWith(FirstIconOf(program.bytes), ERROR_INVALID_DATA));
}

TEST(WindowsDamagedProgram, EveryByteOfHeadersAndTreeSetToAnExtremeEndsInAStatusOrAnIcon) {
  const ProgramBytes program = ProgramToDamage();
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.Write("damaged.exe", program.bytes);
  int failures = 0;
  for (std::size_t offset = 0; offset < program.bytes.size(); ++offset) {
    const bool isPadding = offset >= program.resourceSection + 40 && offset < program.resources;
    const bool isPixels = offset >= program.data;
    if (isPadding || isPixels) continue;
    for (const unsigned value : {0x00U, 0x01U, 0x7FU, 0x80U, 0xFFU}) {
      std::string bytes = program.bytes;
      bytes[offset] = static_cast<char>(value);
      folder.Write("damaged.exe", bytes);
      const FirstIcon icon = FirstIconAt(path);
      if (EndedWith(icon, ERROR_SUCCESS)) continue;
      ++failures;
      ASSERT_TRUE(EndedWith(icon, ERROR_INVALID_DATA) || EndedWith(icon, ERROR_RESOURCE_DATA_NOT_FOUND))
          << "byte " << offset << " set to " << value << ": " << EndedWith(icon, ERROR_INVALID_DATA).message();
    }
  }
  EXPECT_GT(failures, 0);
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

}  // namespace
}  // namespace ondrel::test
