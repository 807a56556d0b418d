// Icon files of every form, cut at every byte, with every byte of their headers set to extremes, and with directories
// that lie, through the guard in front of the system: it would take them at their word, and may end the process.
#include <string>

#include <gtest/gtest.h>
#include <ondrel/platform/graphics.h>

#include "graphics/damaged_icon_files.h"
#include "support/live_handles.h"
#include "support/png_bytes.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

class WindowsIconDamageOf : public testing::TestWithParam<GoodIconFile> {};

/// The status of a file, which comes with both icons or with none.
HRESULT StatusOf(const std::filesystem::path& path) {
  platform::UniqueIcon large;
  platform::UniqueIcon smallIcon;
  const HRESULT status = platform::ExtractFirstIcon(Wide(path), large, smallIcon);
  EXPECT_EQ(large != nullptr, status == S_OK);
  EXPECT_EQ(smallIcon != nullptr, status == S_OK);
  return status;
}

TEST_P(WindowsIconDamageOf, EveryCutEndsInItsStatus) {
  const GoodIconFile& file = GetParam();
  // The system would read on behind a mask that is cut: what it may choose must be whole.
  CutEverywhere(file, [&](const std::filesystem::path& path, std::size_t length) {
    const HRESULT expected = length < kIconFileHeaderBytes ? kNoIcon : length < file.whole ? kInvalidData : S_OK;
    ASSERT_EQ(StatusOf(path), expected) << length << " bytes";
  });
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

TEST_P(WindowsIconDamageOf, EveryExtremeInAHeaderEndsInAStatusOrInIcons) {
  SetHeaderBytesToExtremes(GetParam(), [&](const std::filesystem::path& path, std::size_t place, unsigned value) {
    const HRESULT status = StatusOf(path);
    ASSERT_TRUE(status == S_OK || status == kInvalidData || (status == kNoIcon && place < kIconFileHeaderBytes))
        << "byte " << place << " set to " << value << ": " << std::hex << status;
  });
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

void Put(std::string& bytes, std::size_t offset, std::uint32_t value) {
  for (std::size_t byte = 0; byte < 4; ++byte) bytes[offset + byte] = static_cast<char>(value >> (8 * byte));
}

/// A good file, but for a third image: the directory calls it the best for the large icon, and gives it this length; by
/// its own header it is another one. So the reader passes it over, and the system takes it.
std::string FileWithALie(const std::string& image, std::size_t length) {
  std::string file = IconFileBytes({StoredImage(PatternPicture(48, 48, 32)), StoredImage(PatternPicture(16, 16, 32)),
                                    StoredImage(32, 32, 32, image)});
  constexpr std::size_t kThirdLength = 6 + 2 * 16 + 8;
  Put(file, kThirdLength, static_cast<std::uint32_t>(length));
  return file;
}

HRESULT StatusOfBytes(const std::string& file) {
  const TemporaryFolder folder;
  return StatusOf(folder.Write("lie.ico", file));
}

TEST(WindowsIconDamage, ImagesThatTheDirectoryLiesAboutAreNotReadBeyondTheFile) {
  const std::string image = ImageBytes(PatternPicture(64, 64, 32));
  ASSERT_EQ(StatusOfBytes(FileWithALie(image, image.size())), S_OK);
  for (const std::size_t length : {std::size_t{40}, std::size_t{100}, image.size() - 64 * 64}) {
    for (const std::size_t stated : {length, image.size(), std::size_t{0x10000}, std::size_t{0x7FFFFFFF}}) {
      EXPECT_EQ(StatusOfBytes(FileWithALie(image.substr(0, length), stated)), kInvalidData)
          << length << " bytes, said to be " << stated;
    }
  }
  const std::string png = PngBytes(PatternPng(64, 64, PngColour::trueColourAlpha, 8));
  EXPECT_EQ(StatusOfBytes(FileWithALie(png.substr(0, 1000), 0x10000)), kInvalidData);
}

TEST(WindowsIconDamage, ImagesThatClaimMorePixelsThanThereAreAreNotRead) {
  constexpr std::size_t kWidth = 4;
  constexpr std::size_t kHeight = 8;
  // Of some of these the bytes are 0 or few when they are counted in 32 bits.
  for (const std::uint32_t width : {0x8000U, 0x10000U, 0x20000000U, 0x40000000U, 0x7FFFFFFFU, 0x08000001U}) {
    for (const std::uint32_t height : {0x10U, 0x10000U, 0x20000U, 0x40000000U, 0x7FFFFFFEU, 0xFFFFFFC0U, 0x80000000U}) {
      std::string image = ImageBytes(PatternPicture(32, 32, 32));
      Put(image, kWidth, width);
      Put(image, kHeight, height);
      EXPECT_EQ(StatusOfBytes(FileWithALie(image, image.size())), kInvalidData) << width << " x " << height / 2;
    }
  }
  EXPECT_EQ(StatusOfBytes(FileWithALie(
                PngSignature() + PngHeader(30000, 30000, PngColour::grey, 1) + PngChunk("IDAT", "") + PngEnd(), 100)),
            kInvalidData);
}

INSTANTIATE_TEST_SUITE_P(Files, WindowsIconDamageOf, testing::ValuesIn(GoodIconFiles()), NameOfGoodFile);

}  // namespace
}  // namespace ondrel::test
