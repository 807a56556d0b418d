// What a definition is made of, with the places where its project's text states it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <ondrel/MMCObjectParams.h>

#include "project_findings.h"

namespace ondrel::command {

/// An icon file or code file as the project names it.
struct ProjectFile {
  std::optional<Subject> About() const { return SubjectOf(kind, cookie); }

  Subject::Kind kind = Subject::Kind::iconFile;
  LoadOrder order;
  int line = 0;
  std::optional<__int64> cookie;  ///< None when it is missing or no number.
  std::optional<CString> path;    ///< As the set files it, with the project's folder before a relative name.
  CString spelling;               ///< As it stands in the project.
  bool isNamed = false;           ///< By a Name, which starts at the project's folder, and not by a Path.
};

/// "icon file 5, "a.ico""; of a file without a path the cookie alone.
std::string FileLabel(const ProjectFile& file);

inline constexpr std::size_t kNoRecord = static_cast<std::size_t>(-1);

/// A node or dialog.
struct ProjectRecord {
  std::optional<Subject> About() const {
    return SubjectOf(isDialog ? Subject::Kind::dialog : Subject::Kind::node, cookie);
  }

  LoadOrder order;
  int line = 0;
  std::string label;              ///< "node 5"
  std::optional<__int64> cookie;  ///< None when it is missing or no number.
  CString name;
  CMMCObjectParams::_eTypeNode type = CMMCObjectParams::eList;
  bool isDialog = false;
  std::size_t parent = kNoRecord;  ///< The node that it lies below, which comes before it; none for a top-level one.
};

/// A record's reference to a file that a load reads.
struct FileReference {
  enum class Kind { icon, childQuery, menuScript, script, styleSheet, renderQuery };

  Kind kind = Kind::icon;
  std::size_t record = 0;
  __int64 cookie = 0;
  int line = 0;
};

/// Everything in the order of the text.
struct ProjectContents {
  std::vector<ProjectRecord> records;
  std::vector<FileReference> references;
  std::vector<ProjectFile> iconFiles;
  std::vector<ProjectFile> codeFiles;
};

}  // namespace ondrel::command
