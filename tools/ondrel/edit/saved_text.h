// The text that a definition is saved as.
#pragma once

#include <string>
#include <vector>

#include "definition_file.h"

namespace ondrel::command {

/// The full path of a definition's file, from whose folder its files are named.
CString FullPathOf(const Definition& definition);

/// The library's own text of the project, in ASCII alone: all other characters are references, which a host reads as
/// well as the command. Raises Failure.
std::string SavedText(Definition& definition);

/// Sees that a project's text is one that nothing is lost with: it loads, is the same when it is saved again, and holds
/// the nodes and dialogs `changed` as the definition does. Raises Failure otherwise.
void RequireLasting(Definition& definition, const std::string& text, const std::vector<__int64>& changed);

}  // namespace ondrel::command
