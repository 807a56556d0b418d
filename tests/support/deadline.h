// Whether a piece of work ends at all.
#pragma once

#include <chrono>
#include <functional>

namespace ondrel::test {

/// Runs `work` in a process of its own, which is killed when the time is over. True when the work returned in time.
/// Nothing that it changes is seen here. Raises std::runtime_error when the work crashed or raised an exception.
bool EndsWithin(const std::function<void()>& work, std::chrono::milliseconds time);

}  // namespace ondrel::test
