// Where the command may write a file.
#pragma once

#include <string>
#include <vector>

#include <ondrel/platform/framework/string.h>

#include "definition_file.h"

namespace ondrel::command {

/// A file that something is made from.
struct SourceFile {
  CString path;
  const char* kind;       ///< "the project", "icon file"
  CString spelling = {};  ///< How a project names the file; empty for what is named by its kind alone.

  /// For people: "the project", "icon file \"a.ico\"".
  std::string Name() const;
};

/// Refuses a place that a file cannot take, and one where a source stands, by whatever name or link. `output` is what
/// is to be written: "the image". Raises Failure.
void RequirePlace(const std::string& place, const std::string& output, const std::vector<SourceFile>& sources);

/// The same for what is made from a definition: its sources are its file and, of a project, the icon and code files
/// that it names.
void RequirePlace(const std::string& place, const std::string& output, Definition& definition);

}  // namespace ondrel::command
