// Contract: pictures as the bytes of PNG files, for tools that show people what they made.
#pragma once

#include <vector>

#include <ondrel/platform/types.h>

namespace ondrel::platform {

/// Pixels of 8 bits a channel: red, green, blue and, where there are four, alpha. Rows from the top, without padding.
struct Picture {
  enum class Channels { rgb = 3, rgba = 4 };

  /// All zero: black, and transparent where there is alpha.
  Picture(LONG pictureWidth, LONG pictureHeight, Channels pictureChannels)
      : width(pictureWidth), height(pictureHeight), channels(pictureChannels), bytes(RowBytes() * Size(height)) {}

  BYTE* Pixel(LONG x, LONG y) { return bytes.data() + RowBytes() * Size(y) + Size(x) * PixelBytes(); }
  std::size_t PixelBytes() const { return static_cast<std::size_t>(channels); }
  std::size_t RowBytes() const { return Size(width) * PixelBytes(); }

  LONG width;
  LONG height;
  Channels channels;
  std::vector<BYTE> bytes;

 private:
  static std::size_t Size(LONG count) { return static_cast<std::size_t>(count); }
};

/// The same bytes for the same picture: no time, no name of a program. Raises CInvalidArgException for a picture
/// without pixels, and the memory exception.
std::vector<BYTE> EncodePng(const Picture& picture);

}  // namespace ondrel::platform
