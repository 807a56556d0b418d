// A bitmap held in memory: its geometry and its pixel bytes.
#pragma once

#include <span>
#include <vector>

#include <ondrel/export.h>
#include <ondrel/platform/graphics.h>
#include <ondrel/platform/vellum.h>

namespace ondrel {
class MaskedDrawing;
}

/// A platform bitmap header with an owned pixel buffer; `bmBits` always points at the buffer (null when it is empty).
///
/// Two formats can be addressed by pixel: 32 bits per pixel (bytes blue, green, red and a fourth that is kept but never
/// drawn, at y * bmWidthBytes + x * 4) and 1 bit per pixel (bit 7 - x % 8 of the byte at y * bmWidthBytes + x / 8).
/// Every other depth is carried faithfully, reads as black and ignores writes. Rows run from the top. Colours are
/// COLORREF values, 0x00BBGGRR.
///
/// Movable, not copyable. One thread at a time, or only readers.
class ONDREL_API CMMCObjectBitmap : public tagBITMAP {
 public:
  CMMCObjectBitmap();  ///< No geometry, no pixels.
  /// A bitmap of zero bytes. Sizes are in pixels; rows take (bitsPerPixel * width) / 8 bytes and are not padded. Raises
  /// as Construct.
  CMMCObjectBitmap(LONG width, LONG height, WORD planes, WORD bitsPerPixel);
  /// A move takes the geometry and the buffer, and leaves the source without a buffer.
  CMMCObjectBitmap(CMMCObjectBitmap&& other) noexcept;
  CMMCObjectBitmap& operator=(CMMCObjectBitmap&& other) noexcept;
  virtual ~CMMCObjectBitmap();

  /// Sizes the buffer to (planes * bits per pixel * height * width) / 8 bytes of the current geometry, whatever
  /// bmWidthBytes says. Bytes that are there stay, new ones are zero. A size that is negative or beyond 31 bits, and
  /// one that memory has no room for, raises CMemoryException or std::bad_alloc; the buffer then stays as it was.
  void Construct();

  /// The colour of a pixel: of a mask white (0x00FFFFFF) for a set bit and 0 for a clear one; 0 for the depths that
  /// cannot be addressed and for any pixel outside the geometry or the buffer.
  DWORD GetPixel(int x, int y) const;
  /// Sets blue, green and red of a pixel of a 32-bit bitmap. Does nothing for other depths, masks included, or outside
  /// the geometry or the buffer.
  void SetPixel(int x, int y, DWORD colour);

  void* GetBuffer();        ///< The first pixel byte, as bmBits.
  DWORD GetLength() const;  ///< The length of the buffer in bytes.

  /// Stores bmType, bmWidth, bmHeight, bmWidthBytes (32 bits each), bmPlanes, bmBitsPixel (16 each) and the buffer (a
  /// byte vector). Raises the archive's exceptions.
  void Serialize(CVellum& archive) const;
  /// Loads a bitmap. The buffer takes the length that was stored, whatever the geometry says. What was read before an
  /// exception is kept.
  void Deserialize(CVellum& archive);

 private:
  friend class ondrel::MaskedDrawing;

  /// The bytes from the start of a row to the end of the buffer: its pixels may reach into the next rows. None for a
  /// row outside the geometry or the buffer.
  std::span<const unsigned char> FromRow(LONG y) const {
    if (y < 0 || y >= bmHeight || bmWidthBytes < 0) return {};
    const auto offset = static_cast<ULONGLONG>(y) * static_cast<ULONGLONG>(bmWidthBytes);
    if (offset > m_pixels.size()) return {};
    return std::span(m_pixels).subspan(static_cast<std::size_t>(offset));
  }
  /// The offset of `size` bytes of the pixel's row in the buffer, or -1 when they lie outside geometry or buffer.
  LONGLONG Locate(int x, int y, LONGLONG offsetInRow, LONGLONG size) const;

  std::vector<unsigned char> m_pixels;
};
