// Text in aligned columns.
#pragma once

#include <string>
#include <vector>

namespace ondrel::command {

class Table {
 public:
  enum class Alignment { left, right };

  struct Column {
    std::string title;
    Alignment alignment = Alignment::left;
  };

  explicit Table(std::vector<Column> columns);

  /// Cells in UTF-8, free of control characters but for colours; missing ones at the end are empty.
  void Add(std::vector<std::string> cells);
  /// The title line and the rows, two blanks between columns, nothing behind the last cell of a line.
  std::string Text() const;

 private:
  std::vector<Column> m_columns;
  std::vector<std::vector<std::string>> m_rows;  ///< The titles first.
};

}  // namespace ondrel::command
