// PNG images with chunks that are damaged, missing, doubled or out of place, read by this system's own reader.
#include <string>

#include <gtest/gtest.h>

#include "graphics/posix_extraction_costs.h"
#include "support/png_bytes.h"

namespace ondrel::test {
namespace {

PngPicture SamplePicture() { return PatternPng(32, 32, PngColour::trueColourAlpha, 8); }

PngPicture PictureWithPalette() { return PatternPng(32, 32, PngColour::palette, 4); }

std::string HeaderOf(const PngPicture& picture) { return PngHeader(32, 32, picture.colour, picture.depth); }

std::string PixelsOf(const PngPicture& picture) { return PngChunk("IDAT", Deflated(PngRows(picture))); }

std::string FileOf(const std::string& chunks) {
  return IconFileBytes({StoredImage(32, 32, 32, PngSignature() + chunks)});
}

testing::AssertionResult IsRefused(const std::string& chunks) {
  return FailedWith(ExtractCheaplyOf(FileOf(chunks)), kNoIconsFound, ERROR_INVALID_DATA);
}

testing::AssertionResult IsShown(const std::string& chunks, const PngPicture& picture) {
  const Extraction extraction = ExtractCheaplyOf(FileOf(chunks));
  if (const auto succeeded = Succeeded(extraction); !succeeded) return succeeded;
  return Shows(extraction.large.get(), 32, Uncompressed(picture));
}

/// A chunk with one bit of its checksum turned.
std::string WithWrongChecksum(std::string chunk) {
  chunk.back() = static_cast<char>(chunk.back() ^ 1);
  return chunk;
}

TEST(PosixDamagedPng, MissingChunksThatMustBeThere) {
  const PngPicture picture = SamplePicture();
  const PngPicture withPalette = PictureWithPalette();
  ASSERT_TRUE(IsShown(HeaderOf(picture) + PixelsOf(picture) + PngEnd(), picture));
  EXPECT_TRUE(IsRefused(HeaderOf(picture) + PixelsOf(picture))) << "no end";
  EXPECT_TRUE(IsRefused(HeaderOf(picture) + PngEnd())) << "no pixels";
  EXPECT_TRUE(IsRefused(PixelsOf(picture) + PngEnd())) << "no header";
  EXPECT_TRUE(IsRefused(HeaderOf(withPalette) + PixelsOf(withPalette) + PngEnd())) << "no palette";
  EXPECT_TRUE(IsRefused("")) << "nothing";
}

TEST(PosixDamagedPng, ChunksTwiceOrOutOfPlace) {
  const PngPicture picture = SamplePicture();
  const PngPicture withPalette = PictureWithPalette();
  const std::string colours = PngColours(withPalette);
  EXPECT_TRUE(IsRefused(HeaderOf(picture) + HeaderOf(picture) + PixelsOf(picture) + PngEnd()));
  EXPECT_TRUE(IsRefused(HeaderOf(picture) + PixelsOf(picture) + HeaderOf(picture) + PngEnd()));
  EXPECT_TRUE(IsRefused(PixelsOf(picture) + HeaderOf(picture) + PngEnd()));
  EXPECT_TRUE(IsRefused(HeaderOf(withPalette) + PixelsOf(withPalette) + colours + PngEnd()));
  EXPECT_TRUE(IsRefused(PngChunk("teST", "") + HeaderOf(picture) + PixelsOf(picture) + PngEnd()));
  EXPECT_TRUE(IsShown(HeaderOf(picture) + PixelsOf(picture) + PngEnd() + "and more", picture));
}

TEST(PosixDamagedPng, WrongChecksums) {
  const PngPicture picture = SamplePicture();
  const PngPicture withPalette = PictureWithPalette();
  const std::string ancillary = PngChunk("tEXt", "some text");
  EXPECT_TRUE(IsRefused(WithWrongChecksum(HeaderOf(picture)) + PixelsOf(picture) + PngEnd()));
  EXPECT_TRUE(IsRefused(HeaderOf(picture) + WithWrongChecksum(PixelsOf(picture)) + PngEnd()));
  EXPECT_TRUE(IsRefused(HeaderOf(picture) + PixelsOf(picture) + WithWrongChecksum(PngEnd())));
  EXPECT_TRUE(IsRefused(HeaderOf(withPalette) + WithWrongChecksum(PngChunk("PLTE", std::string(48, 'x'))) +
                        PixelsOf(withPalette) + PngEnd()));
  EXPECT_TRUE(IsShown(HeaderOf(picture) + WithWrongChecksum(ancillary) + PixelsOf(picture) + PngEnd(), picture))
      << "what is not looked at may be wrong";
  EXPECT_TRUE(IsShown(HeaderOf(picture) + PixelsOf(picture) + WithWrongChecksum(ancillary) + PngEnd(), picture));
}

TEST(PosixDamagedPng, AWrongChecksumOfTheTransparencyIsRefused) {
  const PngPicture withPalette = PictureWithPalette();
  const std::string colours = PngColours(withPalette);
  const std::size_t alphas = colours.find("tRNS") - 4;
  ASSERT_TRUE(IsShown(HeaderOf(withPalette) + colours + PixelsOf(withPalette) + PngEnd(), withPalette));
  EXPECT_TRUE(IsRefused(HeaderOf(withPalette) + colours.substr(0, alphas) + WithWrongChecksum(colours.substr(alphas)) +
                        PixelsOf(withPalette) + PngEnd()));
  for (const PngColour colour : {PngColour::grey, PngColour::trueColour}) {
    PngPicture picture = PatternPng(32, 32, colour, 8);
    picture.transparent = picture.samples[35];
    ASSERT_TRUE(IsShown(HeaderOf(picture) + PngColours(picture) + PixelsOf(picture) + PngEnd(), picture));
    EXPECT_TRUE(IsRefused(HeaderOf(picture) + WithWrongChecksum(PngColours(picture)) + PixelsOf(picture) + PngEnd()));
    EXPECT_TRUE(IsRefused(HeaderOf(picture) + WithWrongChecksum(PngChunk("tEXt", "some text")) +
                          WithWrongChecksum(PngColours(picture)) + PixelsOf(picture) + PngEnd()))
        << "behind a chunk whose checksum does not count";
    EXPECT_TRUE(IsShown(HeaderOf(picture) + PngColours(picture) + WithWrongChecksum(PngChunk("tEXt", "some text")) +
                            PixelsOf(picture) + PngEnd(),
                        picture))
        << "in front of such a chunk";
  }
}

TEST(PosixDamagedPng, AWrongChecksumOfThePixelsThemselvesIsRefused) {
  const PngPicture picture = SamplePicture();
  const std::string stream = Deflated(PngRows(picture));  // ends with an Adler-32 of the rows
  for (std::size_t byte = 1; byte <= 4; ++byte) {
    std::string damaged = stream;
    damaged[damaged.size() - byte] = static_cast<char>(damaged[damaged.size() - byte] ^ 1);
    EXPECT_TRUE(IsRefused(HeaderOf(picture) + PngChunk("IDAT", damaged) + PngEnd())) << byte;
    for (std::size_t apart = 1; apart <= 6; ++apart) {
      EXPECT_TRUE(IsRefused(HeaderOf(picture) + PngChunk("IDAT", damaged.substr(0, damaged.size() - apart)) +
                            PngChunk("IDAT", damaged.substr(damaged.size() - apart)) + PngEnd()))
          << byte << ", in a chunk of " << apart;
    }
  }
  for (std::size_t length = 1; length <= 4; ++length) {
    EXPECT_TRUE(IsRefused(HeaderOf(picture) + PngChunk("IDAT", stream.substr(0, stream.size() - length)) + PngEnd()))
        << length << " bytes of it are missing";
  }
}

TEST(PosixDamagedPng, HeadersThatCannotBe) {
  const PngPicture picture = SamplePicture();
  const std::string rest = PixelsOf(picture) + PngEnd();
  for (const int depth : {0, 1, 2, 3, 4, 7, 9, 32, 255}) {
    EXPECT_TRUE(IsRefused(PngHeader(32, 32, PngColour::trueColourAlpha, depth) + rest)) << depth << " bits";
  }
  for (const int colour : {1, 5, 7, 255}) {
    EXPECT_TRUE(IsRefused(PngHeader(32, 32, static_cast<PngColour>(colour), 8) + rest)) << "colour type " << colour;
  }
  const std::string data = HeaderOf(picture).substr(8, 13);
  EXPECT_TRUE(IsRefused(PngChunk("IHDR", data.substr(0, 12)) + rest)) << "too short";
  EXPECT_TRUE(IsRefused(PngChunk("IHDR", data + '\0') + rest)) << "too long";
  for (const std::size_t place : {10U, 11U, 12U}) {  // compression, filtering, interlacing
    std::string damaged = data;
    damaged[place] = 2;
    EXPECT_TRUE(IsRefused(PngChunk("IHDR", damaged) + rest)) << "byte " << place;
  }
}

TEST(PosixDamagedPng, PixelsThatCannotBe) {
  const PngPicture picture = SamplePicture();
  const std::string rows = PngRows(picture);
  const std::string stream = Deflated(rows);
  const auto isRefused = [&](const std::string& damaged) {
    return IsRefused(HeaderOf(picture) + PngChunk("IDAT", damaged) + PngEnd());
  };
  EXPECT_TRUE(isRefused(""));
  EXPECT_TRUE(isRefused("no zlib stream"));
  EXPECT_TRUE(isRefused(stream.substr(0, stream.size() / 2)));
  EXPECT_TRUE(isRefused(Deflated(rows.substr(0, rows.size() - 1)))) << "a byte too few";
  EXPECT_TRUE(isRefused(Deflated(std::string(1, 5) + rows.substr(1)))) << "there is no filter 5";
  EXPECT_TRUE(IsRefused(HeaderOf(picture) + PngChunk("IDAT", stream.substr(0, 100)) + PngChunk("tEXt", "between") +
                        PngChunk("IDAT", stream.substr(100)) + PngEnd()))
      << "pixels must stand together";
}

TEST(PosixDamagedPng, PalettesThatCannotBe) {
  const PngPicture picture = PictureWithPalette();
  const auto isRefused = [&](const std::string& palette) {
    return IsRefused(HeaderOf(picture) + PngChunk("PLTE", palette) + PixelsOf(picture) + PngEnd());
  };
  EXPECT_TRUE(isRefused(""));
  EXPECT_TRUE(isRefused(std::string(47, 'x'))) << "no whole colours";
  EXPECT_TRUE(isRefused(std::string(3 * 257, 'x'))) << "more than there can be";
}

TEST(PosixDamagedPng, ColoursBeyondAShortPaletteAreBlack) {
  PngPicture picture = PictureWithPalette();
  PngPicture shown = picture;
  picture.palette.resize(9);
  for (std::size_t index = 9; index < shown.palette.size(); ++index) shown.palette[index] = {0, 0, 0, 255};
  EXPECT_TRUE(IsShown(HeaderOf(picture) + PngColours(picture) + PixelsOf(picture) + PngEnd(), shown));
}

TEST(PosixDamagedPng, UnknownChunksThatAnImageCannotDoWithoutAreRefused) {
  const PngPicture picture = SamplePicture();
  EXPECT_TRUE(IsRefused(HeaderOf(picture) + PngChunk("TEST", "") + PixelsOf(picture) + PngEnd()));
  EXPECT_TRUE(IsShown(HeaderOf(picture) + PixelsOf(picture) + PngChunk("TEST", "") + PngEnd(), picture))
      << "the picture is complete";
}

TEST(PosixDamagedPng, SignatureOrHeaderAlone) {
  for (const std::size_t length : {8U, 9U, 16U, 19U, 20U, 23U, 24U, 32U, 33U}) {
    const std::string png = (PngSignature() + HeaderOf(SamplePicture())).substr(0, length);
    EXPECT_TRUE(
        FailedWith(ExtractCheaplyOf(IconFileBytes({StoredImage(32, 32, 32, png)})), kNoIconsFound, ERROR_INVALID_DATA))
        << length << " bytes";
  }
}

}  // namespace
}  // namespace ondrel::test
