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
constexpr std::size_t kEntryWidthOffset = 0;
constexpr std::size_t kEntryHeightOffset = 1;
constexpr std::size_t kEntryBitsPerPixelOffset = 6;
constexpr std::size_t kEntryLengthOffset = 8;
constexpr std::size_t kEntryImageOffset = 12;

IconEntry ReadEntry(Bytes file, Bytes entry) {
  const std::size_t offset = std::min<std::size_t>(ReadDword(entry, kEntryImageOffset), file.size());
  const std::size_t length = std::min<std::size_t>(ReadDword(entry, kEntryLengthOffset), file.size() - offset);
  IconEntry described =
      DescribeIconEntry(StatedIconSize(entry[kEntryWidthOffset]), StatedIconSize(entry[kEntryHeightOffset]),
                        ReadWord(entry, kEntryBitsPerPixelOffset), file.subspan(offset, length));
  described.isCut = !Holds(file, ReadDword(entry, kEntryImageOffset), ReadDword(entry, kEntryLengthOffset));
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
