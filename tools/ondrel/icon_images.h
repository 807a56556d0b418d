// The images of an icon, to be looked at pixel by pixel whatever an object image claims of them.
#pragma once

#include <array>

#include <ondrel/MMCObjectIcon.h>

namespace ondrel::command {

/// Bits per pixel of images with colours to show.
inline constexpr WORD kColourBits = 32;

/// Blue, green, red, alpha.
using IconColour = std::array<BYTE, 4>;

/// One size of an icon.
class IconImage {
 public:
  IconImage(CMMCObjectBitmap&& colour, CMMCObjectBitmap&& mask);

  /// In pixels; 0 for an image that has not 32 bits per pixel, or not all the bytes that its geometry says.
  LONG Width() const { return m_isWhole ? m_colour.bmWidth : 0; }
  LONG Height() const { return m_isWhole ? m_colour.bmHeight : 0; }
  /// Whether any pixel has an alpha other than 0.
  bool HasAlpha() const { return m_hasAlpha; }

  // Of a pixel within width and height.

  IconColour ColourAt(LONG x, LONG y) const;
  bool IsTransparent(LONG x, LONG y) const { return m_mask.GetPixel(x, y) != 0; }

 private:
  bool FindWhole() const;
  bool FindAlpha() const;

  CMMCObjectBitmap m_colour;
  CMMCObjectBitmap m_mask;
  bool m_isWhole;
  bool m_hasAlpha;
};

struct IconImages {
  IconImage large;
  IconImage smallIcon;
};

/// Copies of an icon's images. Raises the memory exception.
IconImages ImagesOf(const CMMCObjectIcon& icon);

}  // namespace ondrel::command
