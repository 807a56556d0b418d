// Pixels of a bitmap: which byte or bit a pixel is, which depths can be addressed, and what lies outside.

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

#include <ondrel/MMCObjectBitmap.h>

#include "model/bitmap_buffer.h"
#include "support/archive_bytes.h"
#include "support/model/hand_bytes.h"

namespace ondrel::test {
namespace {

constexpr DWORD kWhite = 0x00FFFFFF;

void Fill(CMMCObjectBitmap& bitmap, const std::string& pixels) {
  ASSERT_EQ(pixels.size(), bitmap.GetLength());
  std::copy(pixels.begin(), pixels.end(), static_cast<char*>(bitmap.GetBuffer()));
}

TEST(BitmapPixels, AColourIsStoredBlueGreenRed) {
  CMMCObjectBitmap bitmap(3, 2, 1, 32);
  bitmap.SetPixel(2, 1, 0x00112233);
  EXPECT_EQ(Hex(BufferOf(bitmap)),
            Hex(FromHex("00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00  11 22 33 00")));
  EXPECT_EQ(bitmap.GetPixel(2, 1), 0x00112233U);
  EXPECT_EQ(bitmap.GetPixel(1, 1), 0U);
  EXPECT_EQ(bitmap.GetPixel(2, 0), 0U);
}

TEST(BitmapPixels, TheFourthByteIsNeitherReadNorWritten) {
  CMMCObjectBitmap bitmap(2, 1, 1, 32);
  Fill(bitmap, FromHex("01 02 03 AA  04 05 06 BB"));
  EXPECT_EQ(bitmap.GetPixel(1, 0), 0x00040506U);
  bitmap.SetPixel(1, 0, 0xFF778899);
  EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(FromHex("01 02 03 AA  77 88 99 BB")));
  EXPECT_EQ(bitmap.GetPixel(1, 0), 0x00778899U);
}

TEST(BitmapPixels, RowsLieRowBytesApart) {
  CMMCObjectBitmap bitmap(1, 2, 1, 32);
  bitmap.bmHeight = 3;
  bitmap.Construct();
  bitmap.bmHeight = 2;
  bitmap.bmWidthBytes = 8;  // as the platform's rows can be, wider than their pixels
  Fill(bitmap, FromHex("01 02 03 00  EE EE EE EE  04 05 06 00"));
  EXPECT_EQ(bitmap.GetPixel(0, 1), 0x00040506U);
  bitmap.SetPixel(0, 1, 0x00070809);
  EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(FromHex("01 02 03 00  EE EE EE EE  07 08 09 00")));
}

TEST(BitmapPixels, TheHighestBitOfAMaskByteIsTheLeftmostPixel) {
  CMMCObjectBitmap bitmap(16, 2, 1, 1);
  Fill(bitmap, FromHex("81 40  00 01"));
  for (int y = 0; y < 2; ++y) {
    for (int x = 0; x < 16; ++x) {
      const bool set = y == 0 ? x == 0 || x == 7 || x == 9 : x == 15;
      EXPECT_EQ(bitmap.GetPixel(x, y), set ? kWhite : 0U) << x << ", " << y;
    }
  }
}

TEST(BitmapPixels, MasksAreReadAndNeverDrawn) {
  CMMCObjectBitmap bitmap(16, 16, 1, 1);
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 16; ++x) {
      bitmap.SetPixel(x, y, kWhite);
      EXPECT_EQ(bitmap.GetPixel(x, y), 0U) << x << ", " << y;
    }
  }
  EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(std::string(32, '\0')));
  Fill(bitmap, std::string(32, '\xFF'));
  bitmap.SetPixel(3, 3, 0);
  EXPECT_EQ(bitmap.GetPixel(3, 3), kWhite);
}

TEST(BitmapPixels, OtherDepthsReadBlackAndIgnoreWrites) {
  for (const WORD depth : {WORD{4}, WORD{8}, WORD{16}, WORD{24}, WORD{64}, WORD{0}, WORD{2}}) {
    CMMCObjectBitmap bitmap(8, 2, 1, depth);
    const std::string pixels(bitmap.GetLength(), '\x5A');
    Fill(bitmap, pixels);
    for (int x = 0; x < 8; ++x) {
      EXPECT_EQ(bitmap.GetPixel(x, 1), 0U) << "depth " << depth << ", pixel " << x;
      bitmap.SetPixel(x, 1, kWhite);
    }
    EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(pixels)) << "depth " << depth;
  }
}

TEST(BitmapPixels, PixelsOutsideTheGeometryReadBlackAndIgnoreWrites) {
  constexpr int kMost = std::numeric_limits<int>::max();
  constexpr int kLeast = std::numeric_limits<int>::min();
  for (const WORD depth : {WORD{1}, WORD{32}}) {
    CMMCObjectBitmap bitmap(8, 8, 1, depth);
    const std::string pixels(bitmap.GetLength(), '\xFF');
    Fill(bitmap, pixels);
    for (const int outside : {-1, 8, 9, -8, 64, 1000000, kMost, kLeast, kMost / 4 + 1}) {
      EXPECT_EQ(bitmap.GetPixel(outside, 0), 0U) << "x " << outside << ", depth " << depth;
      EXPECT_EQ(bitmap.GetPixel(0, outside), 0U) << "y " << outside << ", depth " << depth;
      EXPECT_EQ(bitmap.GetPixel(outside, outside), 0U) << outside << ", depth " << depth;
      EXPECT_EQ(bitmap.GetPixel(outside, 4), 0U) << "x " << outside << " of row 4, depth " << depth;
      EXPECT_EQ(bitmap.GetPixel(4, outside), 0U) << "y " << outside << " of column 4, depth " << depth;
      bitmap.SetPixel(outside, 0, 0x00112233);
      bitmap.SetPixel(0, outside, 0x00112233);
      bitmap.SetPixel(outside, outside, 0x00112233);
      bitmap.SetPixel(outside, 4, 0x00112233);
      bitmap.SetPixel(4, outside, 0x00112233);
    }
    EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(pixels)) << "depth " << depth;
  }
}

