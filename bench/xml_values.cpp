#include "xml_values.h"

#include <array>
#include <charconv>
#include <stdexcept>
#include <system_error>

namespace ondrel::bench {
namespace {

constexpr std::array<const char*, 3> kTypes = {"List", "HTML", "Dialog"};

constexpr std::uint32_t kFirstSupplementary = 0x10000;
constexpr std::uint32_t kFirstHighSurrogate = 0xD800;
constexpr std::uint32_t kFirstLowSurrogate = 0xDC00;

/// The character at `position`, behind which that moves. The parsers have seen to it that the text is UTF-8.
std::uint32_t NextCharacter(std::string_view utf8, std::size_t& position) {
  const auto lead = static_cast<unsigned char>(utf8[position++]);
  if (lead < 0x80) return lead;
  const int more = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  std::uint32_t character = lead & (0x3FU >> static_cast<unsigned>(more));
  for (int index = 0; index < more && position < utf8.size(); ++index) {
    character = character << 6U | (static_cast<unsigned char>(utf8[position++]) & 0x3FU);
  }
  return character;
}

void AppendUtf8(std::string& utf8, std::uint32_t character) {
  const auto append = [&](std::uint32_t byte) { utf8 += static_cast<char>(byte); };
  if (character < 0x80) return append(character);
  if (character < 0x800) {
    append(0xC0 | character >> 6U);
  } else if (character < kFirstSupplementary) {
    append(0xE0 | character >> 12U);
    append(0x80 | (character >> 6U & 0x3F));
  } else {
    append(0xF0 | character >> 18U);
    append(0x80 | (character >> 12U & 0x3F));
    append(0x80 | (character >> 6U & 0x3F));
  }
  append(0x80 | (character & 0x3F));
}

}  // namespace

std::u16string Utf16(std::string_view utf8) {
  std::u16string text;
  text.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const std::uint32_t character = NextCharacter(utf8, position);
    if (character < kFirstSupplementary) {
      text += static_cast<char16_t>(character);
    } else {
      text += static_cast<char16_t>(kFirstHighSurrogate + ((character - kFirstSupplementary) >> 10U));
      text += static_cast<char16_t>(kFirstLowSurrogate + ((character - kFirstSupplementary) & 0x3FFU));
    }
  }
  return text;
}

std::string Utf8(std::u16string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (std::size_t position = 0; position < text.size(); ++position) {
    std::uint32_t character = text[position];
    if (character >= kFirstHighSurrogate && character < kFirstLowSurrogate && position + 1 < text.size()) {
      const std::uint32_t low = text[++position];
      character = kFirstSupplementary + ((character - kFirstHighSurrogate) << 10U) + (low - kFirstLowSurrogate);
    }
    AppendUtf8(utf8, character);
  }
  return utf8;
}

__int64 NumberOf(std::string_view text) {
  __int64 number = 0;
  const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (status != std::errc() || end != text.data() + text.size()) throw std::runtime_error("a cookie is no number");
  return number;
}

std::int32_t TypeOf(std::string_view name) {
  for (std::size_t type = 0; type < kTypes.size(); ++type) {
    if (name == kTypes[type]) return static_cast<std::int32_t>(type);
  }
  throw std::runtime_error("a node has a type of no name");
}

const char* NameOfType(std::int32_t type) { return kTypes.at(static_cast<std::size_t>(type)); }

}  // namespace ondrel::bench
