// The end of names for what is not in its place yet.
#pragma once

#include <string>

namespace ondrel::platform {

/// ".<16 random hexadecimal digits>.tmp"
std::string TemporaryEnding();

}  // namespace ondrel::platform
