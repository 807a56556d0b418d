// What differs between two definitions, one entry for each thing to tell.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "definition_file.h"
#include "subject.h"

namespace ondrel::command {

struct Difference {
  enum class Change { added, removed, moved, changed };

  Change change = Change::changed;
  Subject about;       ///< By its cookie in the definition that has it; in the older one when both have.
  std::string name;    ///< Of a node its path in the tree; of a file its path, empty in an image.
  std::string detail;  ///< "name "A" -> "B", icon 5 -> 6", of what is moved or changed.
};

using Differences = std::vector<Difference>;

// Each adds to the end what differs in one subject, in the order of `older`, and then what only `newer` has.

/// Nodes belong together when they have one cookie and one name; of the rest, when they have one path in the tree; of
/// the rest, when they have one cookie. Of siblings whose order differs as few as can be are told as moved.
void FindNodeDifferences(Definition& older, Definition& newer, Differences& differences);
/// Dialogs belong together by their names, and of the rest by their cookies.
void FindDialogDifferences(Definition& older, Definition& newer, Differences& differences);
/// Files belong together by their cookies. Paths are compared where both definitions have them, the images of icons and
/// the bytes of code files always. Raises Failure for a file that cannot be read.
void FindFileDifferences(Definition& older, Definition& newer, Differences& differences);

}  // namespace ondrel::command
