// The command `ondrel check`.
#pragma once

#include <string>

#include "definition_file.h"

namespace ondrel::command {

struct CheckRequest {
  std::string file;
  bool json = false;
  bool areWarningsErrors = false;
  bool lossesAlone = false;  ///< What a save would lose, instead of all that is wrong.
  TextReading reading = TextReading::utf8;
};

/// Prints what is wrong with a project file or an object image, one remark a line, and with one that does not load all
/// that a load would trip over. Gives kDone, or kFailed where there are errors; raises Failure for a file that cannot
/// be read.
int Check(const CheckRequest& request);

}  // namespace ondrel::command
