// Commands that code files go through on their way into an image.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "compile/glob.h"
#include "definition_file.h"

namespace ondrel::command {

struct CodeFileFilter {
  Glob pattern;         ///< Of the paths of the files, as `ondrel show` prints them.
  std::string command;  ///< Of the system's shell.
};

/// What a filter is told of the folders of a project's code files: their variables, and a list of them.
class FolderVariables {
 public:
  explicit FolderVariables(const CMMCObjectSet::Variables& folders);

  const std::vector<std::pair<std::string, std::string>>& All() const { return m_variables; }

 private:
  std::vector<std::pair<std::string, std::string>> m_variables;
};

/// A code file for a filter.
struct FilteredFile {
  CString path;  ///< As the set has it.
  __int64 cookie = 0;
  std::vector<char> bytes{};
};

/// What the filter makes of a file. Raises Failure with what it said when it failed, ran longer than `timeLimit`, or
/// wrote more than an image holds of one file.
std::vector<char> RunFilter(const CodeFileFilter& filter, std::optional<std::chrono::seconds> timeLimit,
                            const Definition& definition, FilteredFile file, const FolderVariables& folders);

}  // namespace ondrel::command
