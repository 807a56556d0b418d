// The start of a shell in a job, with no other handles than its own.
#include "program/shell_process.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>

#include <ondrel/platform/program.h>

namespace ondrel::platform {
namespace {

std::wstring WideText(const std::string& utf8) { return std::wstring(PathFromUtf8(utf8).View()); }

struct CaselessOrder {
  bool operator()(const std::wstring& left, const std::wstring& right) const {
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) == CSTR_LESS_THAN;
  }
};

struct EnvironmentFreer {
  void operator()(wchar_t* block) const noexcept { FreeEnvironmentStringsW(block); }
};

/// The variables of this process and those added, each closed by a zero, in the order of their names, and a last zero.
std::wstring EnvironmentOf(const ShellCommand& command) {
  std::map<std::wstring, std::wstring, CaselessOrder> variables;
  const std::unique_ptr<wchar_t, EnvironmentFreer> own(GetEnvironmentStringsW());
  for (const wchar_t* next = own.get(); next != nullptr && *next != L'\0';) {
    const std::wstring variable = next;
    next += variable.size() + 1;
    // The hidden variables of the drives' folders begin with the sign that ends the others' names.
    variables[variable.substr(0, variable.find(L'=', 1))] = variable;
  }
  for (const auto& [name, value] : command.variables) {
    variables[WideText(name)] = WideText(name) + L'=' + WideText(value);
  }
  std::wstring block;
  for (const auto& [name, variable] : variables) block.append(variable).push_back(L'\0');
  return block += L'\0';
}

/// The shell of the system's own folder, whatever a variable says.
std::wstring ShellPath() {
  std::array<wchar_t, MAX_PATH> folder{};
  const UINT length = GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
  return std::wstring(folder.data(), std::min<std::size_t>(length, folder.size())) + L"\\cmd.exe";
}

/// Says which handles the shell gets, whatever else in this process may be inherited.
class HandedHandles {
 public:
  explicit HandedHandles(std::array<HANDLE, 3> handles) : m_handles(handles) {
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    m_memory = std::make_unique<char[]>(size);
    auto* const list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_memory.get());
    if (!InitializeProcThreadAttributeList(list, 1, 0, &size)) return;
    m_list = list;
    m_isWhole = UpdateProcThreadAttribute(m_list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, m_handles.data(),
                                          sizeof m_handles, nullptr, nullptr) != FALSE;
  }
  ~HandedHandles() {
    if (m_list != nullptr) DeleteProcThreadAttributeList(m_list);
  }
  HandedHandles(const HandedHandles&) = delete;
  HandedHandles& operator=(const HandedHandles&) = delete;

  /// Null, with the reason in GetLastError(), when it could not be made.
  LPPROC_THREAD_ATTRIBUTE_LIST Get() const { return m_isWhole ? m_list : nullptr; }

 private:
  std::array<HANDLE, 3> m_handles;
  std::unique_ptr<char[]> m_memory;
  LPPROC_THREAD_ATTRIBUTE_LIST m_list = nullptr;
  bool m_isWhole = false;
};

DWORD MakeJob(UniqueHandle& job) {
  job.reset(CreateJobObjectW(nullptr, nullptr));
  if (job == nullptr) return GetLastError();
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  if (!SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits)) {
    return GetLastError();
  }
  return ERROR_SUCCESS;
}

}  // namespace

DWORD ShellPipe::Open() {
  HANDLE readingEnd = nullptr;
  HANDLE writingEnd = nullptr;
  if (!CreatePipe(&readingEnd, &writingEnd, nullptr, 0)) return GetLastError();
  reading.reset(readingEnd);
  writing.reset(writingEnd);
  return ERROR_SUCCESS;
}

DWORD ShellProcess::Start(const ShellCommand& command, HANDLE input, HANDLE output, HANDLE errors) {
  if (const DWORD code = MakeJob(m_job); code != ERROR_SUCCESS) return code;
  for (const HANDLE handed : {input, output, errors}) {
    if (!SetHandleInformation(handed, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT)) return GetLastError();
  }
  const HandedHandles handles({input, output, errors});
  if (handles.Get() == nullptr) return GetLastError();
  STARTUPINFOEXW start{};
  start.StartupInfo.cb = sizeof start;
  start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
  start.StartupInfo.hStdInput = input;
  start.StartupInfo.hStdOutput = output;
  start.StartupInfo.hStdError = errors;
  start.lpAttributeList = handles.Get();
  const std::wstring shell = ShellPath();
  // With /s the shell takes what stands between the first quotation mark and the last as it is.
  std::wstring line = L"cmd.exe /d /s /c \"" + WideText(command.text) + L'"';
  std::wstring environment = EnvironmentOf(command);
  PROCESS_INFORMATION started{};
  // It does not run before it belongs to the job: what it starts would not.
  constexpr DWORD kFlags =
      EXTENDED_STARTUPINFO_PRESENT | CREATE_UNICODE_ENVIRONMENT | CREATE_NO_WINDOW | CREATE_SUSPENDED;
  if (!CreateProcessW(shell.c_str(), line.data(), nullptr, nullptr, TRUE, kFlags, environment.data(),
                      command.folder.GetString(), &start.StartupInfo, &started)) {
    return GetLastError();
  }
  const UniqueHandle thread(started.hThread);
  m_process.reset(started.hProcess);
  if (!AssignProcessToJobObject(m_job.get(), m_process.get())) {
    const DWORD code = GetLastError();
    TerminateProcess(m_process.get(), kStopped);
    return code;
  }
  ResumeThread(thread.get());
  return ERROR_SUCCESS;
}

}  // namespace ondrel::platform
