// The command's standard output.
#pragma once

#include <string_view>

namespace ondrel::command {

/// Writes text and sees that it left the program. Raises Failure when it did not (a full disk, a closed output).
void WriteOutput(std::string_view text);

}  // namespace ondrel::command
