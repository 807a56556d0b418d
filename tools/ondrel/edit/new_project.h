// The command `ondrel new`.
#pragma once

#include "edit/project_edit.h"
#include "edit/record_change.h"

namespace ondrel::command {

struct NewRequest {
  EditRequest edit;
  RecordChange record;  ///< Of the top-level node; without a name there is to be none.
};

/// Makes a project file where nothing is. Gives the exit code, or raises Failure.
int NewProject(const NewRequest& request);

}  // namespace ondrel::command
