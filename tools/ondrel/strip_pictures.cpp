// From the set's strips, which are bitmaps of the system, to pictures.
#include "strip_pictures.h"

#include <vector>

#include <ondrel/platform/graphics.h>

#include "icon_picture.h"
#include "printable.h"

namespace ondrel::command {
namespace {

constexpr std::size_t kColourBytes = kColourBits / 8;

// Beyond 65,536 icons of 32 x 32 pixels. An object image may claim any size for an icon, and with it for the strips.
constexpr LONGLONG kMostStripPixels = 64LL * 1024 * 1024;

struct Strips {
  platform::UniqueBitmap smallIcons;
  platform::UniqueBitmap largeIcons;
};

/// Refuses a definition whose strips would be no pictures. Their geometry follows from the first icon's.
void RequireIcons(const Definition& definition) {
  const auto icons = definition.set.GetIconFiles();
  const CMMCObjectIcon* first = nullptr;
  if (icons.empty() || !definition.set.GetIconFile(icons.front(), &first)) {
    throw Failure(definition.At(0),
                  definition.form == DefinitionForm::project
                      ? "the project has no icon files, so there are no strips; add an Icon to its FileGroup"
                      : "the object image has no icon files, so there are no strips; add one to its project and "
                        "compile it anew",
                  StatusText(HRESULT_FROM_WIN32(ERROR_RESOURCE_DATA_NOT_FOUND)));
  }
  const auto count = static_cast<LONGLONG>(icons.size());
  for (const bool large : {false, true}) {
    const tagBITMAP& image = first->GetColourBitmap(large);
    if (image.bmWidth > 0 && image.bmHeight > 0 &&
        LONGLONG{image.bmWidth} * image.bmHeight <= kMostStripPixels / count) {
      continue;
    }
    throw Failure(definition.At(0),
                  "a strip of " + Counted(icons.size(), "icon", "icons") + " of " +
                      SizeText(image.bmWidth, image.bmHeight) + " pixels cannot be made; look at icon file " +
                      std::to_string(icons.front()) + " with 'ondrel show'",
                  StatusText(HRESULT_FROM_WIN32(ERROR_INVALID_DATA)));
  }
}

Strips MakeStrips(Definition& definition, DWORD key) {
  HBITMAP smallIcons = nullptr;
  HBITMAP largeIcons = nullptr;
  try {
    definition.set.GetIconBitmapImages(key, smallIcons, largeIcons);
  } catch (const std::exception&) {
    throw CurrentFailure(definition.At(0));
  }
  if (smallIcons != nullptr && largeIcons != nullptr) {
    return {platform::UniqueBitmap(smallIcons), platform::UniqueBitmap(largeIcons)};
  }
  const DWORD reason = GetLastError();
  const HRESULT status = reason == ERROR_SUCCESS ? E_FAIL : HRESULT_FROM_WIN32(reason);
  throw Failure(definition.At(0), "the system makes no strips of its icons; look at the first one with 'ondrel show'",
                StatusText(status));
}

/// Pixels of another depth than 32 bits are black by the rule of the strips.
platform::Picture StripPictureOf(const platform::UniqueBitmap& strip, const Definition& definition) {
  BITMAP geometry = {};
  std::vector<BYTE> bits;
  if (GetObjectW(strip.get(), sizeof geometry, &geometry) != 0) {
    bits.resize(static_cast<std::size_t>(geometry.bmWidthBytes) * static_cast<std::size_t>(geometry.bmHeight));
  }
  const auto size = static_cast<LONG>(bits.size());
  if (size == 0 || GetBitmapBits(strip.get(), size, bits.data()) != size) {
    throw Failure(definition.At(0), "its strips cannot be read; try again", StatusText(E_UNEXPECTED));
  }
  platform::Picture picture(geometry.bmWidth, geometry.bmHeight, platform::Picture::Channels::rgb);
  if (geometry.bmBitsPixel != kColourBits) return picture;
  for (LONG y = 0; y < picture.height; ++y) {
    const BYTE* colour = bits.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(geometry.bmWidthBytes);
    for (LONG x = 0; x < picture.width; ++x, colour += kColourBytes) {
      BYTE* const pixel = picture.Pixel(x, y);
      pixel[0] = colour[2];
      pixel[1] = colour[1];
      pixel[2] = colour[0];
    }
  }
  return picture;
}

}  // namespace

StripPictures MakeStripPictures(Definition& definition, DWORD key) {
  RequireIcons(definition);
  const Strips strips = MakeStrips(definition, key);
  return {StripPictureOf(strips.smallIcons, definition), StripPictureOf(strips.largeIcons, definition)};
}

}  // namespace ondrel::command
