// The images of an icon, those of an icon in black and white included, which the system keeps in another form.
#include <ondrel/platform/graphics.h>

#include <vector>

namespace ondrel::platform {
namespace {

constexpr DWORD kWhite = 0x00FFFFFF;  // as a pixel of 32 bits: blue, green, red, no alpha

// Turns a mask of twice the height, the colours of an icon in black and white below its mask, into the two images.
BOOL SplitMask(const UniqueBitmap& both, UniqueBitmap& colour, UniqueBitmap& mask) {
  BITMAP geometry = {};
  if (GetObjectW(both.get(), sizeof geometry, &geometry) == 0) return FALSE;
  const auto width = static_cast<std::size_t>(geometry.bmWidth);
  const auto height = static_cast<std::size_t>(geometry.bmHeight / 2);
  const auto stride = static_cast<std::size_t>(geometry.bmWidthBytes);
  std::vector<BYTE> bits(stride * height * 2);
  const auto size = static_cast<LONG>(bits.size());
  if (GetBitmapBits(both.get(), size, bits.data()) != size) return FALSE;

  std::vector<DWORD> pixels(width * height);
  for (std::size_t y = 0; y < height; ++y) {
    const BYTE* const row = bits.data() + (height + y) * stride;
    for (std::size_t x = 0; x < width; ++x) {
      const bool isWhite = (row[x / 8] & (0x80U >> (x % 8))) != 0;
      pixels[y * width + x] = isWhite ? kWhite : 0;
    }
  }
  const int imageHeight = static_cast<int>(height);
  colour.reset(CreateBitmap(geometry.bmWidth, imageHeight, 1, 32, pixels.data()));
  mask.reset(CreateBitmap(geometry.bmWidth, imageHeight, 1, 1, bits.data()));
  if (colour != nullptr && mask != nullptr) return TRUE;
  colour.reset();
  mask.reset();
  return FALSE;
}

}  // namespace

BOOL GetIconImages(HICON icon, UniqueBitmap& colour, UniqueBitmap& mask) {
  ICONINFO info = {};
  if (!GetIconInfo(icon, &info)) return FALSE;
  UniqueBitmap iconColour(info.hbmColor);
  UniqueBitmap iconMask(info.hbmMask);
  if (iconColour == nullptr) return SplitMask(iconMask, colour, mask);
  colour = std::move(iconColour);
  mask = std::move(iconMask);
  return TRUE;
}

}  // namespace ondrel::platform
