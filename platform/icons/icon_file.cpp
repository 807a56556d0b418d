// Reading of an icon file's directory.
#include "icons/icon_file.h"

#include <algorithm>

#include "icons/icon_limits.h"

namespace ondrel::platform {
namespace {

constexpr std::size_t kReservedOffset = 0;
constexpr std::size_t kTypeOffset = 2;
constexpr std::size_t kCountOffset = 4;
constexpr WORD kIconType = 1;

constexpr std::size_t kEntryBytes = 16;
constexpr std::size_t kWidthOffset = 0;
constexpr std::size_t kHeightOffset = 1;
constexpr std::size_t kBitsPerPixelOffset = 6;
constexpr std::size_t kLengthOffset = 8;
constexpr std::size_t kImageOffset = 12;

IconEntry ReadEntry(Bytes file, Bytes entry) {
  const std::size_t offset = std::min<std::size_t>(ReadDword(entry, kImageOffset), file.size());
  const std::size_t length = std::min<std::size_t>(ReadDword(entry, kLengthOffset), file.size() - offset);
  IconEntry described = DescribeIconEntry(StatedIconSize(entry[kWidthOffset]), StatedIconSize(entry[kHeightOffset]),
                                          ReadWord(entry, kBitsPerPixelOffset), file.subspan(offset, length));
  described.isCut = !Holds(file, ReadDword(entry, kImageOffset), ReadDword(entry, kLengthOffset));
  return described;
}

}  // namespace

bool IsIconFile(Bytes start) {
  return Holds(start, 0, kIconFileHeaderBytes) && ReadWord(start, kReservedOffset) == 0 &&
         ReadWord(start, kTypeOffset) == kIconType && ReadWord(start, kCountOffset) != 0;
}

DWORD ReadIconDirectory(Bytes file, std::vector<IconEntry>& entries) {
  if (!IsIconFile(file)) return ERROR_RESOURCE_DATA_NOT_FOUND;
  const WORD count = ReadWord(file, kCountOffset);
  if (count > kMostIconEntries || !Holds(file, kIconFileHeaderBytes, count * kEntryBytes)) return ERROR_INVALID_DATA;
  entries.clear();
  entries.reserve(count);
  for (std::size_t index = 0; index < count; ++index) {
    entries.push_back(ReadEntry(file, file.subspan(kIconFileHeaderBytes + index * kEntryBytes, kEntryBytes)));
  }
  return ERROR_SUCCESS;
}

}  // namespace ondrel::platform
