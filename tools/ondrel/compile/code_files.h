// The code files of a project that are filtered, mapped or counted on their way into an image.
#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <vector>

#include "code_file_store.h"
#include "compile/code_file_filter.h"
#include "compile/path_map.h"
#include "compile/progress.h"
#include "definition_file.h"

namespace ondrel::command {

/// What a user asks for the files of every project.
struct FileRules {
  std::vector<CodeFileFilter> filters;  ///< The first whose pattern matches a file is the file's.
  std::optional<std::chrono::seconds> timeLimit;
  PathMap map;
};

class CodeFiles : public CodeFileHandler {
 public:
  /// Both must live as long as the project's set.
  CodeFiles(const FileRules& rules, Progress& progress) : m_rules(rules), m_progress(progress) {}

  /// Maps the files of a project that is about to be loaded, and gives what its load asks for their transforms.
  CMMCObjectSet::TransformFactory Prepare(Definition& definition);

 private:
  CString BeginFile(const CString& path) override;
  bool IsFiltered(const CString& path) const override;
  std::vector<char> Filter(const CString& path, std::vector<char> bytes,
                           const CMMCObjectSet::Variables& variables) override;

  const CodeFileFilter* FilterOf(const CString& path) const;
  __int64 CookieOf(const CString& path);

  const FileRules& m_rules;
  Progress& m_progress;
  Definition* m_definition = nullptr;
  std::size_t m_begun = 0;
  std::size_t m_count = 0;
  std::optional<FolderVariables> m_folders;
  std::map<CString, __int64> m_cookies;
};

}  // namespace ondrel::command
