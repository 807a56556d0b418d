// A bitmap's binary form: six numbers and the pixel bytes.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <ondrel/MMCObjectBitmap.h>
#include <ondrel/platform/framework.h>

#include "model/bitmap_buffer.h"
#include "support/archive_bytes.h"
#include "support/model/hand_bytes.h"
#include "support/print_text.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

std::string StoredBitmap(const CMMCObjectBitmap& bitmap) {
  return Stored([&](CVellum& archive) { bitmap.Serialize(archive); });
}

// Type 0x11, 2 x 1 pixels, 0x13 bytes per row, 3 planes, 24 bits, 5 bytes: numbers that fit nothing but this order.
const std::string kOddBitmap = FromHex(
    "11 00 00 00  02 00 00 00  01 00 00 00  13 00 00 00  03 00  18 00"
    "05 00 00 00  A1 A2 A3 A4 A5");

TEST(BitmapBinary, TheFieldsStandInTheirOrderWithTheirWidths) {
  CMMCObjectBitmap bitmap(2, 1, 1, 32);
  std::memcpy(bitmap.GetBuffer(), "\xA1\xA2\xA3\xA4\xB1\xB2\xB3\xB4", 8);
  bitmap.bmType = 0x01020304;
  bitmap.bmWidthBytes = -2;
  EXPECT_EQ(Hex(StoredBitmap(bitmap)),
            Hex(FromHex("04 03 02 01"                           // type
                        "02 00 00 00"                           // width
                        "01 00 00 00"                           // height
                        "FE FF FF FF"                           // bytes per row
                        "01 00"                                 // planes
                        "20 00"                                 // bits per pixel
                        "08 00 00 00  A1 A2 A3 A4 B1 B2 B3 B4"  // pixels
                        )));
}

TEST(BitmapBinary, AnEmptyBitmapIsSixZerosAndAnEmptyVector) {
  EXPECT_EQ(Hex(StoredBitmap(CMMCObjectBitmap())), Hex(std::string(24, '\0')));
}

TEST(BitmapBinary, LoadingFillsEveryFieldAndPointsAtTheNewPixels) {
  LoadingArchive archive(kOddBitmap);
  CMMCObjectBitmap bitmap;
  bitmap.Deserialize(*archive);
  EXPECT_EQ(bitmap.bmType, 0x11);
  EXPECT_EQ(bitmap.bmWidth, 2);
  EXPECT_EQ(bitmap.bmHeight, 1);
  EXPECT_EQ(bitmap.bmWidthBytes, 0x13);
  EXPECT_EQ(bitmap.bmPlanes, 3);
  EXPECT_EQ(bitmap.bmBitsPixel, 24);
  EXPECT_EQ(Hex(BufferOf(bitmap)), "A1 A2 A3 A4 A5") << "the length is what was stored, not what the geometry says";
  EXPECT_EQ(bitmap.bmBits, bitmap.GetBuffer());
  EXPECT_EQ(archive.Unused(), 0U);
  EXPECT_EQ(Hex(StoredBitmap(bitmap)), Hex(kOddBitmap));
}

TEST(BitmapBinary, LoadingReplacesWhatTheBitmapHad) {
  CMMCObjectBitmap bitmap(16, 16, 1, 32);
  LoadingArchive archive(kOddBitmap);
  bitmap.Deserialize(*archive);
  EXPECT_EQ(Hex(StoredBitmap(bitmap)), Hex(kOddBitmap));
  EXPECT_EQ(bitmap.bmBits, bitmap.GetBuffer());

  LoadingArchive empty(std::string(24, '\0'));
  bitmap.Deserialize(*empty);
  EXPECT_EQ(bitmap.bmBits, nullptr);
  EXPECT_EQ(bitmap.GetLength(), 0U);
}

