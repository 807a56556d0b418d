// A bitmap held in memory: geometry, pixels, and its binary form.

#include <ondrel/MMCObjectBitmap.h>

#include <limits>

namespace {

constexpr int kMaskDepth = 1;
constexpr int kColourDepth = 32;
constexpr LONGLONG kColourBytes = 4;
constexpr int kPixelsPerMaskByte = 8;
constexpr DWORD kWhite = 0x00FFFFFF;

/// (planes * bitsPerPixel * height * width) / 8, or -1 when a signed 32-bit product cannot hold it or it is negative.
LONGLONG BufferSize(const tagBITMAP& geometry) {
  constexpr LONGLONG kLargest = std::numeric_limits<LONG>::max();
  const LONGLONG factors[] = {geometry.bmPlanes, geometry.bmBitsPixel, geometry.bmHeight, geometry.bmWidth};
  LONGLONG product = 1;
  bool zero = false;
  bool tooLarge = false;
  for (const LONGLONG factor : factors) {
    zero = zero || factor == 0;
    // Below 2^31 before a factor of at most 2^31 in size: the 64-bit product cannot overflow.
    if (!tooLarge) product *= factor;
    tooLarge = tooLarge || product > kLargest || product < -kLargest;
  }
  if (zero) return 0;
  return tooLarge || product < 0 ? -1 : product / 8;
}

void MoveGeometry(tagBITMAP& target, tagBITMAP& source, std::vector<unsigned char>& pixels) {
  target = source;
  target.bmBits = pixels.empty() ? nullptr : pixels.data();
  source.bmBits = nullptr;
}

}  // namespace

CMMCObjectBitmap::CMMCObjectBitmap() : tagBITMAP{} {}

CMMCObjectBitmap::CMMCObjectBitmap(LONG width, LONG height, WORD planes, WORD bitsPerPixel) : CMMCObjectBitmap() {
  bmWidth = width;
  bmHeight = height;
  // A 32-bit product; one that does not fit belongs to a geometry that Construct refuses or that has no pixels.
  bmWidthBytes = static_cast<LONG>(static_cast<DWORD>(static_cast<LONGLONG>(bitsPerPixel) * width)) / 8;
  bmPlanes = planes;
  bmBitsPixel = bitsPerPixel;
  Construct();
}

CMMCObjectBitmap::CMMCObjectBitmap(CMMCObjectBitmap&& other) noexcept : m_pixels(std::move(other.m_pixels)) {
  MoveGeometry(*this, other, m_pixels);
}

CMMCObjectBitmap& CMMCObjectBitmap::operator=(CMMCObjectBitmap&& other) noexcept {
  if (this != &other) {
    m_pixels = std::move(other.m_pixels);
    other.m_pixels.clear();
    MoveGeometry(*this, other, m_pixels);
  }
  return *this;
}

CMMCObjectBitmap::~CMMCObjectBitmap() = default;

void CMMCObjectBitmap::Construct() {
  const LONGLONG size = BufferSize(*this);
  if (size < 0) AfxThrowMemoryException();
  m_pixels.resize(static_cast<std::size_t>(size));
  bmBits = GetBuffer();
}

LONGLONG CMMCObjectBitmap::Locate(int x, int y, LONGLONG offsetInRow, LONGLONG size) const {
  if (x < 0 || x >= bmWidth) return -1;
  const std::span<const unsigned char> row = FromRow(y);
  if (offsetInRow + size > static_cast<LONGLONG>(row.size())) return -1;
  return row.data() - m_pixels.data() + offsetInRow;
}

DWORD CMMCObjectBitmap::GetPixel(int x, int y) const {
  if (bmBitsPixel == kMaskDepth) {
    const LONGLONG offset = Locate(x, y, x / kPixelsPerMaskByte, 1);
    if (offset < 0) return 0;
    const int bit = kPixelsPerMaskByte - 1 - x % kPixelsPerMaskByte;
    return ((m_pixels[static_cast<std::size_t>(offset)] >> bit) & 1) != 0 ? kWhite : 0;
  }
  if (bmBitsPixel == kColourDepth) {
    const LONGLONG offset = Locate(x, y, x * kColourBytes, kColourBytes);
    if (offset < 0) return 0;
    const unsigned char* const pixel = m_pixels.data() + offset;
    return (DWORD{pixel[0]} << 16) | (DWORD{pixel[1]} << 8) | DWORD{pixel[2]};
  }
  return 0;
}

void CMMCObjectBitmap::SetPixel(int x, int y, DWORD colour) {
  // Masks are read, never drawn: a 1-bit bitmap ignores writes on purpose, as every other depth does.
  if (bmBitsPixel != kColourDepth) return;
  const LONGLONG offset = Locate(x, y, x * kColourBytes, kColourBytes);
  if (offset < 0) return;
  unsigned char* const pixel = m_pixels.data() + offset;
  pixel[0] = static_cast<unsigned char>(colour >> 16);
  pixel[1] = static_cast<unsigned char>(colour >> 8);
  pixel[2] = static_cast<unsigned char>(colour);
}

void* CMMCObjectBitmap::GetBuffer() { return m_pixels.empty() ? nullptr : m_pixels.data(); }

DWORD CMMCObjectBitmap::GetLength() const { return static_cast<DWORD>(m_pixels.size()); }

void CMMCObjectBitmap::Serialize(CVellum& archive) const {
  archive << bmType << bmWidth << bmHeight << bmWidthBytes << bmPlanes << bmBitsPixel;
  archive.Write(m_pixels);
}

void CMMCObjectBitmap::Deserialize(CVellum& archive) {
  archive >> bmType >> bmWidth >> bmHeight >> bmWidthBytes >> bmPlanes >> bmBitsPixel;
  archive.Read(m_pixels);
  bmBits = GetBuffer();
}
