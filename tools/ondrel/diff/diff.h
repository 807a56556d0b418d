// The command `ondrel diff`.
#pragma once

#include <string>

#include "definition_file.h"

namespace ondrel::command {

struct DiffRequest {
  std::string older;
  std::string newer;
  bool json = false;
  TextReading reading = TextReading::utf8;
};

/// What the command answers besides kDone, as others of its kind do.
inline constexpr int kDiffers = 1;
inline constexpr int kTrouble = 2;

/// Prints what differs between two definitions of either form. Gives kDone when nothing does, else kDiffers; what it
/// raises answers kTrouble.
int Diff(const DiffRequest& request);

}  // namespace ondrel::command