TEST(BitmapBinary, EveryDepthComesBackUnchanged) {
  for (const WORD depth : {WORD{1}, WORD{4}, WORD{8}, WORD{16}, WORD{24}, WORD{32}}) {
    CMMCObjectBitmap bitmap(16, 3, 1, depth);
    auto* const bytes = static_cast<unsigned char*>(bitmap.GetBuffer());
    for (DWORD index = 0; index < bitmap.GetLength(); ++index) bytes[index] = static_cast<unsigned char>(index * 7 + 1);
    const std::string stored = StoredBitmap(bitmap);

    LoadingArchive archive(stored);
    CMMCObjectBitmap loaded;
    loaded.Deserialize(*archive);
    EXPECT_EQ(loaded.bmType, 0);
    EXPECT_EQ(loaded.bmWidth, 16);
    EXPECT_EQ(loaded.bmHeight, 3);
    EXPECT_EQ(loaded.bmWidthBytes, 2 * depth);
    EXPECT_EQ(loaded.bmPlanes, 1);
    EXPECT_EQ(loaded.bmBitsPixel, depth);
    EXPECT_EQ(loaded.bmBits, loaded.GetBuffer());
    EXPECT_NE(loaded.bmBits, bitmap.bmBits);
    EXPECT_EQ(Hex(BufferOf(loaded)), Hex(BufferOf(bitmap)));
    EXPECT_EQ(archive.Unused(), 0U);
  }
}

TEST(BitmapBinary, StoringOnALoadingArchiveRaisesReadOnlyWithItsName) {
  LoadingArchive archive(kOddBitmap);
  archive->m_strFileName = _T("picture.bin");
  const auto raised = Raised<CArchiveException>([&] { CMMCObjectBitmap().Serialize(*archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::readOnly);
  EXPECT_EQ(raised->m_strFileName, CString(_T("picture.bin")));
}

TEST(BitmapBinary, LoadingOnAStoringArchiveRaisesWriteOnlyWithItsName) {
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  archive.m_strFileName = _T("picture.bin");
  CMMCObjectBitmap bitmap(2, 1, 1, 32);
  const auto raised = Raised<CArchiveException>([&] { bitmap.Deserialize(archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::writeOnly);
  EXPECT_EQ(raised->m_strFileName, CString(_T("picture.bin")));
  EXPECT_EQ(bitmap.GetLength(), 8U);
}

TEST(BitmapBinary, AnEarlyEndKeepsTheFieldsThatWereRead) {
  for (std::size_t length = 0; length < kOddBitmap.size(); ++length) {
    LoadingArchive archive(kOddBitmap.substr(0, length));
    CMMCObjectBitmap bitmap(1, 1, 1, 32);
    const auto raised = Raised<CArchiveException>([&] { bitmap.Deserialize(*archive); });
    ASSERT_TRUE(raised) << length << " bytes";
    EXPECT_EQ(raised->m_cause, CArchiveException::endOfFile) << length << " bytes";
    EXPECT_EQ(bitmap.bmType, length >= 4 ? 0x11 : 0) << length << " bytes";
    EXPECT_EQ(bitmap.bmWidth, length >= 8 ? 2 : 1) << length << " bytes";
    EXPECT_EQ(bitmap.bmWidthBytes, length >= 16 ? 0x13 : 4) << length << " bytes";
    EXPECT_EQ(bitmap.bmPlanes, length >= 18 ? 3 : 1) << length << " bytes";
    EXPECT_EQ(bitmap.bmBitsPixel, length >= 20 ? 24 : 32) << length << " bytes";
    EXPECT_EQ(bitmap.bmBits, bitmap.GetBuffer()) << length << " bytes";
    EXPECT_EQ(bitmap.GetPixel(0, 0), 0U);
  }
}

TEST(BitmapBinary, ALengthThatTheDataDoesNotHoldEndsQuickly) {
  const std::string head = kOddBitmap.substr(0, 20);
  LoadingArchive archive(head + FromHex("FF FF FF FF") + "abc");
  CMMCObjectBitmap bitmap;
  const auto raised = Raised<CArchiveException>([&] { bitmap.Deserialize(*archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::endOfFile);
}

}  // namespace
}  // namespace ondrel::test
