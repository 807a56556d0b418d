// The command `ondrel show`.
#pragma once

#include <string>

namespace ondrel::command {

/// Prints what a project file or an object image holds. Raises Failure.
void Show(const std::string& file, bool json);

}  // namespace ondrel::command
