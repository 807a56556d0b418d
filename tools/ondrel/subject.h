// What something that is said of a definition is about.
#pragma once

#include <optional>

#include <ondrel/platform/types.h>

namespace ondrel::command {

/// A node, dialog or file, by its cookie. Nodes and dialogs share their cookies; those of files are others, though the
/// numbers may be alike.
struct Subject {
  enum class Kind { node, dialog, iconFile, codeFile };

  Kind kind = Kind::node;
  __int64 cookie = 0;
};

/// The same of what may have no cookie that is known.
inline std::optional<Subject> SubjectOf(Subject::Kind kind, const std::optional<__int64>& cookie) {
  return cookie ? std::optional<Subject>({kind, *cookie}) : std::nullopt;
}

/// "node", "dialog", "icon file", "code file"
inline const char* KindName(Subject::Kind kind) {
  switch (kind) {
    case Subject::Kind::node:
      return "node";
    case Subject::Kind::dialog:
      return "dialog";
    case Subject::Kind::iconFile:
      return "icon file";
    default:
      return "code file";
  }
}

}  // namespace ondrel::command
