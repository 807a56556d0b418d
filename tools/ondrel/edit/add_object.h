// The commands `ondrel add node` and `ondrel add dialog`.
#pragma once

#include <optional>
#include <string>

#include "edit/project_edit.h"
#include "edit/record_change.h"

namespace ondrel::command {

struct AddNodeRequest {
  EditRequest edit;
  RecordChange record;                ///< With a name.
  std::optional<std::string> parent;  ///< As FindObjectNamed finds it; none for a top-level node.
};

struct AddDialogRequest {
  EditRequest edit;
  RecordChange record;  ///< With a name.
};

/// Each adds a record behind those that are there and prints its cookie. Gives the exit code, or raises Failure.
int AddNode(const AddNodeRequest& request);
int AddDialog(const AddDialogRequest& request);

/// Adds a node below `parent` to a definition; its cookie. Raises Failure.
__int64 AddRecord(Definition& definition, __int64 parent, const RecordChange& record);

}  // namespace ondrel::command
