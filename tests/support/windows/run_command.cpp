// Programs run by the system's call for that, their output collected through pipes.
#include "support/run_command.h"

#include <windows.h>

#include <array>
#include <cwctype>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

#include <ondrel/platform/program.h>

#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void ThrowLastError(const char* call) {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), call);
}

struct HandleCloser {
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

/// With halves of surrogate pairs, which a name may have.
std::wstring WideText(const std::string& utf8) { return std::wstring(platform::PathFromUtf8(utf8).View()); }

/// Appends an argument so that CommandLineToArgvW gives it back: in quotation marks, and with backslashes doubled where
/// they stand before one.
void AppendArgument(std::wstring& line, const std::wstring& argument) {
  if (!line.empty()) line += L' ';
  if (!argument.empty() && argument.find_first_of(L" \t\n\v\"") == std::wstring::npos) {
    line += argument;
    return;
  }
  line += L'"';
  std::size_t backslashes = 0;
  for (const wchar_t unit : argument) {
    if (unit == L'"') line.append(backslashes + 1, L'\\');
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    line += unit;
  }
  line.append(backslashes, L'\\');
  line += L'"';
}

std::wstring ArgumentLine(const CommandLine& commandLine) {
  std::wstring line;
  AppendArgument(line, commandLine.program.wstring());
  for (const std::string& argument : commandLine.arguments) AppendArgument(line, WideText(argument));
  return line;
}

/// Variables' names are equal in any case.
std::wstring NameOf(std::wstring_view variable) {
  std::wstring name;
  // The hidden variables of the drives' folders begin with the sign that ends the others' names.
  for (const wchar_t unit : variable.substr(0, variable.find(L'=', 1))) name += std::towupper(unit);
  return name;
}

/// The variables of this process and those added, each closed by a zero, in the order of their names, and a last zero.
std::wstring Environment(const std::map<std::string, std::string>& added) {
  struct Freer {
    void operator()(wchar_t* block) const noexcept { FreeEnvironmentStringsW(block); }
  };
  const std::unique_ptr<wchar_t, Freer> own(GetEnvironmentStringsW());
  if (own == nullptr) ThrowLastError("GetEnvironmentStrings");
  std::map<std::wstring, std::wstring> variables;
  for (const wchar_t* variable = own.get(); *variable != L'\0'; variable += std::wcslen(variable) + 1) {
    variables[NameOf(variable)] = variable;
  }
  for (const auto& [name, value] : added) variables[NameOf(WideText(name))] = WideText(name) + L'=' + WideText(value);
  std::wstring block;
  for (const auto& [name, variable] : variables) block.append(variable).push_back(L'\0');
  return block += L'\0';
}

UniqueHandle OpenInheritable(const wchar_t* path, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
  const HANDLE file = CreateFileW(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, disposition,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) ThrowLastError("CreateFile");
  return UniqueHandle(file);
}

/// A pipe whose writing end a child gets.
struct Pipe {
  Pipe() {
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    HANDLE readingEnd = nullptr;
    HANDLE writingEnd = nullptr;
    if (!CreatePipe(&readingEnd, &writingEnd, &inheritable, 0)) ThrowLastError("CreatePipe");
    reading.reset(readingEnd);
    writing.reset(writingEnd);
    if (!SetHandleInformation(readingEnd, HANDLE_FLAG_INHERIT, 0)) ThrowLastError("SetHandleInformation");
  }
  UniqueHandle reading;
  UniqueHandle writing;
};

/// Says which handles the child gets, whatever else in this process may be inherited.
class InheritedHandles {
 public:
  explicit InheritedHandles(std::array<HANDLE, 3> handles) : m_handles(handles) {
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    m_memory = std::make_unique<char[]>(size);
    if (!InitializeProcThreadAttributeList(List(), 1, 0, &size)) ThrowLastError("InitializeProcThreadAttributeList");
    if (!UpdateProcThreadAttribute(List(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, m_handles.data(), sizeof m_handles,
                                   nullptr, nullptr)) {
      ThrowLastError("UpdateProcThreadAttribute");
    }
  }
  ~InheritedHandles() { DeleteProcThreadAttributeList(List()); }
  InheritedHandles(const InheritedHandles&) = delete;
  InheritedHandles& operator=(const InheritedHandles&) = delete;

  LPPROC_THREAD_ATTRIBUTE_LIST List() { return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_memory.get()); }

