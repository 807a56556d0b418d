// Icons out of files.
#include <memory>
#include <new>

#include "graphics/icon_object.h"
#include "icons/icon_source.h"

namespace ondrel::platform {
namespace {

constexpr UINT kFileUnreadable = 0xFFFFFFFF;

IconStatus MakeIcons(LPCWSTR path, HICON* large, HICON* small) {
  IconSource source;
  if (const IconStatus reading = ReadIconSource(path, source); !reading.IsSuccess()) return reading;
  std::unique_ptr<IconObject> largeIcon;
  std::unique_ptr<IconObject> smallIcon;
  if (large != nullptr) largeIcon = std::make_unique<IconObject>();
  if (small != nullptr) smallIcon = std::make_unique<IconObject>();
  const DWORD status = DecodeIcon(source.entries, largeIcon != nullptr ? &largeIcon->image : nullptr,
                                  smallIcon != nullptr ? &smallIcon->image : nullptr);
  if (status != ERROR_SUCCESS) return {.icon = status};
  if (large != nullptr) *large = largeIcon.release();
  if (small != nullptr) *small = smallIcon.release();
  return {};
}

}  // namespace
}  // namespace ondrel::platform

UINT ExtractIconExW(LPCWSTR path, int index, HICON* large, HICON* small, UINT count) {
  using namespace ondrel::platform;
  if (path == nullptr || index != 0 || count != 1) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  if (large != nullptr) *large = nullptr;
  if (small != nullptr) *small = nullptr;
  IconStatus status;
  try {
    status = MakeIcons(path, large, small);
  } catch (const std::bad_alloc&) {
    status.icon = ERROR_OUTOFMEMORY;
  }
  if (status.file != ERROR_SUCCESS) {
    SetLastError(status.file);
    return kFileUnreadable;
  }
  if (status.icon != ERROR_SUCCESS) {
    SetLastError(status.icon);
    return 0;
  }
  return 1;
}
