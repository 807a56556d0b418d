// Bitmaps, icons and image lists for a system without them: the subset of ondrel/platform/graphics.h.
#pragma once

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {
struct BitmapObject;
struct IconObject;
struct ImageListObject;
}  // namespace ondrel::platform

using HBITMAP = ondrel::platform::BitmapObject*;
using HICON = ondrel::platform::IconObject*;
using HIMAGELIST = ondrel::platform::ImageListObject*;
using HGDIOBJ = HBITMAP;  // bitmaps are the only drawing objects here
using COLORREF = DWORD;   // 0x00BBGGRR

struct tagBITMAP {
  LONG bmType;
  LONG bmWidth;
  LONG bmHeight;
  LONG bmWidthBytes;
  WORD bmPlanes;
  WORD bmBitsPixel;
  void* bmBits;
};
using BITMAP = tagBITMAP;

struct ICONINFO {
  BOOL fIcon;
  DWORD xHotspot;
  DWORD yHotspot;
  HBITMAP hbmMask;
  HBITMAP hbmColor;
};

inline constexpr UINT ILC_MASK = 0x0001;
inline constexpr UINT ILC_COLOR32 = 0x0020;

ONDREL_OS_EXPORT UINT ExtractIconExW(LPCWSTR path, int index, HICON* large, HICON* small, UINT count);
ONDREL_OS_EXPORT BOOL GetIconInfo(HICON icon, ICONINFO* info);
ONDREL_OS_EXPORT BOOL DestroyIcon(HICON icon);

ONDREL_OS_EXPORT HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits);
ONDREL_OS_EXPORT BOOL DeleteObject(HGDIOBJ object);
ONDREL_OS_EXPORT int GetObjectW(HGDIOBJ object, int size, void* description);
ONDREL_OS_EXPORT LONG GetBitmapBits(HBITMAP bitmap, LONG size, void* bits);

ONDREL_OS_EXPORT HIMAGELIST ImageList_Create(int width, int height, UINT flags, int initial, int grow);
ONDREL_OS_EXPORT BOOL ImageList_Destroy(HIMAGELIST list);
ONDREL_OS_EXPORT int ImageList_GetImageCount(HIMAGELIST list);
ONDREL_OS_EXPORT int ImageList_ReplaceIcon(HIMAGELIST list, int index, HICON icon);
/// A copy of an image of the list as an icon, the caller's to destroy; null for an index that is not there.
ONDREL_OS_EXPORT HICON ImageList_GetIcon(HIMAGELIST list, int index, UINT flags);

namespace ondrel::platform {

/// How many bitmap and icon handles exist, those inside other handles not counted. For leak checks.
struct LiveHandles {
  long bitmaps;
  long icons;
};
ONDREL_OS_EXPORT LiveHandles CountLiveHandles();

}  // namespace ondrel::platform
