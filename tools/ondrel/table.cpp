// The widths of columns, and cells filled up to them.
#include "table.h"

#include <algorithm>

namespace ondrel::command {
namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kWidestAligned = 60;  // wider cells run over instead of pushing every other line aside

/// Characters, each taken as one column wide.
std::size_t Width(const std::string& utf8) {
  const auto isCharacter = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; };
  return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), isCharacter));
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
