// Contract: bitmaps, icons and image lists.
//
// Handles are owned by whoever the function that made them says; null is no handle.
//
//   ExtractIconExW(path, 0, &large, &small, 1)
//                      the first icon of a file, as a large (32 x 32) and a small (16 x 16) handle, both the caller's
//                      to destroy. 0 when the file gives no icon and 0xFFFFFFFF when it cannot be read, with the reason
//                      in GetLastError(); the handles are null then. `\` and `/` both separate folders.
//   GetIconInfo        copies of the icon's colour and mask bitmaps, the caller's to delete; FALSE for a null handle
//   DestroyIcon, DeleteObject
//   GetObjectW         a bitmap's BITMAP: type 0, width, height, bytes per row (even), planes, bits per pixel, and no
//                      address of the bits. The number of bytes written, 0 on failure.
//   GetBitmapBits      up to `size` bytes of the rows, the top row first; the number of bytes copied
//   CreateBitmap       a bitmap of those rows (each padded to 2 bytes); null on failure, with the last error
//   ImageList_ReplaceIcon(list, -1, icon)
//                      appends a copy of the icon, scaled to the list's size; its index, or -1
//
// An icon's colour image has 32 bits per pixel, blue first, with the alpha bytes of a 32-bit icon and 0 for the other
// depths. Its mask has 1 bit per pixel, the leftmost pixel highest, a set bit for a transparent pixel.
#pragma once

#include <memory>
#include <type_traits>

#include <ondrel/platform/os/graphics.h>

namespace ondrel::platform {

struct IconDestroyer {
  void operator()(HICON icon) const noexcept { DestroyIcon(icon); }
};
struct BitmapDeleter {
  void operator()(HBITMAP bitmap) const noexcept { DeleteObject(bitmap); }
};

/// Owners of one handle each, or of none.
using UniqueIcon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDestroyer>;
using UniqueBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;

}  // namespace ondrel::platform
