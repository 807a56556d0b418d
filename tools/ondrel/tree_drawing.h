// A definition drawn for people.
#pragma once

#include <string>

#include "colours.h"
#include "definition_file.h"
#include "file_listing.h"

namespace ondrel::command {

/// "17 nodes, 3 dialogs, 6 icons, 12 code files"
std::string SummaryText(CMMCObjectSet& set);

/// "console.xml: project, "
std::string FormText(const Definition& definition);
/// "32 x 32, 32 bit"
std::string ImageText(const tagBITMAP& image);
/// A code file's size in bytes, or that it cannot be read.
std::string BytesText(const CodeFile& file, const Colours& colours);

/// A summary line, the tree of nodes, the dialogs and the files, in UTF-8.
std::string DrawingText(Definition& definition, const Colours& colours);
/// A summary line, a node with those below it, and the files that they use.
std::string SubtreeText(Definition& definition, __int64 node, const Colours& colours);

}  // namespace ondrel::command
