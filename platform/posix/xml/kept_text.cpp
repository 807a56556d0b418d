// Text as a document keeps it.

#include "xml/kept_text.h"

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

void Decode(std::string_view kept, char16_t* units) {
  const char* byte = kept.data();
  const char* const end = byte + kept.size();
  while (byte != end) {
    if (static_cast<unsigned char>(*byte) < 0x80) {
      *units++ = static_cast<char16_t>(*byte++);
    } else {
      units += PutUtf16(TakeUtf8(byte, end, true).character, units);
    }
  }
}

}  // namespace

std::string KeptText(std::u16string_view text) {
  std::string kept;
  kept.reserve(text.size());
  const char16_t* unit = text.data();
  const char16_t* const end = unit + text.size();
  while (unit != end) {
    char bytes[4];
    kept.append(bytes, PutUtf8(TakeUtf16(unit, end), bytes));
  }
  return kept;
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
