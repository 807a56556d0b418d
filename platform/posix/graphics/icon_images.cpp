// Icons out of files, and the images that an icon is made of, in the form that the model takes them.
#include <ondrel/platform/graphics.h>

namespace ondrel::platform {

HRESULT ExtractFirstIcon(LPCWSTR path, UniqueIcon& large, UniqueIcon& smallIcon) {
  HICON largeHandle = nullptr;
  HICON smallHandle = nullptr;
  if (ExtractIconExW(path, 0, &largeHandle, &smallHandle, 1) != 1) return HRESULT_FROM_WIN32(GetLastError());
  large.reset(largeHandle);
  smallIcon.reset(smallHandle);
  return S_OK;
}

BOOL GetIconImages(HICON icon, UniqueBitmap& colour, UniqueBitmap& mask) {
  ICONINFO info = {};
  if (!GetIconInfo(icon, &info)) return FALSE;
  colour.reset(info.hbmColor);
  mask.reset(info.hbmMask);
  return TRUE;
}

}  // namespace ondrel::platform
