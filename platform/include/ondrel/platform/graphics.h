// Contract: bitmaps, icons and image lists.
//
// Handles are owned by whoever the function that made them says; null is no handle.
//
//   ExtractIconExW(path, 0, &large, &small, 1)
//                      the first icon of a file, an icon file or a program (an executable or a library), as a large (32
//                      x 32) and a small (16 x 16) handle, both the caller's to destroy, and the number of icons: off
//                      Windows 1, on Windows the two sizes may count. 0 when the file gives no icon and 0xFFFFFFFF when
//                      it cannot be read; the handles then say nothing and GetLastError() may have the reason:
//                      ERROR_FILE_NOT_FOUND always. `\` and `/` both separate folders. Windows tells the count of a
//                      damaged icon, too, and gives null handles. Off Windows the handles are null on every failure,
//                      and the reason is always there: ERROR_PATH_NOT_FOUND for a folder that is not there,
//                      ERROR_ACCESS_DENIED for a folder or a file that may not be read, ERROR_RESOURCE_DATA_NOT_FOUND
//                      for a file without an icon (a cursor is none), ERROR_INVALID_DATA for a damaged icon or one of a
//                      form that is not known here, or ERROR_OUTOFMEMORY.
//   GetIconInfo        copies of the icon's colour and mask bitmaps, the caller's to delete; FALSE for a null handle,
//                      with the last error left as it is: off Windows, so that it still tells why there is no icon
//                      On Windows an icon in black and white alone has no colour bitmap but a mask of twice the height;
//                      GetIconImages, below, gives the same two images for every icon
//   DestroyIcon, DeleteObject
//                      FALSE for a null handle. Off Windows a failure of any call here leaves its reason in the last
//                      error.
//   GetObjectW         a bitmap's BITMAP: type 0, width, height, bytes per row (even), planes, bits per pixel, and no
//                      address of the bits. The number of bytes written, 0 on failure.
//   GetBitmapBits      up to `size` bytes of the rows, the top row first; the number of bytes copied
//   CreateBitmap       a bitmap of those rows (each padded to 2 bytes) of 1 plane and 1, 4, 8, 16, 24 or 32 bits per
//                      pixel; null on failure, with the last error: ERROR_INVALID_PARAMETER for 2 GiB and more. Off
//                      Windows a negative size, other planes and other depths are refused the same way; Windows may
//                      round them. A width or height of 0 gives a bitmap of 1 x 1 pixels and 1 bit, whatever the other
//                      arguments; the rows are not looked at then. Null rows are rows of zero.
//   ImageList_ReplaceIcon(list, -1, icon)
//                      appends a copy of the icon, scaled to the list's size; its index, or -1. With an index from 0 it
//                      replaces that image.
//   ImageList_GetIcon  a copy of an image of the list, the caller's to destroy. Windows makes the colours that a mask
//                      hides black, and a 32-bit image may lose its alpha bytes.
//
// An icon's colour image has 32 bits per pixel, blue first, with the alpha bytes of a 32-bit icon or a PNG image and 0
// for the other depths. Its mask has 1 bit per pixel, the leftmost pixel highest, a set bit for a transparent pixel.
//
// Of the images that an icon has, each of the two handles shows one of the exact size, of several the one with most
// colours. Where there is none of the exact size, one of another size is scaled: off Windows the nearest, of two at the
// same distance the larger, by what the images themselves say about their size and depth; an image damaged beyond
// reading is not passed over; and all scaling takes, for each pixel, the colour and the mask bit of the source pixel in
// which its centre lies. Windows chooses and scales in its own way, and need not take rows from the top down, long
// image headers or images without a whole mask. Off Windows the mask of a PNG image has the pixels whose alpha is 0.
#pragma once

#include <memory>
#include <type_traits>
#include <vector>

#include <ondrel/platform/os/graphics.h>

namespace ondrel::platform {

/// Width and height of the two icons, in pixels.
inline constexpr LONG kLargeIconSize = 32;
inline constexpr LONG kSmallIconSize = 16;

struct IconDestroyer {
  void operator()(HICON icon) const noexcept { DestroyIcon(icon); }
};
struct BitmapDeleter {
  void operator()(HBITMAP bitmap) const noexcept { DeleteObject(bitmap); }
};

/// Owners of one handle each, or of none.
using UniqueIcon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDestroyer>;
using UniqueBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;

/// The first icon of a file, large and small, as ExtractIconExW gives it. S_OK, or the failing status: never success
/// without an icon, whatever the last error of the system says. Files are looked at before the system sees them,
/// so that a damaged one is ERROR_INVALID_DATA everywhere. On failure both are empty. Raises std::bad_alloc.
ONDREL_SYSTEM_API HRESULT ExtractFirstIcon(LPCWSTR path, UniqueIcon& large, UniqueIcon& smallIcon);

/// Copies of an icon's colour image, of 32 bits per pixel, and its mask. FALSE, both empty, where GetIconInfo gives
/// it, with the last error that it leaves. Raises std::bad_alloc.
ONDREL_SYSTEM_API BOOL GetIconImages(HICON icon, UniqueBitmap& colour, UniqueBitmap& mask);

/// What CreateBitmap makes of the rows of one plane, for a caller who has no more use for them: where bitmaps are plain
/// memory, they are not copied. Empty on failure, with the last error, which is ERROR_INVALID_PARAMETER, too, for a
/// size below 1 and for any other number of bytes than the rows have.
ONDREL_SYSTEM_API UniqueBitmap AdoptBitmap(int width, int height, UINT bitsPerPixel, std::vector<unsigned char> rows);

}  // namespace ondrel::platform
