// Recognition of PNG images.
#include "icons/png_image.h"

#include <algorithm>
#include <limits>

namespace ondrel::platform {
namespace {

constexpr BYTE kSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

// The first chunk is the header; before its data stand the chunk's length and name.
constexpr std::size_t kWidthOffset = sizeof(kSignature) + 8;
constexpr std::size_t kHeightOffset = kWidthOffset + 4;

DWORD ReadBigEndianDword(Bytes bytes, std::size_t offset) {
  return static_cast<DWORD>(bytes[offset]) << 24 | static_cast<DWORD>(bytes[offset + 1]) << 16 |
         static_cast<DWORD>(bytes[offset + 2]) << 8 | bytes[offset + 3];
}

bool IsPossibleSize(DWORD size) { return size != 0 && size <= std::numeric_limits<LONG>::max(); }

}  // namespace

bool IsPngImage(Bytes image) {
  return Holds(image, 0, sizeof(kSignature)) && std::equal(std::begin(kSignature), std::end(kSignature), image.begin());
}

bool ReadPngSize(Bytes image, LONG& width, LONG& height) {
  if (!Holds(image, kHeightOffset, sizeof(DWORD))) return false;
  const DWORD statedWidth = ReadBigEndianDword(image, kWidthOffset);
  const DWORD statedHeight = ReadBigEndianDword(image, kHeightOffset);
  if (!IsPossibleSize(statedWidth) || !IsPossibleSize(statedHeight)) return false;
  width = static_cast<LONG>(statedWidth);
  height = static_cast<LONG>(statedHeight);
  return true;
}

DWORD DecodePngImage(Bytes, IconImage&) { return ERROR_INVALID_DATA; }

}  // namespace ondrel::platform
