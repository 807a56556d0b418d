// The processor's time that the calling thread has taken: what other programs do meanwhile does not count.
#pragma once

#include <chrono>

namespace ondrel::test {

std::chrono::nanoseconds ThreadTime();

}  // namespace ondrel::test
