// The writing of an object image.
#pragma once

#include <string>

#include <ondrel/platform/program.h>

#include "definition_file.h"

namespace ondrel::command {

/// Writes a definition as an object image. The number of bytes written. Raises Failure; the file that was there stays
/// as it was then. `companion`, if any, is a file that must not take the same place.
ULONGLONG WriteImage(Definition& definition, const std::string& image, const platform::ReplacementFile* companion);

}  // namespace ondrel::command
