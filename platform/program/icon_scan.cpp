// What a file offers for an icon, found by the reader that makes icons off Windows.
#include <ondrel/platform/icon_scan.h>

#include <ondrel/platform/graphics.h>

#include "icons/icon_source.h"
#include "icons/png_image.h"

namespace ondrel::platform {
namespace {

std::size_t ChosenIndex(const std::vector<IconEntry>& entries, LONG size) {
  return static_cast<std::size_t>(&ChooseIconEntry(entries, size) - entries.data());
}

}  // namespace

HRESULT ScanIcon(const CString& path, IconScan& scan) {
  IconSource source;
  const IconStatus status = ReadIconSource(path, source);
  if (status.file != ERROR_SUCCESS) return HRESULT_FROM_WIN32(status.file);
  if (status.icon != ERROR_SUCCESS) return HRESULT_FROM_WIN32(status.icon);
  scan.container = source.isProgram ? IconContainer::program : IconContainer::iconFile;
  scan.offers.clear();
  for (const IconEntry& entry : source.entries) {
    scan.offers.push_back({entry.width, entry.height, entry.bitsPerPixel, IsPngImage(entry.image)});
  }
  scan.large = ChosenIndex(source.entries, kLargeIconSize);
  scan.smallIcon = ChosenIndex(source.entries, kSmallIconSize);
  return S_OK;
}

}  // namespace ondrel::platform
