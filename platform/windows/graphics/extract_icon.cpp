// Icons out of files, guarded against damaged ones.
#include <ondrel/platform/graphics.h>

#include <utility>

#include "icons/icon_source.h"

namespace ondrel::platform {
namespace {

// The system takes what a file says of its icon at its word, and may read beyond the file's end. Only what it will look
// at is checked, the two images that are nearest in size.
DWORD CheckImages(const IconSource& source) {
  for (const LONG size : {kLargeIconSize, kSmallIconSize}) {
    IconImage ignored;
    const DWORD status = DecodeIconEntry(ChooseIconEntry(source.entries, size), size, ignored);
    if (status != ERROR_SUCCESS) return status;
  }
  return ERROR_SUCCESS;
}

// Whether to ask the system about a file in which there is no icon.
bool MayHaveIconElsewhere(const IconSource& source) {
  // A program may have icons in files beside it. It has other resources then.
  if (source.isProgram) return source.hasIconGroups == false;
  return !source.bytes.empty();  // there are other kinds of files with icons
}

DWORD CheckFile(LPCWSTR path) {
  IconSource source;
  const IconStatus status = ReadIconSource(path, source);
  if (status.file != ERROR_SUCCESS) return status.file;
  if (status.icon == ERROR_RESOURCE_DATA_NOT_FOUND && MayHaveIconElsewhere(source)) return ERROR_SUCCESS;
  if (status.icon != ERROR_SUCCESS) return status.icon;
  return source.isCutShort ? ERROR_INVALID_DATA : CheckImages(source);
}

}  // namespace

HRESULT ExtractFirstIcon(LPCWSTR path, UniqueIcon& large, UniqueIcon& smallIcon) {
  large.reset();
  smallIcon.reset();
  if (const DWORD code = CheckFile(path); code != ERROR_SUCCESS) return HRESULT_FROM_WIN32(code);
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
  return HRESULT_FROM_WIN32(reason == ERROR_SUCCESS ? ERROR_RESOURCE_DATA_NOT_FOUND : reason);
}

}  // namespace ondrel::platform
