// The images of an icon as they are stored, with the lengths of their pixels.
#include "icon_images.h"

#include <cstring>
#include <utility>

namespace ondrel::command {

IconImage::IconImage(CMMCObjectBitmap&& colour, CMMCObjectBitmap&& mask)
    : m_colour(std::move(colour)), m_mask(std::move(mask)), m_isWhole(FindWhole()), m_hasAlpha(FindAlpha()) {}

bool IconImage::FindWhole() const {
  if (m_colour.bmBitsPixel != kColourBits || m_colour.bmWidth <= 0 || m_colour.bmHeight <= 0) return false;
  const auto rowBytes = static_cast<LONGLONG>(sizeof(IconColour)) * m_colour.bmWidth;
  const auto allBytes = static_cast<LONGLONG>(m_colour.bmWidthBytes) * m_colour.bmHeight;
  return m_colour.bmWidthBytes >= rowBytes && allBytes <= static_cast<LONGLONG>(m_colour.GetLength());
}

bool IconImage::FindAlpha() const {
  for (LONG y = 0; y < Height(); ++y) {
    for (LONG x = 0; x < Width(); ++x) {
      if (ColourAt(x, y)[3] != 0) return true;
    }
  }
  return false;
}

IconColour IconImage::ColourAt(LONG x, LONG y) const {
  IconColour colour = {};
  const auto* const row = static_cast<const BYTE*>(m_colour.bmBits) +
                          static_cast<std::size_t>(y) * static_cast<std::size_t>(m_colour.bmWidthBytes);
  std::memcpy(colour.data(), row + static_cast<std::size_t>(x) * colour.size(), colour.size());
  return colour;
}

IconImages ImagesOf(const CMMCObjectIcon& icon) {
  // Only what an icon stores tells how many bytes its images have, and shows its masks.
  CMemFile file;
  CVellum storing(&file, CArchive::store);
  icon.Serialize(storing);
  storing.Close();
  file.Seek(0, CFile::begin);
  CVellum loading(&file, CArchive::load);
  CMMCObjectBitmap bitmaps[4];  // large colour, large mask, small colour, small mask
  for (CMMCObjectBitmap& bitmap : bitmaps) bitmap.Deserialize(loading);
  return {{std::move(bitmaps[0]), std::move(bitmaps[1])}, {std::move(bitmaps[2]), std::move(bitmaps[3])}};
}

}  // namespace ondrel::command
