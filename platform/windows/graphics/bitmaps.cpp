// Bitmaps of rows that the model has no more use for. The system copies them all the same.
#include <ondrel/platform/graphics.h>

namespace ondrel::platform {
namespace {

constexpr UINT kPlanes = 1;

/// Rows are padded to 2 bytes.
ULONGLONG RowBytes(int width, int height, UINT bitsPerPixel) {
  constexpr ULONGLONG kUnitBits = 16;
  const ULONGLONG units = (static_cast<ULONGLONG>(width) * bitsPerPixel + kUnitBits - 1) / kUnitBits;
  return units * (kUnitBits / 8) * static_cast<ULONGLONG>(height);
}

}  // namespace

UniqueBitmap AdoptBitmap(int width, int height, UINT bitsPerPixel, std::vector<unsigned char> rows) {
  if (width < 1 || height < 1 || RowBytes(width, height, bitsPerPixel) != rows.size()) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  return UniqueBitmap(CreateBitmap(width, height, kPlanes, bitsPerPixel, rows.data()));
}

}  // namespace ondrel::platform
