// Paths for the standard library's view of files.
#pragma once

#include <filesystem>
#include <string>

namespace ondrel::command {

/// A path in UTF-8, with `\` or `/` between its parts, as the system takes it.
std::filesystem::path NativePath(const std::string& path);

}  // namespace ondrel::command
