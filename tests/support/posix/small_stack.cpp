#include "support/small_stack.h"

#include <pthread.h>

#include <exception>
#include <stdexcept>

namespace ondrel::test {
namespace {

struct Task {
  const std::function<void()>& work;
  std::exception_ptr raised{};
};

void* Run(void* argument) {
  Task& task = *static_cast<Task*>(argument);
  try {
    task.work();
  } catch (...) {
    task.raised = std::current_exception();
  }
  return nullptr;
}

}  // namespace

void RunOnStack(std::size_t bytes, const std::function<void()>& work) {
  Task task{work};
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) throw std::runtime_error("cannot describe a thread");
  pthread_t thread{};
  const bool started =
      pthread_attr_setstacksize(&attributes, bytes) == 0 && pthread_create(&thread, &attributes, Run, &task) == 0;
  pthread_attr_destroy(&attributes);
  if (!started) throw std::runtime_error("cannot start a thread with this stack");
  pthread_join(thread, nullptr);
  if (task.raised) std::rethrow_exception(task.raised);
}

}  // namespace ondrel::test
