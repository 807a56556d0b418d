// What all commands that change a project have in common: the way in, and the way out.
#pragma once

#include <string>
#include <vector>

#include "definition_file.h"

namespace ondrel::command {

/// How a project is to be changed, whatever the change.
struct EditRequest {
  std::string project;
  TextReading reading = TextReading::utf8;
  bool isDryRun = false;  ///< Nothing is written; what would change is printed as a unified diff.
  bool isLossy = false;   ///< A save may lose what the library does not read.
};

/// Loads a project that is to be changed. Raises Failure, also for a file of which a save would lose something, unless
/// the request is lossy.
std::unique_ptr<Definition> OpenForEdit(const EditRequest& request);

/// A project that is to be made, still empty. Raises Failure when anything is at its place.
std::unique_ptr<Definition> OpenNew(const EditRequest& request);

/// Refuses a node that no save keeps, because its cookie is negative.
void RequireSavedNode(Definition& definition, __int64 cookie);

/// Saves the definition in place of its file and prints `report`, or prints the difference in a dry run. The file is
/// replaced whole, or stays as it is when it is no longer the one that was loaded, when the new one would not last (see
/// RequireLasting, also for `changed`), or when anything else fails: then it raises Failure. Gives the exit code.
int FinishEdit(const EditRequest& request, Definition& definition, const std::vector<__int64>& changed,
               const std::string& report);

}  // namespace ondrel::command
