// The commands `ondrel add icon` and `ondrel add code`.
#pragma once

#include <string>
#include <vector>

#include "edit/project_edit.h"

namespace ondrel::command {

struct AddFilesRequest {
  EditRequest edit;
  std::vector<std::string> files;  ///< Paths from the working folder.
};

/// Each adds files to a project, all or none, and prints a line with the cookie of each. A file in the project's folder
/// is named from there, any other by its whole path. Gives the exit code, or raises Failure.
int AddIcons(const AddFilesRequest& request);
int AddCode(const AddFilesRequest& request);

}  // namespace ondrel::command
