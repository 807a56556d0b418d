// One record in full, for people.
#pragma once

#include <string>

#include "colours.h"
#include "definition_file.h"

namespace ondrel::command {

/// A summary line, then every field of a node or dialog on a line of its own, lists with one entry a line; in UTF-8.
/// Requires a cookie that names one.
std::string RecordText(Definition& definition, __int64 cookie, const Colours& colours);

}  // namespace ondrel::command
