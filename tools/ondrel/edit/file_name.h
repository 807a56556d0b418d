// How people name the icon files and code files of a project.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "definition_file.h"

namespace ondrel::command {

enum class FileKind { icon, code };

/// "icon file", "code file".
const char* KindName(FileKind kind);

/// The files of one kind in a project, as they were when this was made. The definition must live as long.
class ProjectFiles {
 public:
  struct File {
    __int64 cookie = 0;
    CString path;  ///< As the set has it.
  };

  ProjectFiles(Definition& definition, FileKind kind);

  /// The cookie of the file that `name` (UTF-8) names. It is a cookie, in decimal digits; or a path, from the project's
  /// folder or from the working folder, with either separator. What is made of digits alone is always taken for a
  /// cookie. Raises Failure for a name that no file has, and for one that is the path of several.
  __int64 Find(const std::string& name) const;

  /// The file of the project at the same place, however that is written, or null. `path` is a full path of a file that
  /// is there. A link to a file under another name is another file.
  const File* AtPlace(const CString& path) const;

  /// AtPlace finds it from now on.
  void Add(const File& file);
  std::size_t Count() const { return m_files.size(); }
  /// A file of this object: how many were there before it.
  std::size_t IndexOf(const File& file) const { return static_cast<std::size_t>(&file - m_files.data()); }

 private:
  std::vector<__int64> FindPath(const CString& path) const;

  Definition& m_definition;
  FileKind m_kind;
  std::vector<File> m_files;
  /// The indices of the files of a name, without their folders.
  std::multimap<CCaselessSortStringT<CString>, std::size_t> m_names;
};

}  // namespace ondrel::command
