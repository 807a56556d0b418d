// The widths of columns, and cells filled up to them.
#include "table.h"

#include <algorithm>
#include <string_view>

#include "colours.h"

namespace ondrel::command {
namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kWidestAligned = 60;  // wider cells run over instead of pushing every other line aside

/// Characters, each taken as one column wide; colours take none.
std::size_t Width(std::string_view utf8) {
  const auto isCharacter = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; };
  std::size_t width = 0;
  while (!utf8.empty()) {
    utf8.remove_prefix(ColourLength(utf8));
    const std::string_view text = utf8.substr(0, utf8.find('\x1B', 1));
    width += static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isCharacter));
    utf8.remove_prefix(text.size());
  }
  return width;
}

}  // namespace

Table::Table(std::vector<Column> columns) : m_columns(std::move(columns)) {
  std::vector<std::string> titles;
  for (const Column& column : m_columns) titles.push_back(column.title);
  m_rows.push_back(std::move(titles));
}

void Table::Add(std::vector<std::string> cells) { m_rows.push_back(std::move(cells)); }

std::string Table::Text() const {
  std::vector<std::size_t> widths(m_columns.size());
  for (const auto& row : m_rows) {
    for (std::size_t column = 0; column < row.size(); ++column) {
      const std::size_t width = Width(row[column]);
      if (width <= kWidestAligned) widths[column] = std::max(widths[column], width);
    }
  }
  std::string text;
  for (const auto& row : m_rows) {
    std::size_t blanks = 0;  // written only when something follows them
    for (std::size_t column = 0; column < row.size(); ++column) {
      const std::size_t width = Width(row[column]);
      const std::size_t filling = widths[column] > width ? widths[column] - width : 0;
      const bool toTheRight = m_columns[column].alignment == Alignment::right;
      if (toTheRight) blanks += filling;
      if (width > 0) {
        text.append(blanks, ' ');
        text += row[column];
        blanks = 0;
      }
      if (!toTheRight) blanks += filling;
      blanks += kGap;
    }
    text += '\n';
  }
  return text;
}

}  // namespace ondrel::command
