// A command of the shell between three pipes, each of which has a thread that serves it.
#include <ondrel/platform/process.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <exception>
#include <limits>
#include <mutex>
#include <thread>

#include "program/shell_process.h"

namespace ondrel::platform {
namespace {

using Clock = std::chrono::steady_clock;

constexpr DWORD kBlock = 64 * 1024;
constexpr DWORD kFaultStatus = 0xC0000000;  // from here on, an exit code is the status of a fault

/// Writes all of the input, or as much as the command reads.
void Give(UniqueHandle stream, const std::vector<char>& input) {
  for (std::size_t given = 0; given < input.size();) {
    const auto count = static_cast<DWORD>(std::min<std::size_t>(input.size() - given, kBlock));
    DWORD written = 0;
    if (!WriteFile(stream.get(), input.data() + given, count, &written, nullptr)) return;
    given += written;
  }
}

/// Hands on what a stream gives, block by block, to its end or until `take` has enough.
template <class Take>
void ReadToEnd(HANDLE stream, const Take& take) {
  std::array<char, kBlock> block;
  DWORD count = 0;
  while (ReadFile(stream, block.data(), kBlock, &count, nullptr)) {
    if (!take(block.data(), std::size_t{count})) return;
  }
}

/// Collects what a command writes to its standard output.
class OutputReader {
 public:
  OutputReader(const ShellProcess& process, std::vector<char>& output, ULONGLONG largest)
      : m_process(process), m_output(output), m_largest(largest) {}

  /// The work of a thread.
  void Read(HANDLE stream) {
    try {
      ReadToEnd(stream, [this](const char* bytes, std::size_t count) {
        m_output.insert(m_output.end(), bytes, bytes + count);
        return m_output.size() <= m_largest;
      });
    } catch (const std::exception&) {
      m_raised = std::current_exception();
    }
    // Whatever is still to come is not wanted.
    if (m_raised != nullptr || m_output.size() > m_largest) m_process.Stop();
    const std::lock_guard lock(m_mutex);
    m_isAtEnd = true;
    m_ended.notify_all();
  }

  /// False when the end of the stream has not come by then.
  bool WaitUntil(const std::optional<Clock::time_point>& end) {
    std::unique_lock lock(m_mutex);
    const auto isAtEnd = [this] { return m_isAtEnd; };
    if (end) return m_ended.wait_until(lock, *end, isAtEnd);
    m_ended.wait(lock, isAtEnd);
    return true;
  }

  // To be asked when the thread has ended.
  const std::exception_ptr& Raised() const { return m_raised; }
  bool IsTooLarge() const { return m_output.size() > m_largest; }

 private:
  const ShellProcess& m_process;
  std::vector<char>& m_output;
  ULONGLONG m_largest;
  std::exception_ptr m_raised;
  std::mutex m_mutex;
  std::condition_variable m_ended;
  bool m_isAtEnd = false;
};

bool WaitForEnd(const ShellProcess& process, const std::optional<Clock::time_point>& end) {
  for (;;) {
    DWORD wait = INFINITE;
    if (end) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(*end - Clock::now()).count();
      if (left <= 0) return false;
      wait = static_cast<DWORD>(std::min<long long>(left, std::numeric_limits<LONG>::max()));
    }
    if (WaitForSingleObject(process.Get(), wait) == WAIT_OBJECT_0) return true;
  }
}

}  // namespace

ShellResult RunShellCommand(const ShellCommand& command) {
  ShellResult result;
  ShellPipe input;
  ShellPipe output;
  ShellPipe errors;
  ShellProcess process;
  result.code = input.Open();
  if (result.code == ERROR_SUCCESS) result.code = output.Open();
  if (result.code == ERROR_SUCCESS) result.code = errors.Open();
  if (result.code == ERROR_SUCCESS) {
    result.code = process.Start(command, input.reading.get(), output.writing.get(), errors.writing.get());
  }
  if (result.code != ERROR_SUCCESS) return result;
  input.reading.reset();
  output.writing.reset();
  errors.writing.reset();

  std::optional<Clock::time_point> end;
  if (command.timeLimit) end = Clock::now() + *command.timeLimit;
  OutputReader reader(process, result.output, command.largestOutput);
  result.errors.reserve(command.keptErrors);  // so that its thread takes no memory
  bool isLate = false;
  {
    const std::jthread giving([&] { Give(std::move(input.writing), command.input); });
    const std::jthread readingErrors([&] {
      ReadToEnd(errors.reading.get(), [&](const char* bytes, std::size_t count) {
        result.errors.append(bytes, std::min(count, command.keptErrors - result.errors.size()));
        return true;
      });
    });
    const std::jthread readingOutput([&] { reader.Read(output.reading.get()); });
    isLate = !WaitForEnd(process, end) || !reader.WaitUntil(end);
    // Then everyone who has a pipe of the threads is gone, and these come to their ends.
    process.Stop();
  }
  if (reader.Raised() != nullptr) std::rethrow_exception(reader.Raised());

  GetExitCodeProcess(process.Get(), &result.code);
  result.end = result.code >= kFaultStatus ? ShellResult::End::crashed : ShellResult::End::exited;
  if (isLate) result.end = ShellResult::End::late;
  if (reader.IsTooLarge()) result.end = ShellResult::End::tooLarge;
  return result;
}

}  // namespace ondrel::platform
