// An icon in two sizes, taken from a file or loaded from an object image.

#include <ondrel/MMCObjectIcon.h>

#include <cmath>

#include "graphics/masked_drawing.h"

using ondrel::platform::ExtractFirstIcon;
using ondrel::platform::GetIconImages;
using ondrel::platform::UniqueBitmap;

namespace {

HRESULT LastErrorStatus() { return HRESULT_FROM_WIN32(GetLastError()); }

HRESULT CopyBitmap(HBITMAP source, CMMCObjectBitmap& target) {
  tagBITMAP& geometry = target;
  // A failure without a last error counts as success: the bitmap stays empty, and hosts have always gone on with it.
  if (GetObjectW(source, sizeof geometry, &geometry) == 0) return LastErrorStatus();
  target.Construct();
  GetBitmapBits(source, static_cast<LONG>(target.GetLength()), target.GetBuffer());
  return S_OK;
}

HRESULT CopyIcon(HICON icon, CMMCObjectIcon::CBitmapData& target) {
  UniqueBitmap colour;
  UniqueBitmap mask;
  if (!GetIconImages(icon, colour, mask)) return LastErrorStatus();
  const HRESULT status = CopyBitmap(colour.get(), target.m_colour);
  return FAILED(status) ? status : CopyBitmap(mask.get(), target.m_mask);
}

struct Size {
  LONG width = 0;
  LONG height = 0;
  bool IsEmpty() const { return width == 0 || height == 0; }
};

/// The size of an icon handle's colour image; empty when it cannot be measured.
Size Measure(HICON icon) {
  UniqueBitmap colour;
  UniqueBitmap mask;
  BITMAP geometry = {};
  if (!GetIconImages(icon, colour, mask) || GetObjectW(colour.get(), sizeof geometry, &geometry) == 0) return {};
  return {geometry.bmWidth, geometry.bmHeight};
}

/// How far a size is from an area, relative to the area. Infinite, or no number, for an area of 0.
float Distance(const Size& size, int area) {
  // Unsigned, so that areas beyond 32 bits wrap around instead of overflowing.
  const auto measured = static_cast<unsigned>(size.width) * static_cast<unsigned>(size.height);
  const int difference = static_cast<int>(measured - static_cast<unsigned>(area));
  return std::fabs(static_cast<float>(difference)) / static_cast<float>(area);
}

}  // namespace

CMMCObjectIcon::CBitmapData::CBitmapData() = default;
CMMCObjectIcon::CBitmapData::CBitmapData(CBitmapData&& other) noexcept = default;
CMMCObjectIcon::CBitmapData::~CBitmapData() = default;

CMMCObjectIcon::CMMCObjectIcon() = default;

CMMCObjectIcon::CMMCObjectIcon(CMMCObjectIcon&& other) noexcept = default;

CMMCObjectIcon::~CMMCObjectIcon() {
  m_largeIcon.reset();
  m_smallIcon.reset();
}

HRESULT CMMCObjectIcon::Construct(CString path) {
  HRESULT status = ExtractFirstIcon(path, m_largeIcon, m_smallIcon);
  if (SUCCEEDED(status)) status = CopyIcon(m_largeIcon.get(), m_large);
  return FAILED(status) ? status : CopyIcon(m_smallIcon.get(), m_small);
}

HICON CMMCObjectIcon::GetIcon(int cx, int cy) const {
  const Size large = Measure(m_largeIcon.get());
  const Size smallIcon = Measure(m_smallIcon.get());
  if (large.IsEmpty()) return smallIcon.IsEmpty() ? nullptr : m_smallIcon.get();
  if (smallIcon.IsEmpty()) return m_largeIcon.get();
  const int area = static_cast<int>(static_cast<unsigned>(cx) * static_cast<unsigned>(cy));
  // Not "small unless large is nearer": with an area of 0 neither comparison holds, and the large icon is the answer.
  return Distance(large, area) > Distance(smallIcon, area) ? m_smallIcon.get() : m_largeIcon.get();
}

const tagBITMAP& CMMCObjectIcon::GetColourBitmap(bool large) const { return Images(large).m_colour; }

CMMCObjectBitmap CMMCObjectIcon::GetMaskedBitmap(bool large, DWORD colour) const {
  const tagBITMAP& source = Images(large).m_colour;
  CMMCObjectBitmap masked(source.bmWidth, source.bmHeight, source.bmPlanes, source.bmBitsPixel);
  ondrel::MaskedDrawing::Draw(masked, 0, *this, large, colour);
  return masked;
}

DWORD CMMCObjectIcon::GetPixel(bool large, int x, int y, DWORD colour) const {
  const CBitmapData& images = Images(large);
  return images.m_mask.GetPixel(x, y) != 0 ? colour : images.m_colour.GetPixel(x, y);
}

void CMMCObjectIcon::Serialize(CVellum& archive) const {
  for (const CBitmapData* const images : {&m_large, &m_small}) {
    images->m_colour.Serialize(archive);
    images->m_mask.Serialize(archive);
  }
}

void CMMCObjectIcon::Deserialize(CVellum& archive) {
  for (CBitmapData* const images : {&m_large, &m_small}) {
    images->m_colour.Deserialize(archive);
    images->m_mask.Deserialize(archive);
  }
}
