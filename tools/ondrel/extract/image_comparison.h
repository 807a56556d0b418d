// Whether a project compiles to an image that is there, and why it does not.
#pragma once

#include <string>
#include <vector>

#include "definition_file.h"

namespace ondrel::command {

/// Compiles `project` and compares each byte with those of `image`; nothing is written. None when they are the same,
/// otherwise where the first difference is. Raises what the compile raises.
std::optional<ULONGLONG> FirstDifference(Definition& project, CFile& image);

/// What of an image its project does not tell, or a compile writes otherwise: "node -3 has a negative cookie and is not
/// in the project". In the order of the image; empty when only the form of its bytes is another.
std::vector<std::string> ReasonsForDifference(Definition& project, CFile& image);

}  // namespace ondrel::command
