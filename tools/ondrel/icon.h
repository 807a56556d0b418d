// The command `ondrel icon`.
#pragma once

#include <optional>
#include <string>

namespace ondrel::command {

struct IconRequest {
  std::string file;
  std::optional<std::string> picture;  ///< Where a picture of the icon is to go.
};

/// Prints which images a file (an icon file, an executable or a library) offers for its icon and which of them the icon
/// is made from, and writes a picture of the icon where one is to go. Nothing is printed or written of an icon that
/// cannot be made. Gives the exit code, or raises Failure.
int ShowIcon(const IconRequest& request);

}  // namespace ondrel::command
