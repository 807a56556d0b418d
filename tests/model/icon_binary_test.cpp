// An icon's binary form: four bitmaps, nothing else.

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCObjectIcon.h>
#include <ondrel/platform/framework.h>

#include "support/archive_bytes.h"
#include "support/model/icon_fixtures.h"
#include "support/print_text.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

std::string StoredIcon(const CMMCObjectIcon& icon) {
  return Stored([&](CVellum& archive) { icon.Serialize(archive); });
}

TEST(IconBinary, AnEmptyIconIsFourEmptyBitmaps) {
  EXPECT_EQ(Hex(StoredIcon(CMMCObjectIcon())), Hex(std::string(4 * 24, '\0')));
}

TEST(IconBinary, TheBitmapsStandLargeColourLargeMaskSmallColourSmallMask) {
  LoadingArchive archive(TinyIconBytes());
  CMMCObjectIcon icon;
  icon.Deserialize(*archive);
  EXPECT_EQ(archive.Unused(), 0U);
  EXPECT_EQ(icon.GetColourBitmap(true).bmWidth, 2);
  EXPECT_EQ(icon.GetColourBitmap(true).bmBitsPixel, 32);
  EXPECT_EQ(icon.GetColourBitmap(false).bmWidth, 1);
  EXPECT_EQ(icon.GetPixel(true, 0, 0, 0x00ABCDEF), 0x00010203U);
  EXPECT_EQ(icon.GetPixel(true, 1, 0, 0x00ABCDEF), 0x00ABCDEFU) << "the second bitmap is the large mask";
  EXPECT_EQ(icon.GetPixel(false, 0, 0, 0x00ABCDEF), 0x00ABCDEFU) << "the fourth bitmap is the small mask";
  EXPECT_EQ(Hex(StoredIcon(icon)), Hex(TinyIconBytes()));
}

/// What an icon from a file with both images is written as.
std::string StoredIconFromFile() {
  const TemporaryFolder folder;
  IconPicture large = SolidIcon(32, 0x00112233);
  large.transparent[0] = true;
  IconPicture smallIcon = SolidIcon(16, 0x00445566);
  smallIcon.transparent[15] = true;
  CMMCObjectIcon icon;
  EXPECT_EQ(icon.Construct(WriteIcon(folder, "icon.ico", {large, smallIcon})), S_OK);
  return StoredIcon(icon);
}

/// Its large colour image and mask.
std::string LargeBytes() {
  std::string pixels;
  for (int pixel = 0; pixel < 32 * 32; ++pixel) pixels += FromHex("11 22 33 FF");
  return BitmapBytes(32, 32, 128, 32, pixels) +
         BitmapBytes(32, 32, 4, 1, FromHex("80 00 00 00") + std::string(31 * 4, '\0'));
}

TEST(IconBinary, AnIconFromAFileBeginsWithItsLargeImage) {
  EXPECT_EQ(Hex(StoredIconFromFile().substr(0, LargeBytes().size())), Hex(LargeBytes()));
}

TEST(IconBinary, AnIconFromAFileIsWrittenAsItsPicturesSay) {
  std::string smallPixels;
  for (int pixel = 0; pixel < 16 * 16; ++pixel) smallPixels += FromHex("44 55 66 FF");
  const std::string expected = LargeBytes() + BitmapBytes(16, 16, 64, 32, smallPixels) +
                               BitmapBytes(16, 16, 2, 1, FromHex("00 01") + std::string(15 * 2, '\0'));
  EXPECT_EQ(Hex(StoredIconFromFile()), Hex(expected));
}

TEST(IconBinary, StoringOnALoadingArchiveRaisesReadOnly) {
  LoadingArchive archive(TinyIconBytes());
  const auto raised = Raised<CArchiveException>([&] { CMMCObjectIcon().Serialize(*archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::readOnly);
}

TEST(IconBinary, LoadingOnAStoringArchiveRaisesWriteOnly) {
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  CMMCObjectIcon icon;
  const auto raised = Raised<CArchiveException>([&] { icon.Deserialize(archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::writeOnly);
}

TEST(IconBinary, AnEarlyEndKeepsWhatWasLoaded) {
  const std::string whole = TinyIconBytes();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    LoadingArchive archive(whole.substr(0, length));
    CMMCObjectIcon icon;
    const auto raised = Raised<CArchiveException>([&] { icon.Deserialize(*archive); });
    ASSERT_TRUE(raised) << length << " bytes";
    EXPECT_EQ(raised->m_cause, CArchiveException::endOfFile) << length << " bytes";
    const std::size_t largeColour = 24 + 16;
    EXPECT_EQ(icon.GetColourBitmap(true).bmBits != nullptr, length >= largeColour) << length << " bytes";
    EXPECT_EQ(icon.GetColourBitmap(false).bmBits != nullptr, length >= largeColour + 24 + 4 + 24 + 4)
        << length << " bytes";
  }
}

}  // namespace
}  // namespace ondrel::test
