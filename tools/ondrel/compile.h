// The command `ondrel compile`.
#pragma once

#include <string>

namespace ondrel::command {

/// Compiles a project file into an object image and prints one line about it. The image appears whole, or `image` stays
/// as it was. Raises Failure.
void Compile(const std::string& project, const std::string& image);

}  // namespace ondrel::command
