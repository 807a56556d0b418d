// How a long narrow text is handed over without being held as a whole.
#pragma once

#include <cstddef>
#include <functional>

namespace ondrel::platform {

/// Puts the next bytes of a text into a buffer of so many; how many there were, fewer than asked for only at its end.
using NarrowTextReader = std::function<std::size_t(char* buffer, std::size_t size)>;

}  // namespace ondrel::platform
