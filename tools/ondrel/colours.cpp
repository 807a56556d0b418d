// Escape sequences, and when they are wanted.
#include "colours.h"

#include <cstdlib>

#include <ondrel/platform/program.h>

namespace ondrel::command {
namespace {

// Numbers of the sequence "select graphic rendition".
constexpr const char* kBold = "1";
constexpr const char* kDim = "2";
constexpr const char* kRed = "31";
constexpr const char* kGreen = "32";
constexpr const char* kMagenta = "35";

constexpr std::string_view kStart = "\x1B[";
constexpr char kFinish = 'm';

std::string_view Variable(const char* name) {
  const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nobody sets variables here
  return value == nullptr ? std::string_view() : value;
}

bool AreWanted(ColourChoice choice) {
  if (choice != ColourChoice::automatic) return choice == ColourChoice::always;
  return Variable("NO_COLOR").empty() && Variable("TERM") != "dumb" &&
         platform::IsTerminal(platform::StandardStream::output);
}

}  // namespace

Colours::Colours(ColourChoice choice) : m_areOn(AreWanted(choice)) {}

std::string Colours::Title(const std::string& text) const { return Painted(kBold, text); }
std::string Colours::Cookie(const std::string& text) const { return Painted(kDim, text); }
std::string Colours::Missing(const std::string& text) const { return Painted(kRed, text); }

std::string Colours::Name(const std::string& text, CMMCObjectParams::_eTypeNode type) const {
  switch (type) {
    case CMMCObjectParams::eList:
      return text;
    case CMMCObjectParams::eHTML:
      return Painted(kGreen, text);
    case CMMCObjectParams::eDialog:
      return Painted(kMagenta, text);
    default:
      return Painted(kRed, text);
  }
}

std::string Colours::Painted(const char* code, const std::string& text) const {
  if (!m_areOn || text.empty()) return text;
  const std::string start(kStart);
  return start + code + kFinish + text + start + '0' + kFinish;
}

std::size_t ColourLength(std::string_view text) { return text.starts_with(kStart) ? text.find(kFinish) + 1 : 0; }

}  // namespace ondrel::command
