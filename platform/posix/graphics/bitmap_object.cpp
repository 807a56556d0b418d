// Bitmap handles: making, measuring, reading and deleting them.
#include "graphics/bitmap_object.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <optional>
#include <utility>

#include <ondrel/platform/graphics.h>

using ondrel::platform::BitmapObject;
using ondrel::platform::BitmapStride;

namespace {

constexpr WORD kPlanes = 1;
constexpr UINT kMonochrome = 1;

// GetBitmapBits counts bytes in a LONG, so no bitmap has more.
constexpr std::size_t kMostBytes = std::numeric_limits<LONG>::max();

bool IsSupportedDepth(UINT bitsPerPixel) {
  constexpr UINT kDepths[] = {kMonochrome, 4, 8, 16, 24, 32};
  return std::find(std::begin(kDepths), std::end(kDepths), bitsPerPixel) != std::end(kDepths);
}

HBITMAP NoBitmap(DWORD code) {
  SetLastError(code);
  return nullptr;
}

/// The bytes that the rows of a bitmap take; none when there is no such bitmap.
std::optional<std::size_t> RowBytes(int width, int height, UINT planes, UINT bitsPerPixel) {
  if (width <= 0 || height <= 0 || planes != kPlanes || !IsSupportedDepth(bitsPerPixel)) return std::nullopt;
  const std::size_t stride = BitmapStride(static_cast<std::size_t>(width), bitsPerPixel);
  if (stride > kMostBytes / static_cast<std::size_t>(height)) return std::nullopt;
  return stride * static_cast<std::size_t>(height);
}

}  // namespace

HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits) {
  if (width < 0 || height < 0) return NoBitmap(ERROR_INVALID_PARAMETER);
  if (width == 0 || height == 0) {
    // Windows gives a bitmap of one monochrome pixel for an empty one, whatever else it was asked for.
    width = 1;
    height = 1;
    planes = kPlanes;
    bitsPerPixel = kMonochrome;
    bits = nullptr;
  }
  const std::optional<std::size_t> length = RowBytes(width, height, planes, bitsPerPixel);
  if (!length) return NoBitmap(ERROR_INVALID_PARAMETER);
  try {
    const auto* const first = static_cast<const BYTE*>(bits);
    std::vector<BYTE> copy = first != nullptr ? std::vector<BYTE>(first, first + *length) : std::vector<BYTE>(*length);
    return new BitmapObject{width, height, static_cast<WORD>(bitsPerPixel), std::move(copy)};
  } catch (const std::bad_alloc&) {
    return NoBitmap(ERROR_OUTOFMEMORY);
  }
}

ondrel::platform::UniqueBitmap ondrel::platform::AdoptBitmap(int width, int height, UINT bitsPerPixel,
                                                             std::vector<unsigned char> rows) {
  if (RowBytes(width, height, kPlanes, bitsPerPixel) != rows.size()) {
    return UniqueBitmap(NoBitmap(ERROR_INVALID_PARAMETER));
  }
  auto* const bitmap = new (std::nothrow) BitmapObject{width, height, static_cast<WORD>(bitsPerPixel), std::move(rows)};
  return UniqueBitmap(bitmap != nullptr ? bitmap : NoBitmap(ERROR_OUTOFMEMORY));
}

BOOL DeleteObject(HGDIOBJ object) {
  if (object == nullptr) {
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
  }
  delete object;
  return TRUE;
}

int GetObjectW(HGDIOBJ object, int size, void* description) {
  if (object == nullptr) {
    SetLastError(ERROR_INVALID_HANDLE);
    return 0;
  }
  constexpr int kSize = sizeof(BITMAP);
  if (description == nullptr) return kSize;
  if (size < kSize) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  const BITMAP bitmap = {
      .bmType = 0,
      .bmWidth = object->width,
      .bmHeight = object->height,
      .bmWidthBytes = static_cast<LONG>(BitmapStride(static_cast<std::size_t>(object->width), object->bitsPerPixel)),
      .bmPlanes = kPlanes,
      .bmBitsPixel = object->bitsPerPixel,
      .bmBits = nullptr,
  };
  std::memcpy(description, &bitmap, sizeof(bitmap));
  return kSize;
}

LONG GetBitmapBits(HBITMAP bitmap, LONG size, void* bits) {
  if (bitmap == nullptr) {
    SetLastError(ERROR_INVALID_HANDLE);
    return 0;
  }
  const auto length = static_cast<LONG>(bitmap->bits.size());
  if (bits == nullptr) return length;
  if (size < 0) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  const LONG count = std::min(size, length);
  std::memcpy(bits, bitmap->bits.data(), static_cast<std::size_t>(count));
  return count;
}
