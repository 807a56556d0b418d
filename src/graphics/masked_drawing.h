// Drawing an icon with its transparent pixels in a key colour.
#pragma once

#include <ondrel/MMCObjectIcon.h>

namespace ondrel {

/// Draws runs of pixels where bitmaps and icons would look each of them up; so it looks into both.
class MaskedDrawing {
 public:
  /// The bits per pixel of what is drawn into.
  static constexpr WORD kDepth = 32;

  /// Draws the icon's large or small image into `target`, whose pixels all have 0 for their fourth byte, the image's
  /// left edge at column `left`. What lies outside the target is cut off. A target of another depth stays as it is.
  static void Draw(CMMCObjectBitmap& target, LONGLONG left, const CMMCObjectIcon& icon, bool large, DWORD colour);

  /// The buffer of a bitmap, which is empty then.
  static std::vector<unsigned char> TakePixels(CMMCObjectBitmap& bitmap);

 private:
  /// Draws the first pixels of a row, at most `width`, as far as the target, colours of 32 bits and a mask of 1 bit all
  /// have them. How many they are; the rest is for single pixels.
  static LONG DrawStart(CMMCObjectBitmap& target, LONGLONG left, const CMMCObjectIcon::CBitmapData& images, LONG y,
                        LONG width, DWORD colour);
};

}  // namespace ondrel
