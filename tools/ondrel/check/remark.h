// What `ondrel check` and the report say of a definition.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "definition_file.h"
#include "subject.h"

namespace ondrel::command {

struct Remark {
  enum class Severity { error, warning };

  Severity severity = Severity::warning;
  const char* code = "";         ///< A name for programs, which stays the same: "file-missing".
  int line = 0;                  ///< In the project; 0 when there is none, as of every image.
  std::optional<Subject> about;  ///< The node, dialog or file.
  std::string explanation;       ///< "what is wrong; what to do", free of control characters.
};

/// What is wrong with a loaded definition, in the order of its lines; in an image, nodes, dialogs, icons, code files.
std::vector<Remark> RemarksOn(Definition& definition);

/// What of a project's file a save by the library would lose, in the order of its lines: comments, elements and
/// attributes that it does not read, nodes that it does not save. Empty when the save holds all that the file holds.
std::vector<Remark> LossesOfSave(Definition& definition);

}  // namespace ondrel::command
