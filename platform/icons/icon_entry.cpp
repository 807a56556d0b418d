// Description, choice and decoding of an icon's entries.
#include "icons/icon_entry.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <utility>

#include "icons/dib_image.h"
#include "icons/png_image.h"

namespace ondrel::platform {
namespace {

constexpr WORD kScreenBitsPerPixel = 32;

// Orders entries by how badly they fit: the least is the best.
auto Misfit(const IconEntry& entry, LONG size) {
  const LONGLONG width = entry.width;
  const LONGLONG height = entry.height;
  const LONGLONG distance = std::abs(width - size) + std::abs(height - size);
  const int depthDistance = std::abs(entry.bitsPerPixel - kScreenBitsPerPixel);
  return std::make_tuple(distance, -width * height, depthDistance, -static_cast<int>(entry.bitsPerPixel));
}

}  // namespace

IconEntry DescribeIconEntry(LONG width, LONG height, WORD bitsPerPixel, Bytes image) {
  IconEntry entry = {width, height, bitsPerPixel, image};
  if (IsPngImage(image)) {
    ReadPngSize(image, entry.width, entry.height);
    entry.bitsPerPixel = kScreenBitsPerPixel;  // every PNG image comes out in this depth
    return entry;
  }
  DibHeader header = {};
  if (ReadDibHeader(image, header)) {
    entry.width = header.width;
    entry.height = header.height;
    entry.bitsPerPixel = header.bitsPerPixel;
  }
  return entry;
}

const IconEntry& ChooseIconEntry(const std::vector<IconEntry>& entries, LONG size) {
  return *std::min_element(entries.begin(), entries.end(), [size](const IconEntry& left, const IconEntry& right) {
    return Misfit(left, size) < Misfit(right, size);
  });
}

DWORD DecodeIconEntry(const IconEntry& entry, LONG size, IconImage& decoded) {
  IconImage image;
  const DWORD status =
      IsPngImage(entry.image) ? DecodePngImage(entry.image, image) : DecodeDibImage(entry.image, image);
  if (status != ERROR_SUCCESS) return status;
  decoded = image.width == size && image.height == size ? std::move(image) : ScaleIconImage(image, size, size);
  return ERROR_SUCCESS;
}

}  // namespace ondrel::platform
