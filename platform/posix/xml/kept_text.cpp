// Text as a document keeps it.

#include "xml/kept_text.h"

#include <algorithm>
#include <array>
#include <limits>

#include "text/unicode.h"

namespace ondrel::platform {

namespace {

std::size_t CountUnits(std::string_view kept) {
  constexpr unsigned char kFirstLeadOfFour = 0xF0;
  std::size_t units = 0;
  for (const char byte : kept) {
    const auto value = static_cast<unsigned char>(byte);
    const bool isContinuation = (value & 0xC0) == 0x80;
    units += isContinuation ? 0 : value >= kFirstLeadOfFour ? 2 : 1;
  }
  return units;
}

bool IsAscii(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

void Decode(std::string_view kept, char16_t* units) {
  const char* byte = kept.data();
  const char* const end = byte + kept.size();
  while (byte != end) {
    const std::size_t ascii = CopyAscii(byte, static_cast<std::size_t>(end - byte), units);
    byte += ascii;
    units += ascii;
    if (byte == end) break;
    if (static_cast<unsigned char>(*byte) < 0x80) {
      *units++ = static_cast<char16_t>(*byte++);
    } else {
      units += PutUtf16(TakeUtf8(byte, end, true).character, units);
    }
  }
}

}  // namespace

std::size_t Keep(std::u16string_view text, char* kept) {
  const char16_t* unit = text.data();
  const char16_t* const end = unit + text.size();
  char* byte = kept;
  while (unit != end) {
    const std::size_t ascii = CopyAscii(unit, static_cast<std::size_t>(end - unit), byte);
    unit += ascii;
    byte += ascii;
    while (unit != end && *unit < 0x80) *byte++ = static_cast<char>(*unit++);
    if (unit != end) byte += PutUtf8(TakeUtf16(unit, end), byte);
  }
  return static_cast<std::size_t>(byte - kept);
}

std::string KeptText(std::u16string_view text) {
  // In pieces, so that long text takes no more room than its kept form does.
  constexpr std::size_t kPiece = 1024;
  std::array<char, kPiece * kMaximumUtf8PerUnit> piece;
  std::string kept;
  kept.reserve(text.size());
  while (!text.empty()) {
    std::size_t length = std::min(text.size(), kPiece);
    const bool endsInsidePair = length < text.size() && IsHighSurrogate(text[length - 1]);
    if (endsInsidePair) --length;
    kept.append(piece.data(), Keep(text.substr(0, length), piece.data()));
    text.remove_prefix(length);
  }
  return kept;
}

bool IsKeptAs(std::string_view kept, std::u16string_view text) {
  // The kept form of other text than ASCII is longer than the text.
  if (kept.size() < text.size()) return false;
  if (text.empty()) return kept.empty();
  if (text.front() < 0x80 && static_cast<unsigned char>(kept.front()) != text.front()) return false;
  if (kept.size() > text.size()) return !IsAscii(text) && KeptText(text) == kept;
  return std::equal(kept.begin(), kept.end(), text.begin(),
                    [](char byte, char16_t unit) { return static_cast<unsigned char>(byte) == unit && unit < 0x80; });
}

void ReadKeptText(std::string_view kept, std::u16string& text) {
  text.resize(CountUnits(kept));
  Decode(kept, text.data());
}

HRESULT GiveKeptText(std::string_view kept, BSTR& text) {
  const std::size_t units = CountUnits(kept);
  if (units > std::numeric_limits<UINT>::max()) return E_OUTOFMEMORY;
  text = SysAllocStringLen(nullptr, static_cast<UINT>(units));
  if (text == nullptr) return E_OUTOFMEMORY;
  Decode(kept, text);
  return S_OK;
}

}  // namespace ondrel::platform
