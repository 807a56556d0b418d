// Colours for what is drawn on a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <ondrel/MMCObjectParams.h>

namespace ondrel::command {

enum class ColourChoice {
  automatic,  ///< On a terminal, unless NO_COLOR is set and not empty or TERM is "dumb".
  always,
  never,
};

/// The few colours of drawings, from the terminal's own palette, so that they can be read on light and on dark.
class Colours {
 public:
  explicit Colours(ColourChoice choice);

  // Each gives the text between escape sequences, or as it is where there are no colours, or no text.

  std::string Title(const std::string& text) const;
  std::string Cookie(const std::string& text) const;
  std::string Missing(const std::string& text) const;
  std::string Name(const std::string& text, CMMCObjectParams::_eTypeNode type) const;  ///< Of a node or dialog.

 private:
  std::string Painted(const char* code, const std::string& text) const;

  bool m_areOn;
};

/// The length of the escape sequence that Colours put at the start of a text, or 0.
std::size_t ColourLength(std::string_view text);

}  // namespace ondrel::command
