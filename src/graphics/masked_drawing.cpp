// Drawing an icon with its transparent pixels in a key colour.

#include "graphics/masked_drawing.h"

#include <algorithm>

namespace ondrel {

namespace {
constexpr int kDrawnDepth = 32;
}

void DrawMasked(CMMCObjectBitmap& target, LONGLONG left, const CMMCObjectIcon& icon, bool large, DWORD colour) {
  // An icon from an image may claim any geometry: the target's buffer, which really exists, bounds the work.
  if (target.bmBitsPixel != kDrawnDepth || target.GetLength() == 0) return;
  const tagBITMAP& source = icon.GetColourBitmap(large);
  const LONG height = std::min(source.bmHeight, target.bmHeight);
  // Below 0, and far below what a LONG holds, for an icon that stands behind the target's end.
  const LONGLONG width = std::min<LONGLONG>(source.bmWidth, target.bmWidth - left);
  for (LONG y = 0; y < height; ++y) {
    for (LONG x = 0; x < width; ++x) {
      target.SetPixel(static_cast<int>(left + x), y, icon.GetPixel(large, x, y, colour));
    }
  }
}

}  // namespace ondrel
