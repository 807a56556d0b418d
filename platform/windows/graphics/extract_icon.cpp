// Icons out of files, guarded against damaged ones.
#include <ondrel/platform/graphics.h>

#include "icons/icon_file.h"
#include "icons/icon_source.h"
#include "icons/png_image.h"

namespace ondrel::platform {
namespace {

// The system takes what an icon file says of itself at its word, and may read beyond the file's end. Only what it will
// look at is checked, the two images that are nearest in size. PNG images have a decoder of their own there.
DWORD CheckIconFile(const IconSource& source) {
  for (const LONG size : {kLargeIconSize, kSmallIconSize}) {
    const IconEntry& entry = ChooseIconEntry(source.entries, size);
    if (IsPngImage(entry.image)) continue;
    IconImage ignored;
    if (const DWORD status = DecodeIconEntry(entry, size, ignored); status != ERROR_SUCCESS) return status;
  }
  return ERROR_SUCCESS;
}

DWORD CheckFile(LPCWSTR path) {
  IconSource source;
  const IconStatus status = ReadIconSource(path, source);
  if (status.file != ERROR_SUCCESS) return status.file;
  if (status.icon == ERROR_SUCCESS) return CheckIconFile(source);
  // Programs and libraries have icons too; the system knows how to find them.
  return IsIconFile(source.bytes) || source.bytes.empty() ? status.icon : ERROR_SUCCESS;
}

}  // namespace

HRESULT ExtractFirstIcon(LPCWSTR path, UniqueIcon& large, UniqueIcon& smallIcon) {
  if (const DWORD code = CheckFile(path); code != ERROR_SUCCESS) return HRESULT_FROM_WIN32(code);
  HICON largeHandle = nullptr;
  HICON smallHandle = nullptr;
  SetLastError(ERROR_SUCCESS);
  const UINT extracted = ExtractIconExW(path, 0, &largeHandle, &smallHandle, 1);
  const DWORD reason = GetLastError();
  large.reset(largeHandle);
  smallIcon.reset(smallHandle);
  if (extracted != 0 && extracted != 0xFFFFFFFF && largeHandle != nullptr && smallHandle != nullptr) return S_OK;
  large.reset();
  smallIcon.reset();
  return HRESULT_FROM_WIN32(reason == ERROR_SUCCESS ? ERROR_RESOURCE_DATA_NOT_FOUND : reason);
}

}  // namespace ondrel::platform
