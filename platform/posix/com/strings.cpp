// Allocated wide text: its length in bytes as a 32-bit number, the text, a zero unit. The pointer that is handed out
// points at the text.

#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

#include <ondrel/platform/os/com.h>

namespace {

using LengthPrefix = std::uint32_t;
constexpr UINT kLongestText =
    (std::numeric_limits<LengthPrefix>::max() - sizeof(LengthPrefix) - sizeof(WCHAR)) / sizeof(WCHAR);

char* Block(BSTR text) { return reinterpret_cast<char*>(text) - sizeof(LengthPrefix); }

std::u16string_view View(BSTR text) {
  return text == nullptr ? std::u16string_view() : std::u16string_view(text, SysStringLen(text));
}

}  // namespace

BSTR SysAllocString(LPCWSTR text) {
  if (text == nullptr) return nullptr;
  const std::size_t length = std::char_traits<WCHAR>::length(text);
  return length > kLongestText ? nullptr : SysAllocStringLen(text, static_cast<UINT>(length));
}

BSTR SysAllocStringLen(LPCWSTR text, UINT length) {
  if (length > kLongestText) return nullptr;
  const LengthPrefix byteCount = length * static_cast<LengthPrefix>(sizeof(WCHAR));
  auto* const block = static_cast<char*>(std::malloc(sizeof(LengthPrefix) + byteCount + sizeof(WCHAR)));
  if (block == nullptr) return nullptr;
  std::memcpy(block, &byteCount, sizeof(LengthPrefix));
  auto* const copy = reinterpret_cast<BSTR>(block + sizeof(LengthPrefix));
  if (text != nullptr && length > 0) std::memcpy(copy, text, byteCount);  // without text the caller fills it
  copy[length] = 0;
  return copy;
}

void SysFreeString(BSTR text) {
  if (text != nullptr) std::free(Block(text));
}

UINT SysStringLen(BSTR text) {
  if (text == nullptr) return 0;
  LengthPrefix byteCount = 0;
  std::memcpy(&byteCount, Block(text), sizeof byteCount);
  return byteCount / static_cast<UINT>(sizeof(WCHAR));
}

HRESULT VarBstrCmp(BSTR left, BSTR right, DWORD /*locale*/, ULONG flags) {
  if (flags != 0) return E_INVALIDARG;  // no other comparison than the exact one is kept here
  const int order = View(left).compare(View(right));
  if (order == 0) return VARCMP_EQ;
  return order < 0 ? VARCMP_LT : VARCMP_GT;
}
