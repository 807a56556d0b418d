// The command `ondrel extract`.
#pragma once

#include <string>

namespace ondrel::command {

struct ExtractRequest {
  std::string image;
  std::string folder;
};

/// Writes the code files and icons of an object image and a project file that compiles to it again into a new folder,
/// and prints one line about it. The folder appears whole, or not at all. Gives the exit code, or raises Failure, also
/// when the folder is there but its project compiles to another image.
int Extract(const ExtractRequest& request);

}  // namespace ondrel::command