 private:
  std::array<HANDLE, 3> m_handles;
  std::unique_ptr<char[]> m_memory;
};

UniqueHandle Start(const CommandLine& commandLine, HANDLE input, HANDLE output, HANDLE errors) {
  InheritedHandles inherited({input, output, errors});
  STARTUPINFOEXW start{};
  start.StartupInfo.cb = sizeof start;
  start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
  start.StartupInfo.hStdInput = input;
  start.StartupInfo.hStdOutput = output;
  start.StartupInfo.hStdError = errors;
  start.lpAttributeList = inherited.List();
  const std::wstring program = commandLine.program.wstring();
  std::wstring line = ArgumentLine(commandLine);
  std::wstring environment = Environment(commandLine.environment);
  const std::wstring folder = commandLine.workingFolder.wstring();
  PROCESS_INFORMATION started{};
  constexpr DWORD kFlags = EXTENDED_STARTUPINFO_PRESENT | CREATE_UNICODE_ENVIRONMENT | CREATE_NO_WINDOW;
  if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, kFlags, environment.data(),
                      folder.empty() ? nullptr : folder.c_str(), &start.StartupInfo, &started)) {
    throw std::runtime_error("cannot start " + Utf8(commandLine.program));
  }
  CloseHandle(started.hThread);
  return UniqueHandle(started.hProcess);
}

/// Reads a stream to its end.
void Collect(HANDLE stream, std::string& text) {
  std::array<char, 64 * 1024> buffer;
  DWORD count = 0;
  while (ReadFile(stream, buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr)) {
    text.append(buffer.data(), count);
  }
}

}  // namespace

CommandResult RunCommand(const CommandLine& commandLine) {
  if (commandLine.largestFile || commandLine.withoutPrivileges || commandLine.withoutUnnamedFiles) {
    throw std::runtime_error("this system cannot take that from a program");
  }
  const UniqueHandle input = OpenInheritable(L"NUL", GENERIC_READ, OPEN_EXISTING);
  Pipe output;
  Pipe errors;
  if (!commandLine.standardOutput.empty()) {
    output.writing = OpenInheritable(commandLine.standardOutput.c_str(), GENERIC_WRITE, OPEN_ALWAYS);
  }

  const auto begin = Clock::now();
  const UniqueHandle process = Start(commandLine, input.get(), output.writing.get(), errors.writing.get());
  output.writing.reset();
  errors.writing.reset();
  if (commandLine.nobodyReads) output.reading.reset();

  CommandResult result;
  {
    // Both streams at once: a program that fills one would wait for it to be read.
    const std::jthread outputReader([&] {
      if (output.reading != nullptr) Collect(output.reading.get(), result.output);
    });
    const std::jthread errorReader([&] { Collect(errors.reading.get(), result.errors); });
    const auto limit = static_cast<DWORD>(commandLine.timeLimit.count());
    result.timedOut = WaitForSingleObject(process.get(), limit) == WAIT_TIMEOUT;
    if (result.timedOut) TerminateProcess(process.get(), 0);
    WaitForSingleObject(process.get(), INFINITE);
  }
  result.duration = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin);
  DWORD code = 0;
  if (!GetExitCodeProcess(process.get(), &code)) ThrowLastError("GetExitCodeProcess");
  // A program that crashes ends with the status of its fault, as an error of the system's own: 0xC0000005 and the like.
  constexpr DWORD kErrorStatus = 0xC0000000;
  if (!result.timedOut && code < kErrorStatus) result.exitCode = static_cast<int>(code);
  return result;
}

}  // namespace ondrel::test
