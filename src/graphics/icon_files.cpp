// The set's icon files: adding and finding them, image lists and strips, and their records in the object image.

#include <ondrel/MMCObjectSet.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "graphics/masked_drawing.h"
#include "statuses.h"

using ondrel::kAlreadyExists;
using ondrel::MaskedDrawing;
using ondrel::platform::AdoptBitmap;
using ondrel::platform::UniqueBitmap;

namespace {

constexpr int kAppend = -1;

/// Bytes of a strip with its rows padded: as many as its pixels may take without. Else a strip of one column, which
/// has a bit for each row, would take sixteen times what is counted.
constexpr LONGLONG kMostPaddedBytes = std::numeric_limits<LONG>::max() / 8;

/// The height of the first icon's image, and its width times `count`. Empty when there is no icon.
CMMCObjectBitmap MakeStrip(const std::map<__int64, CMMCObjectIcon>& icons, bool large) {
  if (icons.empty()) return {};
  const tagBITMAP& first = icons.begin()->second.GetColourBitmap(large);
  const LONGLONG width = static_cast<LONGLONG>(first.bmWidth) * static_cast<LONGLONG>(icons.size());
  if (width != static_cast<LONG>(width)) AfxThrowMemoryException();
  return CMMCObjectBitmap(static_cast<LONG>(width), first.bmHeight, first.bmPlanes, first.bmBitsPixel);
}

/// The depth that a platform may make of another one, which it then reads the rows with.
LONGLONG RoundedDepth(LONGLONG depth) {
  for (const LONGLONG known : {1, 4, 8, 16, 24, 32}) {
    if (depth <= known) return known;
  }
  return depth;
}

/// Hands a strip to the platform, which reads rows padded to 2 bytes, of a depth that it knows; those of a strip may be
/// shorter.
UniqueBitmap MakePlatformBitmap(CMMCObjectBitmap& strip) {
  const LONGLONG depth = RoundedDepth(LONGLONG{strip.bmPlanes} * strip.bmBitsPixel);
  // Some platforms pass over the signs of a size.
  const LONGLONG paddedRow = (std::abs(LONGLONG{strip.bmWidth}) * depth + 15) / 16 * 2;
  const LONGLONG needed = paddedRow * std::abs(LONGLONG{strip.bmHeight});
  if (needed > kMostPaddedBytes) {
    SetLastError(ERROR_INVALID_PARAMETER);  // as the platform itself says of sizes that it does not make
    return nullptr;
  }
  const bool hasPlatformRows = strip.bmBitsPixel == MaskedDrawing::kDepth && strip.bmPlanes == 1;
  if (hasPlatformRows && strip.bmWidth > 0 && strip.bmHeight > 0) {
    return AdoptBitmap(strip.bmWidth, strip.bmHeight, strip.bmBitsPixel, MaskedDrawing::TakePixels(strip));
  }
  const void* bits = strip.GetBuffer();
  std::vector<unsigned char> padded;
  if (needed > static_cast<LONGLONG>(strip.GetLength())) {
    // Only a depth that is never drawn has other rows, so these are all zero as well.
    if (strip.GetLength() == 0) {
      bits = nullptr;
    } else {
      padded.resize(static_cast<std::size_t>(needed));
      bits = padded.data();
    }
  }
  return UniqueBitmap(CreateBitmap(strip.bmWidth, strip.bmHeight, strip.bmPlanes, strip.bmBitsPixel, bits));
}

}  // namespace

HRESULT CMMCObjectSet::AddIconFile(CString path, __int64& cookie) {
  CSingleLock lock(&m_lock, TRUE);
  cookie = 0;
  const __int64 newCookie = GenerateFileCookie();
  const HRESULT status = InsertIconFile(std::move(path), newCookie);
  if (FAILED(status)) return status;
  cookie = newCookie;
  SetModifiedFlag(TRUE);
  return S_OK;
}

HRESULT CMMCObjectSet::InsertIconFile(CString path, __int64 cookie) {
  // Before the lock is taken: reading the file must not keep other threads waiting.
  CMMCObjectIcon icon;
  if (const HRESULT status = icon.Construct(path); FAILED(status)) return status;

  CSingleLock lock(&m_lock, TRUE);
  if (m_tables.iconPaths.contains(path) || m_tables.iconCookiePaths.contains(cookie)) return kAlreadyExists;
  const auto entry = m_tables.iconPaths.emplace(std::move(path), cookie).first;
  HRESULT status = S_OK;
  try {
    m_tables.iconCookiePaths.emplace(cookie, entry);
    status = InsertIconFile(cookie, std::move(icon));
  } catch (...) {
    m_tables.iconCookiePaths.erase(cookie);
    m_tables.iconPaths.erase(entry);
    throw;
  }
  if (FAILED(status)) {
    m_tables.iconCookiePaths.erase(cookie);
    m_tables.iconPaths.erase(entry);
  }
  return status;
}

