// Images and masks of an icon, side by side.
#include "icon_picture.h"

#include <algorithm>
#include <array>

namespace ondrel::command {
namespace {

constexpr BYTE kOpaque = 0xFF;

using Pixel = std::array<BYTE, 4>;  // red, green, blue, alpha

Pixel ImagePixel(const IconImage& image, LONG x, LONG y) {
  const IconColour colour = image.ColourAt(x, y);
  const BYTE alpha = image.HasAlpha() ? colour[3] : image.IsTransparent(x, y) ? 0 : kOpaque;
  return {colour[2], colour[1], colour[0], alpha};
}

Pixel MaskPixel(const IconImage& image, LONG x, LONG y) {
  const BYTE level = image.IsTransparent(x, y) ? 0xFF : 0;
  return {level, level, level, kOpaque};
}

void Draw(platform::Picture& picture, LONG left, const IconImage& image,
          Pixel (*pixelOf)(const IconImage&, LONG, LONG)) {
  for (LONG y = 0; y < image.Height(); ++y) {
    for (LONG x = 0; x < image.Width(); ++x) {
      const Pixel pixel = pixelOf(image, x, y);
      std::copy(pixel.begin(), pixel.end(), picture.Pixel(left + x, y));
    }
  }
}

}  // namespace

platform::Picture PictureOf(const CMMCObjectIcon& icon) {
  const auto& [large, smallIcon] = ImagesOf(icon);
  platform::Picture picture(2 * (large.Width() + smallIcon.Width()), std::max(large.Height(), smallIcon.Height()),
                            platform::Picture::Channels::rgba);
  LONG left = 0;
  for (const IconImage* const image : {&large, &smallIcon}) {
    Draw(picture, left, *image, ImagePixel);
    left += image->Width();
    Draw(picture, left, *image, MaskPixel);
    left += image->Width();
  }
  return picture;
}

platform::Picture PictureOf(const IconImage& image) {
  platform::Picture picture(image.Width(), image.Height(), platform::Picture::Channels::rgba);
  Draw(picture, 0, image, ImagePixel);
  return picture;
}

}  // namespace ondrel::command
