// The command `ondrel icon`.
#pragma once

#include <optional>
#include <string>

namespace ondrel::command {

/// Prints which images a file (an icon file, an executable or a library) offers for its icon and which of them the icon
/// is made from, and writes a picture of the icon where one is to go. Nothing is printed or written of an icon that
/// cannot be made. Raises Failure.
void ShowIcon(const std::string& file, const std::optional<std::string>& place);

}  // namespace ondrel::command
