// Icon handles: what they are made of, and their end.
#include "graphics/icon_object.h"

BOOL GetIconInfo(HICON icon, ICONINFO* info) {
  // The last error stays what it is: it tells why whoever asked for the icon got none.
  if (icon == nullptr) return FALSE;
  if (info == nullptr) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const ondrel::platform::IconImage& image = icon->image;
  const HBITMAP mask = CreateBitmap(image.width, image.height, 1, 1, image.mask.data());
  if (mask == nullptr) return FALSE;
  const HBITMAP colour = CreateBitmap(image.width, image.height, 1, 32, image.colour.data());
  if (colour == nullptr) {
    DeleteObject(mask);
    return FALSE;
  }
  *info = {
      .fIcon = TRUE,
      .xHotspot = static_cast<DWORD>(image.width) / 2,
      .yHotspot = static_cast<DWORD>(image.height) / 2,
      .hbmMask = mask,
      .hbmColor = colour,
  };
  return TRUE;
}

BOOL DestroyIcon(HICON icon) {
  if (icon == nullptr) {
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
  }
  delete icon;
  return TRUE;
}
