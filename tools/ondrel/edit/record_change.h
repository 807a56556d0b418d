// What a person wants changed in the record of a node or dialog.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "definition_file.h"

namespace ondrel::command {

/// The query behind a tag. Both as they were given.
struct QueryOption {
  std::string tag;
  std::string file;
};

/// The parts of a record that are to be other than they are; each other part stays. All text is UTF-8, and files are
/// named as ProjectFiles finds them, or "none".
struct RecordChange {
  std::optional<std::string> name;
  std::optional<CMMCObjectParams::_eTypeNode> type;
  std::optional<std::string> icon;
  std::optional<std::string> menuScript;
  std::optional<std::string> styleSheet;
  std::optional<std::vector<std::string>> scripts;  ///< The whole list, as the two below.
  std::optional<std::vector<QueryOption>> childQueries;
  std::optional<std::vector<QueryOption>> renderQueries;

  bool IsEmpty() const;
};

/// Makes the change in a record, which need not be in the definition. Raises Failure for a file that the project does
/// not have, and for a record with values that its type loses in a save.
void ChangeRecord(Definition& definition, const RecordChange& change, CMMCObjectParams& record);

/// Whether two records of one cookie hold the same.
bool HoldTheSame(const CMMCObjectParams& left, const CMMCObjectParams& right);

}  // namespace ondrel::command
