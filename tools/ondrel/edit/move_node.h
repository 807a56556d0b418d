// The command `ondrel move-down`.
#pragma once

#include <string>

#include "edit/project_edit.h"

namespace ondrel::command {

struct MoveDownRequest {
  EditRequest edit;
  std::string node;  ///< As FindObjectNamed finds it.
};

/// Moves a node behind its next sibling, with which it exchanges cookies, and prints the one that it has then. The last
/// one stays, and so does the file. Gives the exit code, or raises Failure.
int MoveDown(const MoveDownRequest& request);

}  // namespace ondrel::command
