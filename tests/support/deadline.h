// Whether a piece of work ends at all.
#pragma once

#include <chrono>
#include <functional>

namespace ondrel::test {

/// Runs `work` in a process of its own, or on a thread where the system has no copies of a process, and ends it for
/// good when the time is over: what it holds then is lost. True when the work returned in time. What it changes is not
/// to be looked at. Raises std::runtime_error when the work crashed (in a process of its own) or raised an exception.
bool EndsWithin(const std::function<void()>& work, std::chrono::milliseconds time);

}  // namespace ondrel::test