TEST(BitmapPixels, PixelsBeyondATruncatedRowReadBlack) {
  CMMCObjectBitmap bitmap(10, 1, 1, 1);
  Fill(bitmap, "\xFF");
  EXPECT_EQ(bitmap.GetPixel(7, 0), kWhite);
  EXPECT_EQ(bitmap.GetPixel(8, 0), 0U);
  EXPECT_EQ(bitmap.GetPixel(9, 0), 0U);
}

TEST(BitmapPixels, RowsOfLessThanAByteAllBeginAtTheFirst) {
  CMMCObjectBitmap bitmap(4, 2, 1, 1);
  ASSERT_EQ(bitmap.bmWidthBytes, 0);
  Fill(bitmap, "\xA0");
  for (const int y : {0, 1}) {
    EXPECT_EQ(bitmap.GetPixel(0, y), kWhite) << "row " << y;
    EXPECT_EQ(bitmap.GetPixel(1, y), 0U) << "row " << y;
    EXPECT_EQ(bitmap.GetPixel(2, y), kWhite) << "row " << y;
    EXPECT_EQ(bitmap.GetPixel(3, y), 0U) << "row " << y;
  }
}

TEST(BitmapPixels, ABufferShorterThanTheGeometryIsNotLeft) {
  CMMCObjectBitmap colour(2, 2, 1, 32);
  Fill(colour, std::string(16, '\xFF'));
  colour.bmHeight = 1000;  // the buffer stays
  colour.bmWidth = 1000;
  EXPECT_EQ(colour.GetPixel(2, 1), 0U) << "would be the four bytes behind the buffer";
  EXPECT_EQ(colour.GetPixel(999, 999), 0U);
  colour.SetPixel(999, 999, 0x00112233);
  EXPECT_EQ(colour.GetPixel(1, 1), kWhite);
  colour.bmWidthBytes = 9;
  EXPECT_EQ(colour.GetPixel(1, 1), 0U) << "three bytes of it would be in the buffer";

  CMMCObjectBitmap mask(8, 1, 1, 1);
  Fill(mask, "\xFF");
  mask.bmHeight = 2;
  EXPECT_EQ(mask.GetPixel(0, 1), 0U);
}

TEST(BitmapPixels, ABufferLongerThanTheGeometryEndsAtTheGeometry) {
  for (const WORD depth : {WORD{1}, WORD{32}}) {
    CMMCObjectBitmap bitmap(8, 8, 1, depth);
    const std::string pixels(bitmap.GetLength(), '\xFF');
    Fill(bitmap, pixels);
    bitmap.bmHeight = 2;
    EXPECT_EQ(bitmap.GetPixel(0, 1), kWhite) << "depth " << depth;
    EXPECT_EQ(bitmap.GetPixel(0, 2), 0U) << "depth " << depth;
    bitmap.SetPixel(0, 2, 0x00112233);
    EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(pixels)) << "depth " << depth;
  }
}

TEST(BitmapPixels, RowBytesThatLeadOutsideTheBufferAreSafe) {
  constexpr LONG kMost = std::numeric_limits<LONG>::max();
  constexpr LONG kLeast = std::numeric_limits<LONG>::min();
  for (const LONG rowBytes : {kMost, kLeast, LONG{-8}, LONG{1000000}}) {
    for (const WORD depth : {WORD{1}, WORD{32}}) {
      CMMCObjectBitmap bitmap(8, 8, 1, depth);
      const std::string pixels(bitmap.GetLength(), '\xFF');
      Fill(bitmap, pixels);
      bitmap.bmWidthBytes = rowBytes;
      EXPECT_EQ(bitmap.GetPixel(7, 7), 0U) << "row bytes " << rowBytes << ", depth " << depth;
      bitmap.SetPixel(7, 7, 0x00112233);
      EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(pixels)) << "row bytes " << rowBytes << ", depth " << depth;
    }
  }
}

TEST(BitmapPixels, NegativeRowBytesLeadToNoPixelEvenInsideTheBuffer) {
  CMMCObjectBitmap bitmap(2, 2, 1, 32);
  Fill(bitmap, std::string(16, '\xFF'));
  bitmap.bmWidthBytes = -4;
  EXPECT_EQ(bitmap.GetPixel(1, 1), 0U) << "would be the first pixel";
  bitmap.SetPixel(1, 1, 0x00112233);
  EXPECT_EQ(Hex(BufferOf(bitmap)), Hex(std::string(16, '\xFF')));
}

TEST(BitmapPixels, AnEmptyBitmapReadsBlack) {
  CMMCObjectBitmap bitmap;
  EXPECT_EQ(bitmap.GetPixel(0, 0), 0U);
  bitmap.SetPixel(0, 0, kWhite);
  bitmap.bmBitsPixel = 32;
  bitmap.bmWidth = 4;
  bitmap.bmHeight = 4;
  EXPECT_EQ(bitmap.GetPixel(0, 0), 0U);
  bitmap.SetPixel(0, 0, kWhite);
  EXPECT_EQ(bitmap.GetPixel(0, 0), 0U);
  EXPECT_EQ(bitmap.GetLength(), 0U);
}

}  // namespace
}  // namespace ondrel::test