HRESULT CMMCObjectSet::InsertIconFile(__int64 cookie, CMMCObjectIcon&& icon) {
  CSingleLock lock(&m_lock, TRUE);
  CMMCObjectIcon local(std::move(icon));
  return m_tables.icons.try_emplace(cookie, std::move(local)).second ? S_OK : kAlreadyExists;
}

std::list<__int64> CMMCObjectSet::GetIconFiles() const {
  CSingleLock lock(&m_lock, TRUE);
  std::list<__int64> cookies;
  for (const auto& [cookie, icon] : m_tables.icons) cookies.push_back(cookie);
  return cookies;
}

bool CMMCObjectSet::GetIconFile(__int64 cookie, const CMMCObjectIcon** icon) const {
  CSingleLock lock(&m_lock, TRUE);
  const auto found = m_tables.icons.find(cookie);
  if (found == m_tables.icons.end()) return false;
  *icon = &found->second;
  return true;
}

bool CMMCObjectSet::GetIconFileImage(__int64 cookie, int& image) const {
  CSingleLock lock(&m_lock, TRUE);
  const auto found = m_imageIndices.find(cookie);
  if (found == m_imageIndices.end()) return false;
  image = found->second;
  return true;
}

void CMMCObjectSet::GetIconImageList(int cx, int cy, CImageList& list) {
  CSingleLock lock(&m_lock, TRUE);
  m_imageIndices.clear();
  for (const auto& [cookie, icon] : m_tables.icons) {
    const HICON handle = icon.GetIcon(cx, cy);
    if (handle == nullptr) continue;
    // A failed append is noted as it is, with -1.
    m_imageIndices.emplace(cookie, ImageList_ReplaceIcon(list.GetSafeHandle(), kAppend, handle));
  }
}

void CMMCObjectSet::GetIconBitmapImages(DWORD colour, HBITMAP& smallStrip, HBITMAP& largeStrip) {
  CSingleLock lock(&m_lock, TRUE);
  smallStrip = nullptr;
  largeStrip = nullptr;
  m_imageIndices.clear();
  CMMCObjectBitmap smallPixels = MakeStrip(m_tables.icons, false);
  CMMCObjectBitmap largePixels = MakeStrip(m_tables.icons, true);
  int index = 0;
  for (const auto& [cookie, icon] : m_tables.icons) {
    // Every icon stands at its own width times its index: a strip is meant for icons of one size.
    const auto left = [index, &icon = icon](bool ofLarge) {
      return static_cast<LONGLONG>(index) * icon.GetColourBitmap(ofLarge).bmWidth;
    };
    MaskedDrawing::Draw(smallPixels, left(false), icon, false, colour);
    MaskedDrawing::Draw(largePixels, left(true), icon, true, colour);
    m_imageIndices.emplace(cookie, index++);
  }

  UniqueBitmap smallBitmap = MakePlatformBitmap(smallPixels);
  UniqueBitmap largeBitmap;
  if (smallBitmap != nullptr) largeBitmap = MakePlatformBitmap(largePixels);
  if (smallBitmap == nullptr || largeBitmap == nullptr) {
    const DWORD reason = GetLastError();
    smallBitmap.reset();
    SetLastError(reason);  // deleting may have changed it
    return;
  }
  smallStrip = smallBitmap.release();
  largeStrip = largeBitmap.release();
}

void CMMCObjectSet::SerializeIconFile(__int64 cookie, CVellum& archive) const {
  CSingleLock lock(&m_lock, TRUE);
  const auto icon = m_tables.icons.find(cookie);
  // Nothing is written and nothing is raised, unlike for nodes and code files, whatever the archive's direction.
  if (icon == m_tables.icons.end()) return;
  archive << cookie;
  icon->second.Serialize(archive);
}

void CMMCObjectSet::DeserializeIconFile(CVellum& archive) {
  CSingleLock lock(&m_lock, TRUE);
  __int64 cookie = 0;
  CMMCObjectIcon icon;
  archive >> cookie;
  icon.Deserialize(archive);
  AtlThrowIfFailed(InsertIconFile(cookie, std::move(icon)));
}
