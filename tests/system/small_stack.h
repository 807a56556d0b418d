// Work on a thread with a small stack, where recursion that follows the data would end the program.
#pragma once

#include <pthread.h>

#include <cstddef>
#include <stdexcept>
#include <utility>

namespace ondrel::test {

// The sanitizers put room between variables, so frames are several times larger there.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr std::size_t kSmallStack = 1024 * 1024;
#else
inline constexpr std::size_t kSmallStack = 256 * 1024;
#endif

template <class Work>
void RunOnSmallStack(Work work) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, kSmallStack);
  pthread_t thread;
  const auto run = [](void* given) -> void* {
    (*static_cast<Work*>(given))();
    return nullptr;
  };
  const int error = pthread_create(&thread, &attributes, run, &work);
  pthread_attr_destroy(&attributes);
  if (error != 0) throw std::runtime_error("cannot start a thread");
  pthread_join(thread, nullptr);
}

}  // namespace ondrel::test
