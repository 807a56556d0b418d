// The command `ondrel set`.
#pragma once

#include <string>

#include "edit/project_edit.h"
#include "edit/record_change.h"

namespace ondrel::command {

struct SetRequest {
  EditRequest edit;
  std::string object;   ///< As FindObjectNamed finds it.
  RecordChange record;  ///< Not empty.
};

/// Changes the record of a node or dialog. Where it holds all that already, the file stays as it is. Gives the exit
/// code, or raises Failure.
int SetRecord(const SetRequest& request);

}  // namespace ondrel::command
