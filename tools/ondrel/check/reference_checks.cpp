// The checks of references to files.
#include <unordered_set>

#include "check/checks.h"

namespace ondrel::command {
namespace {

using Cookies = std::unordered_set<__int64>;

Cookies CookiesOf(const std::vector<ProjectFile>& files) {
  Cookies cookies;
  for (const ProjectFile& file : files) {
    if (file.cookie) cookies.insert(*file.cookie);
  }
  return cookies;
}

const char* ReferenceName(FileReference::Kind kind) {
  switch (kind) {
    case FileReference::Kind::icon:
      return "the icon of ";
    case FileReference::Kind::menuScript:
      return "the MenuScript of ";
    case FileReference::Kind::script:
      return "a Script of ";
    case FileReference::Kind::styleSheet:
      return "the StyleSheet of ";
    default:
      return "a Query of ";
  }
}

/// Where a cookie of 0 says that there is no file.
bool MayBeNone(FileReference::Kind kind) {
  return kind == FileReference::Kind::icon || kind == FileReference::Kind::menuScript ||
         kind == FileReference::Kind::styleSheet;
}

void RemarkOnUnused(const std::vector<ProjectFile>& files, const Cookies& used, Remarks& remarks) {
  for (const ProjectFile& file : files) {
    if (!file.cookie || used.contains(*file.cookie)) continue;
    remarks.push_back({Remark::Severity::warning, "file-unused", file.line, file.About(),
                       FileLabel(file) + ": no node and no dialog refers to it; remove it, or refer to it"});
  }
}

}  // namespace

void RemarkOnReferences(const ProjectContents& contents, Remarks& remarks) {
  const Cookies icons = CookiesOf(contents.iconFiles);
  const Cookies codeFiles = CookiesOf(contents.codeFiles);
  Cookies used;
  for (const FileReference& reference : contents.references) {
    const bool isIcon = reference.kind == FileReference::Kind::icon;
    if (reference.cookie == 0 && (MayBeNone(reference.kind) || reference.kind == FileReference::Kind::script)) continue;
    used.insert(reference.cookie);
    if ((isIcon ? icons : codeFiles).contains(reference.cookie)) continue;
    const ProjectRecord& record = contents.records[reference.record];
    const std::string start = ReferenceName(reference.kind) + record.label + " is to be the file " +
                              std::to_string(reference.cookie) + ", which ";
    if ((isIcon ? codeFiles : icons).contains(reference.cookie)) {
      remarks.push_back({Remark::Severity::error, "file-of-other-kind", reference.line, record.About(),
                         start + (isIcon ? "is a code file; name an icon file" : "is an icon file; name a code file")});
    } else {
      remarks.push_back({Remark::Severity::error, "file-unknown", reference.line, record.About(),
                         start + "is not in the definition; add it, or take the reference away"});
    }
  }
  RemarkOnUnused(contents.iconFiles, used, remarks);
  RemarkOnUnused(contents.codeFiles, used, remarks);
}

void RemarkOnNamelessScripts(const ProjectContents& contents, Remarks& remarks) {
  for (const FileReference& reference : contents.references) {
    if (reference.kind != FileReference::Kind::script || reference.cookie != 0) continue;
    const ProjectRecord& record = contents.records[reference.record];
    remarks.push_back({Remark::Severity::error, "script-cookie-zero", reference.line, record.About(),
                       "a Script of " + record.label +
                           " has the cookie 0: a save writes it without File, and no load comes back from that; give "
                           "it a code file's cookie, or remove it"});
  }
}

}  // namespace ondrel::command
