// Work that several threads do at once.
#pragma once

#include <gtest/gtest.h>

#include <barrier>
#include <exception>
#include <functional>
#include <thread>
#include <vector>

namespace ondrel::test {

inline constexpr int kThreads = 8;

/// Runs `work` on threads with the numbers from 0 up, which begin together. Returns when all have ended; an exception
/// that leaves one of them fails the test.
inline void OnThreads(const std::function<void(int)>& work, int count = kThreads) {
  std::barrier begin(count);
  std::vector<std::thread> threads;
  for (int number = 0; number < count; ++number) {
    threads.emplace_back([&, number] {
      begin.arrive_and_wait();
      try {
        work(number);
      } catch (const std::exception& raised) {
        ADD_FAILURE() << "thread " << number << " raised " << raised.what();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace ondrel::test
