// A definition as one JSON object, for programs.
#pragma once

#include <string>

#include "definition_file.h"

namespace ondrel::command {

/// The object: form, nodes, dialogs, icons, codeFiles. ASCII alone, one record a line. Cookies are strings of decimal
/// digits, since a JSON number does not hold 64 bits everywhere.
std::string JsonText(Definition& definition);
/// The same of one node, those below it, and the files that they use; the list of dialogs is empty.
std::string SubtreeJsonText(Definition& definition, __int64 node);
/// The object of one record: form, kind ("node" or "dialog"), record, parent (null where there is none), children, and
/// those icons and code files that it refers to and that are there. Requires a cookie that names a record.
std::string RecordJsonText(Definition& definition, __int64 cookie);

}  // namespace ondrel::command
