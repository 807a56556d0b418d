// The system has no copies of a process, so the work runs on a thread, which is ended where it holds no lock.
#include "support/deadline.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <memory>
#include <stdexcept>

namespace ondrel::test {
namespace {

using std::chrono::milliseconds;

struct HandleCloser {
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

struct Task {
  const std::function<void()>& work;
  bool raised = false;
};

DWORD WINAPI Run(void* argument) {
  Task& task = *static_cast<Task*>(argument);
  try {
    task.work();
  } catch (...) {
    task.raised = true;
  }
  return 0;
}

/// Ends a thread for good. A thread that is ended while it is in a function of the system or of the runtime, in the
/// heap above all, would leave that one's locks behind for ever. So it is stopped again and again until it is seen in
/// code of the project: there it is in no such function.
void End(HANDLE thread) {
  // Looked up before the thread stands still: the search takes a lock of the system.
  const std::array projects = {GetModuleHandleW(nullptr), GetModuleHandleW(L"Ondrel.dll"),
                               GetModuleHandleW(L"Vellum.dll"), GetModuleHandleW(L"HostFramework.dll")};
  constexpr int kAttempts = 100'000;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (SuspendThread(thread) == static_cast<DWORD>(-1)) throw std::runtime_error("cannot stop a thread");
    CONTEXT context{};
    context.ContextFlags = CONTEXT_CONTROL;
    MEMORY_BASIC_INFORMATION code{};
    const bool known = GetThreadContext(thread, &context) &&  // which also waits until it stands still
                       VirtualQuery(reinterpret_cast<void*>(context.Rip), &code, sizeof code) == sizeof code;
    if (known && std::find(projects.begin(), projects.end(), code.AllocationBase) != projects.end()) {
      if (!TerminateThread(thread, 0)) throw std::runtime_error("cannot end a thread");
      WaitForSingleObject(thread, INFINITE);
      return;
    }
    ResumeThread(thread);
    if (WaitForSingleObject(thread, 0) == WAIT_OBJECT_0) return;
    SwitchToThread();
  }
  throw std::runtime_error("the work does not end and cannot be ended");
}

}  // namespace

bool EndsWithin(const std::function<void()>& work, milliseconds time) {
  Task task{work};
  const UniqueHandle thread(CreateThread(nullptr, 0, Run, &task, 0, nullptr));
  if (thread == nullptr) throw std::runtime_error("cannot start a thread");
  if (WaitForSingleObject(thread.get(), static_cast<DWORD>(time.count())) == WAIT_TIMEOUT) {
    End(thread.get());
    return false;
  }
  if (task.raised) throw std::runtime_error("the work raised an exception");
  return true;
}

}  // namespace ondrel::test
