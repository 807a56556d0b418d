// PNG images that are small and claim or unfold into much: each ends in a status or in icons, soon and in little
// memory.
#include <chrono>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "graphics/posix_extraction_costs.h"
#include "support/png_bytes.h"

namespace ondrel::test {
namespace {

constexpr std::uint32_t kLongestChunk = 0x7FFFFFFF;

std::string FileOfPng(const std::string& png) { return IconFileBytes({StoredImage(32, 32, 32, png)}); }

testing::AssertionResult IsRefusedPng(const std::string& png, const MostCosts& most = {}) {
  return FailedWith(ExtractCheaplyOf(FileOfPng(png), most), kNoIconsFound, ERROR_INVALID_DATA);
}

PngPicture BombPicture() { return PatternPng(32, 32, PngColour::trueColourAlpha, 8); }

std::string BombPixels() { return PngChunk("IDAT", Deflated(PngRows(BombPicture()))); }

/// The picture with something between its header and its pixels.
std::string WithChunks(const std::string& chunks) {
  return PngSignature() + PngHeader(32, 32, PngColour::trueColourAlpha, 8) + chunks + BombPixels() + PngEnd();
}

testing::AssertionResult ShowsThePicture(const std::string& png, const MostCosts& most = {}) {
  const Extraction extraction = ExtractCheaplyOf(FileOfPng(png), most);
  if (const auto succeeded = Succeeded(extraction); !succeeded) return succeeded;
  return Shows(extraction.large.get(), 32, Uncompressed(BombPicture()));
}

/// An image of zeros with as many pixels as there may be.
std::string ZeroPng(std::uint32_t width, std::uint32_t height, int depth, bool interlaced) {
  // A MiB for each byte of a pixel, and one for the filter of each row.
  const auto mebibytes = static_cast<std::uint32_t>(4 * depth / 8 + 1);
  return PngSignature() + PngHeader(width, height, PngColour::trueColourAlpha, depth, interlaced) +
         PngChunk("IDAT", DeflatedZeros(mebibytes)) + PngEnd();
}

TEST(PosixPngBomb, SizesBeyondAnyImageAreRefusedUnread) {
  struct Size {
    std::uint32_t width, height;
  };
  for (const Size& size :
       {Size{30000, 30000}, Size{1048577, 1}, Size{15, 65537}, Size{1025, 1024}, Size{kLongestChunk, kLongestChunk},
        Size{0x80000000, 1}, Size{0xFFFFFFFF, 0xFFFFFFFF}, Size{0, 32}, Size{32, 0}, Size{0x10000, 0x10000}}) {
    EXPECT_TRUE(IsRefusedPng(PngSignature() + PngHeader(size.width, size.height, PngColour::grey, 1) +
                             PngChunk("IDAT", DeflatedZeros(1)) + PngEnd()))
        << size.width << " x " << size.height;
  }
}

TEST(PosixPngBomb, MostPixelsInAnyShapeAreShown) {
  struct Size {
    std::uint32_t width, height;
  };
  for (const Size& size : {Size{1048576, 1}, Size{16, 65536}, Size{1024, 1024}}) {
    for (const bool interlaced : {false, true}) {
      for (const int depth : {8, 16}) {
        const std::string png = ZeroPng(size.width, size.height, depth, interlaced);
        EXPECT_TRUE(Succeeded(ExtractCheaplyOf(FileOfPng(png), kMostOfLargest)))
            << size.width << " x " << size.height << ", " << depth << " bits" << (interlaced ? ", interlaced" : "");
      }
    }
  }
}

TEST(PosixPngBomb, PixelsThatUnfoldIntoMuchMoreThanThePictureAreRefused) {
  const std::string start = PngSignature() + PngHeader(32, 32, PngColour::trueColourAlpha, 8);
  const std::string zeros = DeflatedZeros(8 * 1024);
  EXPECT_TRUE(IsRefusedPng(start + PngChunk("IDAT", zeros) + PngEnd()));
  std::string pieces;
  constexpr std::size_t kPiece = 8192;
  for (std::size_t place = 0; place < zeros.size(); place += kPiece) {
    pieces += PngChunk("IDAT", zeros.substr(place, kPiece));
  }
  EXPECT_TRUE(IsRefusedPng(start + pieces + PngEnd()));
}

TEST(PosixPngBomb, AFewPixelsTooManyDoNoHarm) {
  const std::string start = PngSignature() + PngHeader(32, 32, PngColour::trueColourAlpha, 8);
  const std::string rows = PngRows(BombPicture()) + std::string(100'000, '\0');
  EXPECT_TRUE(ShowsThePicture(start + PngChunk("IDAT", Deflated(rows)) + PngEnd()));
  const std::string behind = Deflated(PngRows(BombPicture())) + std::string(1000, '\0');
  EXPECT_TRUE(ShowsThePicture(start + PngChunk("IDAT", behind) + PngEnd()));
}

TEST(PosixPngBomb, ChunksThatUnfoldIntoGigabytesAreSteppedOver) {
  const std::string gigabytes = DeflatedZeros(4 * 1024);
  const std::string nothing(1, '\0');
  for (const std::string& chunk :
       {PngChunk("zTXt", "Comment" + nothing + nothing + gigabytes),
        PngChunk("iCCP", "profile" + nothing + nothing + gigabytes),
        PngChunk("iTXt", "Comment" + nothing + '\1' + nothing + nothing + nothing + gigabytes),
        PngChunk("eXIf", gigabytes), PngChunk("teST", gigabytes)}) {
    EXPECT_TRUE(ShowsThePicture(WithChunks(chunk))) << chunk.substr(4, 4);
  }
}

TEST(PosixPngBomb, ChunksThatClaimMoreThanTheFileHasAreRefused) {
  for (const char* const name : {"zTXt", "iCCP", "iTXt", "tEXt", "eXIf", "sPLT", "tRNS", "PLTE", "IDAT", "teST"}) {
    for (const std::uint32_t length : {kLongestChunk, 0x80000000U, 0xFFFFFFFFU, 0x00100000U}) {
      EXPECT_TRUE(IsRefusedPng(WithChunks(PngChunkOf(length, name, "few bytes", 0)))) << name << ", " << length;
    }
  }
}

TEST(PosixPngBomb, FilesAsLongAsTheyMayBe) {
  constexpr std::size_t kRoom = 32 * 1024 * 1024 - 16 * 1024;
  EXPECT_TRUE(ShowsThePicture(WithChunks(PngChunk("teST", std::string(kRoom, 'x'))), kMostOfLargest));
  // With the image that takes most memory to read.
  const std::string wide = ZeroPng(1048576, 1, 16, false);
  const std::string file = FileOfPng(wide.substr(0, wide.size() - PngEnd().size()) +
                                     PngChunk("teST", std::string(kRoom - wide.size(), 'x')) + PngEnd());
  EXPECT_TRUE(Succeeded(ExtractCheaplyOf(file, kMostOfLargest)));
}

TEST(PosixPngBomb, PixelsInOneChunkForEachByteAreShown) {
  std::string pixels;
  for (const char byte : Deflated(PngRows(BombPicture()))) pixels += PngChunk("IDAT", std::string(1, byte));
  EXPECT_TRUE(ShowsThePicture(PngSignature() + PngHeader(32, 32, PngColour::trueColourAlpha, 8) + pixels + PngEnd()));
}

TEST(PosixPngBomb, MoreChunksThanAnyImageHasAreRefused) {
  const auto many = [](const char* name, int count) {
    const std::string chunk = PngChunk(name, "");
    std::string chunks;
    for (int index = 0; index < count; ++index) chunks += chunk;
    return chunks;
  };
  constexpr int kMost = 16 * 1024;
  constexpr int kOthers = 3;  // header, pixels, end
  EXPECT_TRUE(ShowsThePicture(WithChunks(many("teST", kMost - kOthers))));
  EXPECT_TRUE(IsRefusedPng(WithChunks(many("teST", kMost - kOthers + 1))));
  EXPECT_TRUE(IsRefusedPng(WithChunks(many("IDAT", 100'000))));
  const std::string start = PngSignature() + PngHeader(32, 32, PngColour::trueColourAlpha, 8);
  EXPECT_TRUE(IsRefusedPng(start + BombPixels() + many("IDAT", 100'000) + PngEnd()));
  EXPECT_TRUE(IsRefusedPng(WithChunks(many("teST", 2'700'000)), kMostOfLargest)) << "in a file as long as it may be";
}

}  // namespace
}  // namespace ondrel::test
