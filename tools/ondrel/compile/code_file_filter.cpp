// What a command is told of its file, and what its user is told when it fails.
#include "compile/code_file_filter.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include <ondrel/platform/process.h>
#include <ondrel/platform/program.h>

#include "compile/code_file_faults.h"
#include "printable.h"

namespace ondrel::command {
namespace {

// Every system holds variables of this size, all together: no one has a smaller limit of one variable.
constexpr std::size_t kMostFolderBytes = 30'000;

/// Only what ends as a folder does. A file's path without a folder stands for itself in the map, and might have the
/// name of a variable that commands rely on.
bool IsFolderName(const CString& name) {
  const int last = name.GetLength() - 1;
  return last >= 0 && (name[last] == '\\' || name[last] == '/');
}

/// The first line of what a command said that is not blank.
std::string FirstLine(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  if (start == std::string_view::npos) return {};
  std::string_view line = text.substr(start);
  line = line.substr(0, line.find_first_of("\r\n"));
  return Shortened(PrintablePath(std::string(line)));
}

std::string HowItEnded(const platform::ShellResult& result) {
  constexpr DWORD kLargestSignal = 0xFF;
  if (result.end == platform::ShellResult::End::exited) {
    return "its filter ended with exit code " + std::to_string(result.code);
  }
  if (result.code <= kLargestSignal) return "its filter was ended by signal " + std::to_string(result.code);
  return "its filter crashed with status " + StatusText(static_cast<HRESULT>(result.code));
}

Failure ExplainFilter(const platform::ShellResult& result, std::optional<std::chrono::seconds> timeLimit,
                      const Definition& definition, const CString& path) {
  using End = platform::ShellResult::End;
  switch (result.end) {
    case End::late:
      return CodeFileFailure(
          definition, path,
          "its filter was stopped after " +
              Counted(static_cast<unsigned long long>(timeLimit.value_or(std::chrono::seconds{}).count()), "second",
                      "seconds") +
              "; give it more time with --timeout, or correct the command",
          HRESULT_FROM_WIN32(ERROR_TIMEOUT));
    case End::tooLarge:
      return CodeFileFailure(definition, path, "its filter wrote 4 GiB or more; an image holds smaller files only",
                             E_INVALIDARG);
    case End::notStarted:
      return CodeFileFailure(definition, path,
                             "its filter could not be started; check the shell and the project's folder",
                             HRESULT_FROM_WIN32(result.code));
    default:
      break;
  }
  const std::string said = FirstLine(result.errors);
  return CodeFileFailure(
      definition, path,
      HowItEnded(result) + (said.empty() ? "" : " and said \"" + said + '"') + "; correct the command or the file",
      E_FAIL);
}

}  // namespace

FolderVariables::FolderVariables(const CMMCObjectSet::Variables& folders) {
  std::string list;
  std::size_t bytes = 0;
  for (const auto& [folder, value] : folders) {
    if (!IsFolderName(folder)) continue;
    const std::string name = platform::PathToUtf8(folder);
    const std::string cookie = std::to_string(value.llVal);
    bytes += 2 * (name.size() + cookie.size() + 2);
    if (bytes > kMostFolderBytes) {
      m_variables.clear();
      return;
    }
    if (name.find('\n') == std::string::npos) list += cookie + ' ' + name + '\n';
    if (name.find('=') == std::string::npos) m_variables.emplace_back(name, cookie);
  }
  m_variables.emplace_back("ONDREL_FOLDERS", std::move(list));
}

std::vector<char> RunFilter(const CodeFileFilter& filter, std::optional<std::chrono::seconds> timeLimit,
                            const Definition& definition, FilteredFile file, const FolderVariables& folders) {
  platform::ShellCommand command;
  command.text = filter.command;
  command.folder = definition.folder;
  command.variables = folders.All();
  // The command runs in the project's folder, whatever folder this program runs in.
  const CString place = definition.DisplayPath(platform::FullPath(definition.PlaceOf(file.path)));
  command.variables.emplace_back("ONDREL_FILE", platform::PathForPrograms(place));
  command.variables.emplace_back("ONDREL_COOKIE", std::to_string(file.cookie));
  command.input = std::move(file.bytes);
  command.largestOutput = kLargestCodeFile;
  if (timeLimit) command.timeLimit = *timeLimit;
  platform::ShellResult result = platform::RunShellCommand(command);
  const bool isDone = result.end == platform::ShellResult::End::exited && result.code == 0;
  if (!isDone) throw ExplainFilter(result, timeLimit, definition, file.path);
  return std::move(result.output);
}

}  // namespace ondrel::command
