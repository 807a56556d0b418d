// The command `ondrel remove`.
#pragma once

#include <string>

#include "edit/project_edit.h"

namespace ondrel::command {

struct RemoveRequest {
  EditRequest edit;
  std::string object;        ///< As FindObjectNamed finds it.
  bool isRecursive = false;  ///< A node may have others below it, which go with it.
};

/// Removes a node or dialog. Gives the exit code, or raises Failure.
int Remove(const RemoveRequest& request);

}  // namespace ondrel::command
