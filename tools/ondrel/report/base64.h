// Bytes in base 64, as addresses of data have them.
#pragma once

#include <span>
#include <string>

#include <ondrel/platform/types.h>

namespace ondrel::command {

/// With "=" at the end where the last group is short, without line ends.
std::string Base64(std::span<const BYTE> bytes);

}  // namespace ondrel::command
