// The search for the prefix of a path.
#include "compile/path_map.h"

namespace ondrel::command {
namespace {

bool IsPathSeparator(WCHAR unit) { return unit == '\\' || unit == '/'; }

CString WithOneSeparator(CString path) {
  path.Replace('/', '\\');
  return path;
}

CString WithoutClosingSeparators(const CString& path) {
  int length = path.GetLength();
  while (length > 0 && IsPathSeparator(path[length - 1])) --length;
  return path.Left(length);
}

}  // namespace

void PathMap::Add(CString prefix, CString place) {
  m_places.emplace_back(WithOneSeparator(WithoutClosingSeparators(prefix)), WithoutClosingSeparators(place));
}

std::optional<CString> PathMap::PlaceOf(const CString& path) const {
  const CString compared = WithOneSeparator(path);
  for (const auto& [prefix, place] : m_places) {
    const int length = prefix.GetLength();
    if (compared.Left(length).CompareNoCase(prefix) != 0) continue;
    // The unit behind the last is a zero.
    if (compared.GetLength() > length && compared[length] != '\\') continue;
    return place + path.Mid(length);
  }
  return std::nullopt;
}

}  // namespace ondrel::command
