// The command `ondrel strips`.
#pragma once

#include <optional>
#include <string>

#include <ondrel/platform/types.h>

namespace ondrel::command {

/// Where pictures of the strips are to go; a strip without a place is not written.
struct StripPlaces {
  std::optional<std::string> smallIcons;
  std::optional<std::string> largeIcons;
};

/// Writes the image strips of a project file or an object image as pictures, transparent pixels in the colour `key`
/// (0x00BBGGRR), and prints one line about each. The pictures appear whole, or their places stay as they were. Raises
/// Failure.
void WriteStrips(const std::string& file, DWORD key, const StripPlaces& places);

}  // namespace ondrel::command
