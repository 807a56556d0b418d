// Three bytes are four digits of six bits.
#include "report/base64.h"

#include <algorithm>
#include <string_view>

namespace ondrel::command {
namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kGroupBytes = 3;
constexpr std::size_t kGroupDigits = 4;

}  // namespace

std::string Base64(std::span<const BYTE> bytes) {
  std::string text;
  text.reserve((bytes.size() + kGroupBytes - 1) / kGroupBytes * kGroupDigits);
  for (std::size_t start = 0; start < bytes.size(); start += kGroupBytes) {
    const auto group = bytes.subspan(start, std::min(kGroupBytes, bytes.size() - start));
    unsigned bits = 0;
    for (std::size_t index = 0; index < kGroupBytes; ++index) {
      bits = bits << 8 | (index < group.size() ? group[index] : 0U);
    }
    for (std::size_t index = 0; index < kGroupDigits; ++index) {
      text += index <= group.size() ? kDigits[bits >> (18 - 6 * index) & 0x3F] : '=';
    }
  }
  return text;
}

}  // namespace ondrel::command
