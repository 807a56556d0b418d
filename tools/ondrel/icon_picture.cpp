// Images and masks of an icon, side by side.
#include "icon_picture.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace ondrel::command {
namespace {

constexpr BYTE kOpaque = 0xFF;

using Colour = std::array<BYTE, 4>;  // blue, green, red, alpha
using Pixel = std::array<BYTE, 4>;   // red, green, blue, alpha

/// One size of an icon.
class IconImages {
 public:
  IconImages(const CMMCObjectIcon& icon, bool large)
      : m_icon(icon), m_large(large), m_image(icon.GetColourBitmap(large)) {
    for (LONG y = 0; y < Height(); ++y) {
      for (LONG x = 0; x < Width(); ++x) m_hasAlpha = m_hasAlpha || ColourAt(x, y)[3] != 0;
    }
  }

  LONG Width() const { return m_image.bmWidth; }
  LONG Height() const { return m_image.bmHeight; }

  Pixel ImageAt(LONG x, LONG y) const {
    const Colour colour = ColourAt(x, y);
    const BYTE alpha = m_hasAlpha ? colour[3] : IsTransparent(x, y) ? 0 : kOpaque;
    return {colour[2], colour[1], colour[0], alpha};
  }
  Pixel MaskAt(LONG x, LONG y) const {
    const BYTE level = IsTransparent(x, y) ? 0xFF : 0;
    return {level, level, level, kOpaque};
  }

 private:
  Colour ColourAt(LONG x, LONG y) const {
    Colour colour = {};
    if (m_image.bmBitsPixel != kColourBits) return colour;  // which no system makes of an icon's image
    const auto* const row = static_cast<const BYTE*>(m_image.bmBits) +
                            static_cast<std::size_t>(y) * static_cast<std::size_t>(m_image.bmWidthBytes);
    std::memcpy(colour.data(), row + static_cast<std::size_t>(x) * colour.size(), colour.size());
    return colour;
  }
  bool IsTransparent(LONG x, LONG y) const {
    // Only where the mask hides the colour does the key show through.
    return m_icon.GetPixel(m_large, x, y, 0) != m_icon.GetPixel(m_large, x, y, 1);
  }

  const CMMCObjectIcon& m_icon;
  const bool m_large;
  const tagBITMAP& m_image;
  bool m_hasAlpha = false;
};

template <class PixelAt>
void Draw(platform::Picture& picture, LONG left, const IconImages& images, PixelAt pixelAt) {
  for (LONG y = 0; y < images.Height(); ++y) {
    for (LONG x = 0; x < images.Width(); ++x) {
      const Pixel pixel = pixelAt(x, y);
      std::copy(pixel.begin(), pixel.end(), picture.Pixel(left + x, y));
    }
  }
}

}  // namespace

platform::Picture PictureOf(const CMMCObjectIcon& icon) {
  const IconImages sizes[] = {{icon, true}, {icon, false}};
  LONG width = 0;
  LONG height = 0;
  for (const IconImages& images : sizes) {
    width += 2 * images.Width();
    height = std::max(height, images.Height());
  }
  platform::Picture picture(width, height, platform::Picture::Channels::rgba);
  LONG left = 0;
  for (const IconImages& images : sizes) {
    Draw(picture, left, images, [&](LONG x, LONG y) { return images.ImageAt(x, y); });
    left += images.Width();
    Draw(picture, left, images, [&](LONG x, LONG y) { return images.MaskAt(x, y); });
    left += images.Width();
  }
  return picture;
}

}  // namespace ondrel::command
