#include "support/small_stack.h"

#include <windows.h>

#include <exception>
#include <stdexcept>

namespace ondrel::test {
namespace {

struct Task {
  const std::function<void()>& work;
  std::exception_ptr raised{};
};

DWORD WINAPI Run(void* argument) {
  Task& task = *static_cast<Task*>(argument);
  try {
    task.work();
  } catch (...) {
    task.raised = std::current_exception();
  }
  return 0;
}

}  // namespace

void RunOnStack(std::size_t bytes, const std::function<void()>& work) {
  Task task{work};
  // Without the flag the size would be that of the part in memory at first, and the stack could grow beyond it.
  const HANDLE thread = CreateThread(nullptr, bytes, Run, &task, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
  if (thread == nullptr) throw std::runtime_error("cannot start a thread with this stack");
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  if (task.raised) std::rethrow_exception(task.raised);
}

}  // namespace ondrel::test
