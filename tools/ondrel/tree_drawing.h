// A definition drawn for people.
#pragma once

#include <string>

#include "definition_file.h"

namespace ondrel::command {

/// "17 nodes, 3 dialogs, 6 icons, 12 code files"
std::string SummaryText(CMMCObjectSet& set);

/// A summary line, the tree of nodes, the dialogs and the files, in UTF-8.
std::string DrawingText(Definition& definition);

}  // namespace ondrel::command
