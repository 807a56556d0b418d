#include "icon_views.h"

#include <cmath>

namespace ondrel::test {
namespace {

constexpr RgbaPixel kBlack = {0, 0, 0, 255};
constexpr RgbaPixel kWhite = {255, 255, 255, 255};

}  // namespace

RgbaPicture IconView(const IconPicture& picture, int size) {
  const auto source = [size](int position, int sourceSize) {
    return static_cast<int>(std::floor((position + 0.5) * sourceSize / size));
  };
  bool hasAlpha = false;
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      if (picture.Colour(source(x, picture.width), source(y, picture.height))[3] != 0) hasAlpha = true;
    }
  }
  RgbaPicture view(2 * size, size);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      const int sourceX = source(x, picture.width);
      const int sourceY = source(y, picture.height);
      const PixelBytes colour = picture.Colour(sourceX, sourceY);
      const bool isTransparent = picture.IsTransparent(sourceX, sourceY);
      const std::uint8_t madeUp = isTransparent ? 0 : 255;
      view.At(x, y) = {colour[2], colour[1], colour[0], hasAlpha ? colour[3] : madeUp};
      view.At(size + x, y) = isTransparent ? kWhite : kBlack;
    }
  }
  return view;
}

RgbaPicture LargeView(const std::string& file) { return DecodePng(file).Columns(0, 2 * kLargeSize); }

RgbaPicture SmallView(const std::string& file) {
  RgbaPicture part = DecodePng(file).Columns(2 * kLargeSize, 2 * kSmallSize);
  part.height = kSmallSize;
  part.pixels.resize(static_cast<std::size_t>(part.width * part.height));
  return part;
}

std::string PngImageBytes(const IconPicture& picture) {
  RgbaPicture pixels(picture.width, picture.height);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const PixelBytes colour = picture.Colour(x, y);
      pixels.At(x, y) = {colour[2], colour[1], colour[0], colour[3]};
    }
  }
  return EncodePng(pixels);
}

}  // namespace ondrel::test
