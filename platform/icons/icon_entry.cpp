// Description, choice and decoding of an icon's entries.
#include "icons/icon_entry.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <utility>

#include <ondrel/platform/graphics.h>

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

DWORD DecodeImage(Bytes image, IconImage& decoded) {
  return IsPngImage(image) ? DecodePngImage(image, decoded) : DecodeDibImage(image, decoded);
}

}  // namespace

IconEntry DescribeIconEntry(LONG width, LONG height, WORD bitsPerPixel, Bytes image) {
  IconEntry entry = {.width = width,
                     .height = height,
                     .bitsPerPixel = bitsPerPixel,
                     .image = image,
                     .statedWidth = width,
                     .statedHeight = height};
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

bool IsWholeIconEntry(const IconEntry& entry) {
  if (entry.isCut) return false;
  return IsPngImage(entry.image) ? IsPossiblePngImage(entry.image) : IsWholeDibImage(entry.image);
}

const IconEntry& ChooseIconEntry(const std::vector<IconEntry>& entries, LONG size) {
  return *std::min_element(entries.begin(), entries.end(), [size](const IconEntry& left, const IconEntry& right) {
    return Misfit(left, size) < Misfit(right, size);
  });
}

DWORD DecodeIcon(const std::vector<IconEntry>& entries, IconImage* large, IconImage* smallIcon) {
  const IconEntry* decodedEntry = nullptr;  // often the same serves for both sizes
  IconImage decoded;
  for (const auto& [size, target] : {std::pair{kLargeIconSize, large}, std::pair{kSmallIconSize, smallIcon}}) {
    if (target == nullptr) continue;
    const IconEntry& entry = ChooseIconEntry(entries, size);
    if (&entry != decodedEntry) {
      if (const DWORD status = DecodeImage(entry.image, decoded); status != ERROR_SUCCESS) return status;
      decodedEntry = &entry;
    }
    *target = ScaleIconImage(decoded, size, size);
  }
  return ERROR_SUCCESS;
}

}  // namespace ondrel::platform
