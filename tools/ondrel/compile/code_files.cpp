// What each code file needs, by the rules that the user gave.
#include "compile/code_files.h"

#include "compile/mapped_icons.h"

namespace ondrel::command {
namespace {

/// Notes the places of code files that a project names by paths, not by names in its folder.
void MapCodeFiles(Definition& definition, const PathMap& map) {
  for (const ProjectFile& file : definition.Project().CodeFiles()) {
    if (!file.path || *file.path != file.spelling) continue;
    if (auto place = map.PlaceOf(*file.path)) definition.codeFilePlaces.emplace(*file.path, std::move(*place));
  }
}

}  // namespace

CMMCObjectSet::TransformFactory CodeFiles::Prepare(Definition& definition) {
  m_definition = &definition;
  if (!m_rules.map.IsEmpty()) {
    MapIconFiles(definition, m_rules.map);
    MapCodeFiles(definition, m_rules.map);
  }
  return [this, &definition](const WCHAR* path) -> CMMCObjectSet::Transform {
    const bool isMapped = definition.codeFilePlaces.contains(path);
    if (!isMapped && !m_progress.IsWanted() && FilterOf(path) == nullptr) return KeepBytes;
    return HandledTransform{this, path};
  };
}

CString CodeFiles::BeginFile(const CString& path) {
  if (m_progress.IsWanted()) {
    if (m_count == 0) m_count = m_definition->set.GetCodeFiles().size();
    m_progress.BeginCodeFile(++m_begun, m_count);
  }
  return m_definition->PlaceOf(path);
}

bool CodeFiles::IsFiltered(const CString& path) const { return FilterOf(path) != nullptr; }

std::vector<char> CodeFiles::Filter(const CString& path, std::vector<char> bytes,
                                    const CMMCObjectSet::Variables& variables) {
  if (!m_folders) m_folders.emplace(variables);
  return RunFilter(*FilterOf(path), m_rules.timeLimit, *m_definition, {path, CookieOf(path), std::move(bytes)},
                   *m_folders);
}

const CodeFileFilter* CodeFiles::FilterOf(const CString& path) const {
  const CString shown = m_rules.filters.empty() ? CString() : m_definition->DisplayPath(path);
  for (const CodeFileFilter& filter : m_rules.filters) {
    if (filter.pattern.Matches(shown)) return &filter;
  }
  return nullptr;
}

__int64 CodeFiles::CookieOf(const CString& path) {
  if (m_cookies.empty()) {
    for (const __int64 cookie : m_definition->set.GetCodeFiles()) {
      CString file;
      if (m_definition->set.GetFilePath(cookie, file)) m_cookies.emplace(file, cookie);
    }
  }
  return m_cookies.at(path);
}

}  // namespace ondrel::command
