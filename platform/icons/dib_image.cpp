// Decoding of uncompressed icon images.
#include "icons/dib_image.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

#include "icons/icon_limits.h"

namespace ondrel::platform {
namespace {

// Where the header keeps its fields, and what they may be. Planes, resolution and the stated length of the pixels are
// not looked at: writers fill them in carelessly, and nothing follows from them.
constexpr std::size_t kSizeOffset = 0;
constexpr std::size_t kWidthOffset = 4;
constexpr std::size_t kHeightOffset = 8;
constexpr std::size_t kBitsPerPixelOffset = 14;
constexpr std::size_t kCompressionOffset = 16;
constexpr std::size_t kPaletteColoursOffset = 32;
constexpr std::size_t kShortestHeader = 40;
constexpr DWORD kUncompressed = 0;
constexpr std::size_t kPaletteEntryBytes = 4;

// The same of the oldest header, which has no more than these.
constexpr std::size_t kCoreHeader = 12;
constexpr std::size_t kCoreHeightOffset = 6;
constexpr std::size_t kCoreBitsPerPixelOffset = 10;
constexpr std::size_t kCorePaletteEntryBytes = 3;

// What the deepest image with a palette, 8 bits, can tell apart. A header that states more has no more.
constexpr DWORD kMostPaletteColours = 256;

using Colour = std::array<BYTE, 4>;  // blue, green, red, alpha

// The bytes of a row of the file.
std::uint64_t FileStride(LONG width, WORD bitsPerPixel) {
  constexpr std::uint64_t kUnitBits = 32;
  return (static_cast<std::uint64_t>(width) * bitsPerPixel + kUnitBits - 1) / kUnitBits * (kUnitBits / 8);
}

// Rows of an image of the file, found from the top one down.
class FileRows {
 public:
  FileRows(Bytes rows, std::size_t stride, const DibHeader& header)
      : m_rows(rows), m_stride(stride), m_height(header.height), m_topDown(header.topDown) {}

  Bytes Row(LONG y) const {
    const LONG place = m_topDown ? y : m_height - 1 - y;
    return m_rows.subspan(static_cast<std::size_t>(place) * m_stride, m_stride);
  }

