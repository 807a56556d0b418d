// Files that an icon is asked of, whole, damaged and of other kinds: both builds take and refuse the same ones, with
// the same words. What Windows is known to take otherwise is tabled in docs/formats.md and left out here.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platforms/two_platforms.h"
#include "support/executable_bytes.h"
#include "support/icon_bytes.h"
#include "support/little_endian_bytes.h"
#include "support/png_bytes.h"

namespace ondrel::test {
namespace {

struct IconFile {
  const char* name;
  std::string bytes;
  int exitCode;
};

std::string WithDword(std::string bytes, std::size_t offset, std::uint32_t value) {
  PutDword(bytes, offset, value);
  return bytes;
}

std::vector<IconFile> IconFiles() {
  constexpr std::size_t kDirectory = 6;
  constexpr std::size_t kDirectoryEntry = 16;
  const IconPicture large = PatternPicture(32, 32, 8);
  const IconPicture smallIcon = PatternPicture(16, 16, 32);
  const std::string icon = IconFileBytes({large, smallIcon});
  const std::string image = ImageBytes(large);
  const std::string png = PngBytes(PatternPng(32, 32, PngColour::trueColourAlpha, 8));
  const auto icons = [](const std::string& stored) { return IconFileBytes({StoredImage(32, 32, 32, stored)}); };
  const ProgramBytes program = BuildProgram(IconResources({large, smallIcon}));
  return {
      {"whole.ico", icon, 0},
      {"mixed.ico", IconFileBytes({StoredImage(32, 32, 32, png), large, smallIcon}), 0},
      {"unused.ico", IconFileBytes({large, smallIcon, StoredImage(64, 64, 32, "no image")}), 0},
      {"empty.ico", "", 1},
      {"text.ico", "<?xml version=\"1.0\"?>", 1},
      {"cursor.ico", IconFileBytes({large}, kCursorFileType), 1},
      {"none.ico", IconFileBytes({}), 1},
      {"directory.ico", icon.substr(0, kDirectory + kDirectoryEntry), 1},
      {"cut.ico", IconFileBytes({smallIcon, large}).substr(0, 2000), 1},
      {"header.ico", icons(image.substr(0, 30)), 1},
      {"depth.ico", icons(WithDword(image, 12, 1 | 2 << 16)), 1},
      {"compressed.ico", icons(WithDword(image, 16, 1)), 1},
      {"wide.ico", icons(WithDword(image, 4, 0x7FFFFFFF)), 1},
      {"away.ico", WithDword(icon, kDirectory + 12, 0x7FFFFFFF), 1},
      {"png.ico", icons(png), 0},
      {"cutpng.ico", icons(png.substr(0, png.size() - 20)), 1},
      {"badpng.ico", icons(png.substr(0, png.size() - 20) + std::string(20, '!')), 1},
      {"bomb.ico", icons(PngSignature() + PngHeader(30000, 30000, PngColour::grey, 1) + PngEnd()), 1},
      {"whole.exe", program.bytes, 0},
      {"whole32.dll", BuildProgram(IconResources({large, smallIcon}), ProgramKind::pe32).bytes, 0},
      {"bare.exe", BuildProgram({}).bytes, 1},
      {"dos.exe", std::string("MZ") + std::string(100, '\0'), 1},
      {"group.exe", BuildProgram({{kIconGroupType, {{1, IconGroupBytes({})}}}}).bytes, 1},
      {"image.exe", BuildProgram({{kIconGroupType, {{1, IconGroupBytes({{1, large}})}}}}).bytes, 1},
      {"cut.exe", program.bytes.substr(0, program.resources + 8), 1},
      {"loop.exe", WithDword(program.bytes, program.directories[0] + 20, 0x80000000), 1},
      {"far.exe", WithDword(program.bytes, program.directories[0] + 20, 0xFFFFFFF0), 1},
      {"magic.exe", WithDword(program.bytes, program.optionalHeader, 0x107), 1},
  };
}

TEST(IconFiles, AreTakenAndRefusedAlikeInTheSameWords) {
  const TemporaryFolder folder;
  for (const IconFile& file : IconFiles()) {
    folder.Write(file.name, file.bytes);
    const CommandResult native = Platforms()[0].Run("ondrel", {"icon", file.name}, folder.Path());
    const CommandResult windows = Platforms()[1].Run("ondrel", {"icon", file.name}, folder.Path());
    EXPECT_EQ(native.exitCode, file.exitCode) << file.name << ": " << Told(native);
    EXPECT_EQ(Told(windows), Told(native)) << file.name;
  }
}

TEST(IconFiles, ThatCannotBeReadAreRefusedInTheSameWords) {
  const TemporaryFolder folder;
  for (const char* const name : {"missing.ico", "missing/disk.ico", "missing\\disk.ico", ".", ""}) {
    const CommandResult native = Platforms()[0].Run("ondrel", {"icon", name}, folder.Path());
    const CommandResult windows = Platforms()[1].Run("ondrel", {"icon", name}, folder.Path());
    EXPECT_EQ(native.exitCode, 1) << name;
    EXPECT_EQ(Told(windows), Told(native)) << name;
  }
}

}  // namespace
}  // namespace ondrel::test
