// Text in an archive: the prefix that tells its length and width, and its units.
#include <ondrel/platform/framework/archive.h>

#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include <ondrel/platform/framework/archive_block.h>

#include "narrow_text.h"

using ondrel::platform::LoadBlock;
using ondrel::platform::TextFromNarrow;

namespace {

constexpr BYTE kLongLength8 = 0xFF;           // behind it stands a WORD, the wide tag or a length
constexpr WORD kWideTag = 0xFFFE;             // the text has 16-bit units
constexpr WORD kLongLength16 = 0xFFFF;        // behind it stands a DWORD
constexpr DWORD kLongLength32 = 0xFFFFFFFFU;  // behind it stands a 64-bit length

constexpr std::size_t kShortText = 64;  // text of so many units or less is loaded in one step

constexpr int kNarrow = 1;
constexpr int kWide = 2;

// Loads `length` units. Raises endOfFile when the data ends before.
template <class Unit>
std::basic_string<Unit> LoadUnits(CArchive& archive, UINT_PTR length) {
  std::basic_string<Unit> units;
  if (length > kShortText) {
    LoadBlock(archive, length, units);
  } else {
    units.resize(length);
    const auto bytes = static_cast<UINT>(length * sizeof(Unit));
    if (archive.Read(units.data(), bytes) < bytes) AfxThrowArchiveException(CArchiveException::endOfFile);
  }
  return units;
}

}  // namespace

void AfxWriteStringLength(CArchive& archive, UINT_PTR length, BOOL unicode) {
  if (unicode) archive << kLongLength8 << kWideTag;
  if (length < kLongLength8) {
    archive << static_cast<BYTE>(length);
  } else if (length < kWideTag) {  // a WORD of this value would be taken for the tag
    archive << kLongLength8 << static_cast<WORD>(length);
  } else if (length < kLongLength32) {
    archive << kLongLength8 << kLongLength16 << static_cast<DWORD>(length);
  } else {
    archive << kLongLength8 << kLongLength16 << kLongLength32 << static_cast<ULONGLONG>(length);
  }
}

UINT_PTR AfxReadStringLength(CArchive& archive, int& charSize) {
  charSize = kNarrow;
  BYTE length8 = 0;
  archive >> length8;
  if (length8 < kLongLength8) return length8;
  WORD length16 = 0;
  archive >> length16;
  if (length16 == kWideTag) {
    charSize = kWide;
    archive >> length8;
    if (length8 < kLongLength8) return length8;
    archive >> length16;
  }
  if (length16 < kLongLength16) return length16;
  DWORD length32 = 0;
  archive >> length32;
  if (length32 < kLongLength32) return length32;
  ULONGLONG length64 = 0;
  archive >> length64;
  // No memory of this system could hold more than the type can say.
  if (length64 > std::numeric_limits<UINT_PTR>::max()) AfxThrowArchiveException(CArchiveException::endOfFile);
  return static_cast<UINT_PTR>(length64);
}

namespace ondrel::platform {

/// Nearly all text is wide and short: it is taken in one step when it lies in the buffer as a whole, or fits into it.
class ShortText {
 public:
  // False when the text is none that can be taken so; nothing has happened then.

  static bool Store(CArchive& archive, const CString& text) {
    archive.RequireStoring();
    const auto length = static_cast<std::size_t>(text.GetLength());
    const std::size_t bytes = length * sizeof(WCHAR);
    if (length >= kLongLength8 || kHead + bytes > archive.Buffered()) return false;
    BYTE* end = std::copy(kPrefix.begin(), kPrefix.end(), archive.m_lpBufCur);
    *end++ = static_cast<BYTE>(length);
    // No memcpy here, which the compiler would spell out in instructions that are slow with so few bytes.
    archive.m_lpBufCur = std::copy_n(reinterpret_cast<const BYTE*>(text.GetString()), bytes, end);
    return true;
  }

  static bool Load(CArchive& archive, CString& text) {
    archive.RequireLoading();
    const BYTE* const head = archive.m_lpBufCur;
    if (archive.Buffered() < kHead || !std::equal(kPrefix.begin(), kPrefix.end(), head)) return false;
    const BYTE length = head[kPrefix.size()];
    const std::size_t bytes = length * sizeof(WCHAR);
    if (length >= kLongLength8 || kHead + bytes > archive.Buffered()) return false;
    std::basic_string<WCHAR> units(length, WCHAR{});
    std::copy_n(head + kHead, bytes, reinterpret_cast<BYTE*>(units.data()));
    archive.m_lpBufCur += kHead + bytes;
    text = CString(std::move(units));
    return true;
  }

 private:
  static constexpr std::array<BYTE, 3> kPrefix{kLongLength8, kWideTag & 0xFF, kWideTag >> 8};
  static constexpr std::size_t kHead = kPrefix.size() + 1;  // with the length, a BYTE
};

}  // namespace ondrel::platform

CArchive& operator<<(CArchive& archive, const CString& text) {
  if (ondrel::platform::ShortText::Store(archive, text)) return archive;
  const auto length = static_cast<UINT>(text.GetLength());
  AfxWriteStringLength(archive, length, TRUE);
  archive.Write(text.GetString(), length * static_cast<UINT>(sizeof(WCHAR)));
  return archive;
}

CArchive& operator>>(CArchive& archive, CString& text) {
  if (ondrel::platform::ShortText::Load(archive, text)) return archive;
  int charSize = kNarrow;
  const UINT_PTR length = AfxReadStringLength(archive, charSize);
  if (charSize == kWide) {
    text = CString(LoadUnits<WCHAR>(archive, length));
  } else {
    text = CString(TextFromNarrow(LoadUnits<char>(archive, length)));
  }
  return archive;
}
