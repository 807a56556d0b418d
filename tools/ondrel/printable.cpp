// Escapes for control characters, the separators of lines and the marks of direction.
#include "printable.h"

#include <cstdio>

#include <ondrel/platform/program.h>

namespace ondrel::command {
namespace {

constexpr std::size_t kLongestText = 200;  // bytes
constexpr int kLongestQuote = 60;          // UTF-16 units; longer values would bury the message

bool MovesTheTerminal(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character <= 0x9F) ||       // C0, DEL, C1
         character == 0x200E || character == 0x200F || character == 0x061C ||  // marks of direction
         (character >= 0x2028 && character <= 0x202E) ||                       // separators, embeddings, overrides
         (character >= 0x2066 && character <= 0x2069) || character == 0xFEFF;
}

std::string Escape(char32_t character) {
  switch (character) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      break;
  }
  char text[16];
  std::snprintf(text, sizeof text, character <= 0xFF ? "\\x%02X" : "\\u%04X", static_cast<unsigned>(character));
  return text;
}

/// The character at `index`, which moves behind it. Requires valid UTF-8; a stray byte is taken for itself.
char32_t NextCharacter(std::string_view utf8, std::size_t& index) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(utf8[at]); };
  const unsigned char lead = byte(index++);
  const int continuations = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
  if (continuations == 0 || index + static_cast<std::size_t>(continuations) > utf8.size()) return lead;
  char32_t character = lead & (0x3FU >> continuations);
  for (int count = 0; count < continuations; ++count) character = (character << 6) | (byte(index++) & 0x3FU);
  return character;
}

}  // namespace

std::string Printable(std::string_view utf8) {
  std::string text;
  text.reserve(utf8.size());
  for (std::size_t index = 0; index < utf8.size();) {
    const std::size_t start = index;
    const char32_t character = NextCharacter(utf8, index);
    if (MovesTheTerminal(character)) {
      text += Escape(character);
    } else {
      text += utf8.substr(start, index - start);
    }
  }
  return text;
}

std::string Printable(const CString& text) { return Printable(platform::ToUtf8(text)); }

std::string PrintablePath(const std::string& argument) { return Printable(platform::PathFromUtf8(argument)); }

std::string Shortened(const std::string& utf8) {
  if (utf8.size() <= kLongestText) return utf8;
  std::size_t end = kLongestText;
  while (end > 0 && (static_cast<unsigned char>(utf8[end]) & 0xC0) == 0x80) --end;
  return utf8.substr(0, end) + "...";
}

std::string Quoted(const CString& value) {
  if (value.GetLength() <= kLongestQuote) return '"' + Printable(value) + '"';
  return '"' + Printable(value.Left(kLongestQuote)) + "...\"";
}

std::string Counted(unsigned long long count, const char* one, const char* many) {
  return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

std::string SizeText(long long width, long long height) {
  return std::to_string(width) + " x " + std::to_string(height);
}

}  // namespace ondrel::command
