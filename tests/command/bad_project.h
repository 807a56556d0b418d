// Projects that do not load, and what is expected of the command and of the library for each.
#pragma once

#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>

#include "project_folder.h"
#include "support/statuses.h"

namespace ondrel::test {

struct BadProject {
  const char* name;
  std::string text;
  const char* complaint;  ///< Behind "console.xml:".
  HRESULT status;
};

std::ostream& operator<<(std::ostream& out, const BadProject& bad);

/// A project of one group; the group's lines begin with line 3.
std::string InGroup(const std::string& group, std::initializer_list<std::string_view> lines);
std::string Nodes(std::initializer_list<std::string_view> lines);
std::string Dialogs(std::initializer_list<std::string_view> lines);
std::string Files(std::initializer_list<std::string_view> lines);

/// A folder with a project, an old image, a folder with a file in it, and icon files: good.ico, cut.ico, text.ico and
/// empty.ico.
class BadProjectFolder : public ProjectFolder {
 public:
  explicit BadProjectFolder(std::string_view project);

  /// The status that the library raises for the project; 0 when it loads.
  HRESULT LoadStatus() const;
  /// Every command refuses the project with a complaint behind "console.xml:", and nothing in the folder changes.
  void ExpectExplained(const std::string& complaint, HRESULT status) const;
  /// The library raises the same status, too.
  void ExpectRaised(HRESULT status) const;
};

}  // namespace ondrel::test
