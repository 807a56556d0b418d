// Definitions compiled by both builds: the images are the same, byte for byte.
#include <gtest/gtest.h>

#include <ondrel/MMCObjectSet.h>

#include "platforms/definitions.h"
#include "platforms/two_platforms.h"

namespace ondrel::test {
namespace {

constexpr const char* kNativeImage = "native.img";
constexpr const char* kWindowsImage = "windows.img";

void CompileOnBoth(const TemporaryFolder& folder) {
  for (const Platform& platform : Platforms()) {
    const char* const image = platform.Name() == "Windows" ? kWindowsImage : kNativeImage;
    const CommandResult result = platform.Run("ondrel", {"compile", kDefinition, "-o", image}, folder.Path());
    ASSERT_EQ(result.exitCode, 0) << platform.Name() << ": " << Told(result);
  }
}

// Where two runs of bytes part, or that they do not: megabytes make no message.
::testing::AssertionResult SameBytes(const std::string& left, const std::string& right) {
  if (left == right) return ::testing::AssertionSuccess();
  const auto [at, other] = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  return ::testing::AssertionFailure() << left.size() << " and " << right.size() << " bytes, which part at "
                                       << at - left.begin();
}

::testing::AssertionResult SameImages(const TemporaryFolder& folder) {
  return SameBytes(ReadBytes(folder / kNativeImage), ReadBytes(folder / kWindowsImage));
}

TEST(Images, AreTheSameForEveryKindOfObjectAndEveryCount) {
  for (unsigned variant = 0; variant < 8; ++variant) {
    const TemporaryFolder folder;
    WriteDefinition(folder, variant, DefinitionText::everything);
    ASSERT_NO_FATAL_FAILURE(CompileOnBoth(folder));
    EXPECT_TRUE(SameImages(folder)) << "variant " << variant;
    EXPECT_GT(std::filesystem::file_size(folder / kNativeImage), 1U << 20) << "the largest code file alone has that";
  }
}

TEST(Images, AreTheSameForIconsOfOneColour) {
  const TemporaryFolder folder;
  WriteSolidIconDefinition(folder);
  ASSERT_NO_FATAL_FAILURE(CompileOnBoth(folder));
  EXPECT_TRUE(SameImages(folder));
}

// The geometry of a bitmap as an image begins to hold it: type, width, height and bytes of a row, planes and bits.
std::string Geometry(int size, int bitsPerPixel) {
  const int row = size * bitsPerPixel / 8;
  std::string bytes;
  for (const int number : {0, size, size, row}) {
    for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<char>(number >> shift));
  }
  return bytes + std::string{1, 0, static_cast<char>(bitsPerPixel), 0};
}

// Wine makes the small image of an icon by shrinking the large one, so only the large images can be compared here.
TEST(Images, HoldTheSameLargeImagesOfIconsOfEveryDepth) {
  const TemporaryFolder folder;
  WriteIconDefinition(folder);
  ASSERT_NO_FATAL_FAILURE(CompileOnBoth(folder));
  const std::string native = ReadBytes(folder / kNativeImage);
  const std::string windows = ReadBytes(folder / kWindowsImage);
  ASSERT_EQ(native.size(), windows.size());

  int compared = 0;
  const std::string start = Geometry(32, 32);
  const std::string next = Geometry(16, 32);
  for (std::size_t at = native.find(start); at != std::string::npos; at = native.find(start, at + 1)) {
    // The large colours and mask stand in one run before the small images.
    const std::size_t end = native.find(next, at);
    ASSERT_NE(end, std::string::npos);
    EXPECT_TRUE(SameBytes(native.substr(at, end - at), windows.substr(at, end - at))) << "icon " << compared;
    EXPECT_GT(end - at, 32U * 32 * 4 + 32 * 4) << "colours and mask";
    ++compared;
  }
  EXPECT_EQ(compared, kIconFiles);
}

}  // namespace
}  // namespace ondrel::test
