// The command `ondrel strips`.
#pragma once

#include <optional>
#include <string>

#include <ondrel/platform/types.h>

#include "definition_file.h"

namespace ondrel::command {

struct StripsRequest {
  std::string file;
  TextReading reading = TextReading::utf8;
  DWORD key = 0;  ///< 0x00BBGGRR
  /// Where pictures of the strips are to go; a strip without a place is not written.
  std::optional<std::string> smallIcons;
  std::optional<std::string> largeIcons;
};

/// Writes the image strips of a project file or an object image as pictures, transparent pixels in the colour `key`,
/// and prints one line about each. The pictures appear whole, or their places stay as they were. Gives the exit code,
/// or raises Failure.
int WriteStrips(const StripsRequest& request);

}  // namespace ondrel::command
