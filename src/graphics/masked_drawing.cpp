// Drawing an icon with its transparent pixels in a key colour.

#include "graphics/masked_drawing.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <span>
#include <utility>

namespace ondrel {

namespace {

constexpr int kMaskDepth = 1;
constexpr std::size_t kPixelBytes = 4;
constexpr std::size_t kMaskBytePixels = 8;

/// A pixel as it lies in memory: blue, green, red, and a byte that is always 0.
using Pixel = std::uint32_t;
using PixelBytes = std::array<unsigned char, kPixelBytes>;
constexpr auto kDrawnBytes = std::bit_cast<Pixel>(PixelBytes{0xFF, 0xFF, 0xFF, 0});

Pixel PixelOf(DWORD colour) {
  const auto byte = [colour](int shift) { return static_cast<unsigned char>(colour >> shift); };
  return std::bit_cast<Pixel>(PixelBytes{byte(16), byte(8), byte(0), 0});
}

/// Four pixels, for which half a byte of the mask speaks.
constexpr std::size_t kRun = 4;
using PixelRun = std::array<Pixel, kRun>;

using RunTable = std::array<PixelRun, 16>;

constexpr RunTable MakeTransparentBytes() {
  RunTable table = {};
  for (std::size_t bits = 0; bits < table.size(); ++bits) {
    for (std::size_t index = 0; index < kRun; ++index) {
      table[bits][index] = (bits & (8U >> index)) != 0 ? kDrawnBytes : 0;
    }
  }
  return table;
}

/// The drawn bytes of the transparent pixels, for each half of a byte; its highest bit is the first pixel's. A table,
/// so that no pixel takes a branch, and four are one step where the processor has such steps.
constexpr RunTable kTransparentBytes = MakeTransparentBytes();

/// Draws the first `count` of four pixels: the key where they are transparent, else their colours.
inline void DrawRun(unsigned char* target, const unsigned char* colours, const PixelRun& transparent, Pixel key,
                    std::size_t count) {
  PixelRun from = {};
  PixelRun to;
  std::memcpy(from.data(), colours, count * kPixelBytes);
  for (std::size_t index = 0; index < kRun; ++index) {
    const Pixel opaque = kDrawnBytes & ~transparent[index];
    to[index] = (key & transparent[index]) | (from[index] & opaque);
  }
  std::memcpy(target, to.data(), count * kPixelBytes);
}

}  // namespace

void MaskedDrawing::Draw(CMMCObjectBitmap& target, LONGLONG left, const CMMCObjectIcon& icon, bool large,
                         DWORD colour) {
  // An icon from an image may claim any geometry: the target's buffer, which really exists, bounds the work.
  if (target.bmBitsPixel != kDepth || target.GetLength() == 0) return;
  const CMMCObjectIcon::CBitmapData& images = icon.Images(large);
  const LONG height = std::min(images.m_colour.bmHeight, target.bmHeight);
  // Below 0, and far below what a LONG holds, for an icon that stands behind the target's end.
  const LONGLONG width = std::min<LONGLONG>(images.m_colour.bmWidth, target.bmWidth - left);
  if (width <= 0) return;
  for (LONG y = 0; y < height; ++y) {
    LONG x = DrawStart(target, left, images, y, static_cast<LONG>(width), colour);
    for (; x < width; ++x) target.SetPixel(static_cast<int>(left + x), y, icon.GetPixel(large, x, y, colour));
  }
}

std::vector<unsigned char> MaskedDrawing::TakePixels(CMMCObjectBitmap& bitmap) {
  bitmap.bmBits = nullptr;
  return std::exchange(bitmap.m_pixels, {});
}

LONG MaskedDrawing::DrawStart(CMMCObjectBitmap& target, LONGLONG left, const CMMCObjectIcon::CBitmapData& images,
                              LONG y, LONG width, DWORD colour) {
  const CMMCObjectBitmap& colours = images.m_colour;
  const CMMCObjectBitmap& mask = images.m_mask;
  if (colours.bmBitsPixel != kDepth || mask.bmBitsPixel != kMaskDepth) return 0;
  const std::span<const unsigned char> colourBytes = colours.FromRow(y);
  const std::span<const unsigned char> maskBytes = mask.FromRow(y);
  const std::size_t targetStart = static_cast<std::size_t>(left) * kPixelBytes;
  const std::span<const unsigned char> targetBytes = target.FromRow(y);
  if (mask.bmWidth <= 0 || targetBytes.size() < targetStart) return 0;
  const std::size_t count = std::min({static_cast<std::size_t>(width), static_cast<std::size_t>(mask.bmWidth),
                                      colourBytes.size() / kPixelBytes, maskBytes.size() * kMaskBytePixels,
                                      (targetBytes.size() - targetStart) / kPixelBytes});

  unsigned char* to = target.m_pixels.data() + (targetBytes.data() - target.m_pixels.data()) + targetStart;
  const unsigned char* from = colourBytes.data();
  const Pixel key = PixelOf(colour);
  std::size_t x = 0;
  const auto draw = [&](unsigned half, std::size_t pixels) {
    DrawRun(to + x * kPixelBytes, from + x * kPixelBytes, kTransparentBytes[half], key, pixels);
    x += pixels;
  };
  while (x + kMaskBytePixels <= count) {
    const unsigned byte = maskBytes[x / kMaskBytePixels];
    draw(byte >> 4, kRun);
    draw(byte & 0xF, kRun);
  }
  if (x < count) {
    const unsigned byte = maskBytes[x / kMaskBytePixels];
    draw(byte >> 4, std::min(kRun, count - x));
    draw(byte & 0xF, count - x);
  }
  return static_cast<LONG>(count);
}

}  // namespace ondrel
