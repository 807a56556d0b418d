// Icons out of files, guarded against damaged ones.
#include <ondrel/platform/graphics.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "icons/icon_source.h"

namespace ondrel::platform {
namespace {

LONG StatedDistance(const IconEntry& entry, LONG size) {
  return std::abs(entry.statedWidth - size) + std::abs(entry.statedHeight - size);
}

// The system takes what a file says of its icon at its word: it chooses an image by what the directory says, where the
// reader goes by the images themselves, and reads beyond the end of one that claims more than there is. So each image
// that it may choose must be whole, and those that the reader would choose are decoded.
DWORD CheckImages(const IconSource& source) {
  for (const LONG size : {kLargeIconSize, kSmallIconSize}) {
    const auto distance = [size](const IconEntry& entry) { return StatedDistance(entry, size); };
    const LONG least = distance(*std::ranges::min_element(source.entries, {}, distance));
    const auto isTrap = [&](const IconEntry& entry) { return distance(entry) == least && !IsWholeIconEntry(entry); };
    if (std::ranges::any_of(source.entries, isTrap)) return ERROR_INVALID_DATA;
  }
  IconImage large;
  IconImage smallIcon;
  return DecodeIcon(source.entries, &large, &smallIcon);
}

// Whether to ask the system about a file in which there is no icon.
bool MayHaveIconElsewhere(const IconSource& source) {
  // A program may have icons in files beside it. It has other resources then.
  if (source.isProgram) return source.hasIconGroups == false;
  return !source.bytes.empty();  // there are other kinds of files with icons
}

struct FileCheck {
  DWORD status;         ///< ERROR_SUCCESS: the system may be asked.
  DWORD reasonForNone;  ///< Why it finds no icon there when it does not say.
};

FileCheck CheckFile(LPCWSTR path) {
  IconSource source;
  const IconStatus status = ReadIconSource(path, source);
  if (status.file != ERROR_SUCCESS) return {status.file, status.file};
  if (status.icon == ERROR_SUCCESS) return {CheckImages(source), ERROR_INVALID_DATA};
  const bool isWorthAsking = status.icon == ERROR_RESOURCE_DATA_NOT_FOUND && MayHaveIconElsewhere(source);
  return {isWorthAsking ? ERROR_SUCCESS : status.icon, status.icon};
}

}  // namespace

HRESULT ExtractFirstIcon(LPCWSTR path, UniqueIcon& large, UniqueIcon& smallIcon) {
  large.reset();
  smallIcon.reset();
  const FileCheck check = CheckFile(path);
  if (check.status != ERROR_SUCCESS) return HRESULT_FROM_WIN32(check.status);
  HICON largeHandle = nullptr;
  HICON smallHandle = nullptr;
  SetLastError(ERROR_SUCCESS);
  const UINT extracted = ExtractIconExW(path, 0, &largeHandle, &smallHandle, 1);
  const DWORD reason = GetLastError();
  // Without a large icon the small one may be any number, and that of another's icon: it is not to be destroyed then.
  if (extracted != 0 && extracted != 0xFFFFFFFF && largeHandle != nullptr) {
    UniqueIcon owner(largeHandle);
    if (smallHandle != nullptr) {
      large = std::move(owner);
      smallIcon.reset(smallHandle);
      return S_OK;
    }
  }
  return HRESULT_FROM_WIN32(reason == ERROR_SUCCESS ? check.reasonForNone : reason);
}

}  // namespace ondrel::platform
