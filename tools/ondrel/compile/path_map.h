// Other places for files that a project names by paths of another machine.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include <ondrel/platform/framework/string.h>

namespace ondrel::command {

class PathMap {
 public:
  /// Adds a folder, or a file, of the other machine and where it is on this one. Of several that hold a path the first
  /// counts. Separators at the ends of either are of no account.
  void Add(CString prefix, CString place);

  bool IsEmpty() const { return m_places.empty(); }
  /// Where the file of a path is; none for one that no prefix begins. Prefixes end where parts of the path do; "/" and
  /// "\" are the same, and so are the letters A to Z and a to z.
  std::optional<CString> PlaceOf(const CString& path) const;

 private:
  std::vector<std::pair<CString, CString>> m_places;
};

}  // namespace ondrel::command
