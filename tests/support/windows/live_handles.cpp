// The system tells how many handles a process has, but not of which kinds, and some systems do not tell at all. So the
// calls that make handles and let them go are counted here, from the program's start.
#include "support/live_handles.h"

#include <atomic>
#include <optional>

#include <ondrel/platform/graphics.h>

#include "support/windows/import_patch.h"

namespace ondrel::test {
namespace {

std::atomic<long> bitmaps = 0;
std::atomic<long> icons = 0;

/// A function of the system, with a counting one in its place wherever anybody calls it.
template <class Function>
class Counted {
 public:
  Counted(const char* name, Function* counting) {
    if (ImportPatch::IsImported(name)) m_patch.emplace(name, counting);
  }
  template <class... Arguments>
  auto operator()(Arguments... arguments) const {
    return m_patch->template Original<Function>()(arguments...);
  }

 private:
  std::optional<ImportPatch> m_patch;
};

extern const Counted<decltype(::ExtractIconExW)> extractIcons;
extern const Counted<decltype(::GetIconInfo)> getIconInfo;
extern const Counted<decltype(::ImageList_GetIcon)> getListIcon;
extern const Counted<decltype(::DestroyIcon)> destroyIcon;
extern const Counted<decltype(::CreateBitmap)> createBitmap;
extern const Counted<decltype(::DeleteObject)> deleteObject;

UINT WINAPI CountExtraction(LPCWSTR path, int index, HICON* large, HICON* smallIcons, UINT count) {
  const UINT result = extractIcons(path, index, large, smallIcons, count);
  const bool areGiven = index >= 0 && result != 0 && result != UINT_MAX;  // a negative index only asks
  for (UINT icon = 0; areGiven && icon < count; ++icon) {
    if (large != nullptr && large[icon] != nullptr) ++icons;
    if (smallIcons != nullptr && smallIcons[icon] != nullptr) ++icons;
  }
  return result;
}

BOOL WINAPI CountIconInfo(HICON icon, ICONINFO* info) {
  const BOOL succeeded = getIconInfo(icon, info);
  if (succeeded && info->hbmColor != nullptr) ++bitmaps;
  if (succeeded && info->hbmMask != nullptr) ++bitmaps;
  return succeeded;
}

HICON WINAPI CountListIcon(HIMAGELIST list, int index, UINT flags) {
  const HICON icon = getListIcon(list, index, flags);
  if (icon != nullptr) ++icons;
  return icon;
}

BOOL WINAPI CountDestroyedIcon(HICON icon) {
  const BOOL succeeded = destroyIcon(icon);
  if (succeeded) --icons;
  return succeeded;
}

HBITMAP WINAPI CountBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits) {
  const HBITMAP bitmap = createBitmap(width, height, planes, bitsPerPixel, bits);
  if (bitmap != nullptr) ++bitmaps;
  return bitmap;
}

// Bitmaps are the only drawing objects that anybody here makes.
BOOL WINAPI CountDeletedObject(HGDIOBJ object) {
  const BOOL succeeded = deleteObject(object);
  if (succeeded) --bitmaps;
  return succeeded;
}

const Counted<decltype(::ExtractIconExW)> extractIcons("ExtractIconExW", CountExtraction);
const Counted<decltype(::GetIconInfo)> getIconInfo("GetIconInfo", CountIconInfo);
const Counted<decltype(::ImageList_GetIcon)> getListIcon("ImageList_GetIcon", CountListIcon);
const Counted<decltype(::DestroyIcon)> destroyIcon("DestroyIcon", CountDestroyedIcon);
const Counted<decltype(::CreateBitmap)> createBitmap("CreateBitmap", CountBitmap);
const Counted<decltype(::DeleteObject)> deleteObject("DeleteObject", CountDeletedObject);

}  // namespace

LiveHandles CountLiveHandles() { return {bitmaps, icons}; }

}  // namespace ondrel::test