 private:
  Bytes m_rows;
  std::size_t m_stride;
  LONG m_height;
  bool m_topDown;
};

// The palette as pixels. An index beyond the stored colours is black.
std::array<Colour, kMostPaletteColours> ReadPalette(Bytes stored, std::size_t entryBytes) {
  std::array<Colour, kMostPaletteColours> palette = {};
  for (std::size_t index = 0; index * entryBytes < stored.size(); ++index) {
    const Bytes entry = stored.subspan(index * entryBytes, entryBytes);
    palette[index] = {entry[0], entry[1], entry[2], 0};
  }
  return palette;
}

std::size_t PaletteIndex(Bytes row, LONG x, WORD bitsPerPixel) {
  const auto bit = static_cast<std::size_t>(x) * bitsPerPixel;
  const std::size_t shift = 8 - bitsPerPixel - bit % 8;  // the leftmost pixel of a byte is its highest
  return row[bit / 8] >> shift & ((1U << bitsPerPixel) - 1);
}

// A pixel of 16 bits: blue in the lowest 5, then green, then red; the highest bit says nothing.
Colour SpreadPixel(WORD pixel) {
  const auto channel = [pixel](int shift) {
    const int value = pixel >> shift & 0x1F;
    return static_cast<BYTE>(value << 3 | value >> 2);  // so that 0 and 31 become 0 and 255
  };
  return {channel(0), channel(5), channel(10), 0};
}

void DecodeColour(const FileRows& rows, const DibHeader& header, Bytes storedPalette, IconImage& decoded) {
  const bool hasPalette = header.bitsPerPixel <= 8;
  const std::size_t pixelBytes = header.bitsPerPixel / 8;  // of images without a palette
  const auto palette =
      hasPalette ? ReadPalette(storedPalette, header.paletteEntryBytes) : std::array<Colour, kMostPaletteColours>{};
  for (LONG y = 0; y < header.height; ++y) {
    const Bytes row = rows.Row(y);
    if (pixelBytes == sizeof(Colour)) {
      std::copy(row.begin(), row.end(), decoded.Pixel(0, y));
      continue;
    }
    for (LONG x = 0; x < header.width; ++x) {
      Colour pixel = {};
      if (hasPalette) {
        pixel = palette[PaletteIndex(row, x, header.bitsPerPixel)];
      } else if (const std::size_t offset = static_cast<std::size_t>(x) * pixelBytes; pixelBytes == sizeof(WORD)) {
        pixel = SpreadPixel(ReadWord(row, offset));
      } else {
        for (std::size_t part = 0; part < pixelBytes; ++part) pixel[part] = row[offset + part];
      }
      std::copy(pixel.begin(), pixel.end(), decoded.Pixel(x, y));
    }
  }
}

void DecodeMask(const FileRows& rows, IconImage& decoded) {
  for (LONG y = 0; y < decoded.height; ++y) {
    const Bytes row = rows.Row(y);
    for (LONG x = 0; x < decoded.width; ++x) {
      if (PaletteIndex(row, x, 1) != 0) decoded.SetTransparent(x, y);
    }
  }
}

bool IsSupported(const DibHeader& header) {
  if (header.compression != kUncompressed) return false;
  switch (header.bitsPerPixel) {
    case 1:
    case 4:
    case 8:
    case 16:
    case 24:
    case 32:
      return true;
    default:
      return false;
  }
}

/// The parts of an image behind its header. The mask is empty when it is missing or short.
struct DibPlaces {
  Bytes palette;
  Bytes colour;
  Bytes mask;
};

/// False for an image with too many pixels, and for one that is too short for its colours.
bool FindPlaces(Bytes image, const DibHeader& header, DibPlaces& places) {
  if (static_cast<LONGLONG>(header.width) * header.height > kMostIconPixels) return false;
  // The limit on pixels keeps these products far from overflow.
  const auto height = static_cast<std::size_t>(header.height);
  const std::size_t paletteBytes = header.paletteColours * header.paletteEntryBytes;
  const std::size_t colourOffset = header.size + paletteBytes;
  const std::size_t colourBytes = FileStride(header.width, header.bitsPerPixel) * height;
  const std::size_t maskOffset = colourOffset + colourBytes;
  const std::size_t maskBytes = FileStride(header.width, 1) * height;
  if (!Holds(image, colourOffset, colourBytes)) return false;
  places.palette = image.subspan(header.size, paletteBytes);
  places.colour = image.subspan(colourOffset, colourBytes);
  if (Holds(image, maskOffset, maskBytes)) places.mask = image.subspan(maskOffset, maskBytes);
  return true;
}

}  // namespace

bool ReadDibHeader(Bytes image, DibHeader& header) {
  if (!Holds(image, 0, kCoreHeader)) return false;
  const DWORD size = ReadDword(image, kSizeOffset);
  const bool isCore = size == kCoreHeader;
  if (!isCore && (size < kShortestHeader || !Holds(image, 0, size))) return false;
  const LONG width = isCore ? ReadWord(image, kWidthOffset) : ReadLong(image, kWidthOffset);
  const LONG bothHeights = isCore ? ReadWord(image, kCoreHeightOffset) : ReadLong(image, kHeightOffset);
  const auto height = static_cast<LONG>(std::abs(static_cast<LONGLONG>(bothHeights)) / 2);
  if (width <= 0 || height == 0) return false;
  header = {
      .width = width,
      .height = height,
      .bitsPerPixel = ReadWord(image, isCore ? kCoreBitsPerPixelOffset : kBitsPerPixelOffset),
      .topDown = bothHeights < 0,
      .compression = isCore ? kUncompressed : ReadDword(image, kCompressionOffset),
      .paletteColours = isCore ? 0 : std::min(ReadDword(image, kPaletteColoursOffset), kMostPaletteColours),
      .paletteEntryBytes = isCore ? kCorePaletteEntryBytes : kPaletteEntryBytes,
      .size = size,
  };
  if (header.paletteColours == 0 && header.bitsPerPixel <= 8) header.paletteColours = 1U << header.bitsPerPixel;
  return true;
}

bool IsWholeDibImage(Bytes image) {
  DibHeader header = {};
  DibPlaces places = {};
  return ReadDibHeader(image, header) && FindPlaces(image, header, places);
}

DWORD DecodeDibImage(Bytes image, IconImage& decoded) {
  DibHeader header = {};
  DibPlaces places = {};
  if (!ReadDibHeader(image, header) || !IsSupported(header)) return ERROR_INVALID_DATA;
  if (!FindPlaces(image, header, places)) return ERROR_INVALID_DATA;
  decoded = IconImage(header.width, header.height);
  DecodeColour(FileRows(places.colour, FileStride(header.width, header.bitsPerPixel), header), header, places.palette,
               decoded);
  if (!places.mask.empty()) DecodeMask(FileRows(places.mask, FileStride(header.width, 1), header), decoded);
  return ERROR_SUCCESS;
}

}  // namespace ondrel::platform
