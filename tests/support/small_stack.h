// Work on a thread with a stack of a chosen size, to prove that it does not use the stack for the depth of its data.
#pragma once

#include <cstddef>
#include <functional>

#include "support/sanitizers.h"

namespace ondrel::test {

/// A stack on which recursion that follows the data soon ends. The sanitizers' frames are several times larger.
inline constexpr std::size_t kSmallStack = (kSanitized ? 1024 : 256) * 1024;

/// Runs `work` on a thread with so many bytes of stack and waits for its end. An exception passes on to the caller.
void RunOnStack(std::size_t bytes, const std::function<void()>& work);

}  // namespace ondrel::test
