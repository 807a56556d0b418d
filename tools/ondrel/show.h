// The command `ondrel show`.
#pragma once

#include <optional>
#include <string>

#include "colours.h"
#include "definition_file.h"

namespace ondrel::command {

struct ShowRequest {
  std::string file;
  bool json = false;
  TextReading reading = TextReading::utf8;
  ColourChoice colours = ColourChoice::automatic;  ///< JSON has none, whatever is asked for.
  std::optional<std::string> node;                 ///< Only this node, those below it, and the files that they use.
  std::optional<std::string> record;               ///< Only this node or dialog, in full; not together with `node`.
};

/// Prints what a project file or an object image holds. Gives the exit code, or raises Failure.
int Show(const ShowRequest& request);

}  // namespace ondrel::command
