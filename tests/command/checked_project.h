// Projects that are checked.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "project_folder.h"

namespace ondrel::test {

/// A folder with a project and the files a.js, b.js, a.ico and b.ico. Lines count from 1.
class CheckedProject : public ProjectFolder {
 public:
  explicit CheckedProject(std::initializer_list<std::string_view> lines);

  CommandResult Check(std::vector<std::string> options = {}) const;
  /// The command prints these lines alone, each behind "console.xml:", and then `closing`, and gives `exitCode`.
  void ExpectRemarks(std::initializer_list<std::string_view> remarks, std::string_view closing, int exitCode,
                     std::vector<std::string> options = {}) const;
};

/// One remark on a project, and no other.
struct RemarkCase {
  const char* name;
  std::vector<std::string_view> lines;
  std::string remark;  ///< Behind "console.xml:".
};

void ExpectRemarkAlone(const RemarkCase& remarked, const std::vector<std::string>& options = {});

}  // namespace ondrel::test
