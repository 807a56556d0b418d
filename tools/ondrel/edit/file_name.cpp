// The search for a file that a person names, in the project's words and in those of the disk.
#include "edit/file_name.h"

#include <algorithm>
#include <set>
#include <utility>

#include <ondrel/platform/program.h>

#include "edit/cookie_text.h"
#include "printable.h"

namespace ondrel::command {
namespace {

CString WithBackslashes(CString path) {
  path.Replace('/', '\\');
  return path;
}

/// The last part of a path.
CString LastPartOf(const CString& path) {
  return path.Mid(std::max(path.ReverseFind('\\'), path.ReverseFind('/')) + 1);
}

/// The paths of code files whose cookies icon files have, too: the set gives the icon files' for them.
std::map<__int64, CString> ShadowedPaths(const Definition& definition) {
  std::map<__int64, CString> paths;
  for (const ProjectFile& file : definition.Project().CodeFiles()) paths.emplace(*file.cookie, *file.path);
  return paths;
}

}  // namespace

const char* KindName(FileKind kind) { return kind == FileKind::icon ? "icon file" : "code file"; }

ProjectFiles::ProjectFiles(Definition& definition, FileKind kind) : m_definition(definition), m_kind(kind) {
  const std::list<__int64> icons = definition.set.GetIconFiles();
  if (kind == FileKind::icon) {
    for (const __int64 cookie : icons) {
      CString path;
      if (definition.set.GetFilePath(cookie, path)) Add({cookie, path});
    }
    return;
  }
  const std::set<__int64> iconCookies(icons.begin(), icons.end());
  std::optional<std::map<__int64, CString>> shadowed;
  for (const __int64 cookie : definition.set.GetCodeFiles()) {
    CString path;
    if (iconCookies.contains(cookie)) {
      if (!shadowed) shadowed = ShadowedPaths(definition);
      Add({cookie, (*shadowed)[cookie]});
    } else if (definition.set.GetFilePath(cookie, path)) {
      Add({cookie, path});
    }
  }
}

void ProjectFiles::Add(const File& file) {
  m_names.emplace(LastPartOf(file.path), m_files.size());
  m_files.push_back(file);
}

__int64 ProjectFiles::Find(const std::string& name) const {
  const std::string kind = KindName(m_kind);
  if (LooksLikeCookie(name)) {
    const std::optional<__int64> cookie = ReadCookieText(name);
    if (cookie == 0) {
      throw Failure(m_definition.At(0), "the cookie 0 stands for no file; write \"none\" to name none",
                    StatusText(E_INVALIDARG));
    }
    const bool isThere =
        cookie && std::any_of(m_files.begin(), m_files.end(), [&](const File& file) { return file.cookie == *cookie; });
    if (isThere) return *cookie;
    throw Failure(m_definition.At(0),
                  "no " + kind + " has the cookie " + Shortened(name) + "; \"ondrel show\" tells files and cookies",
                  StatusText(HRESULT_FROM_WIN32(ERROR_NOT_FOUND)));
  }
  const CString path = platform::PathFromUtf8(name);
  const std::vector<__int64> found = FindPath(path);
  if (found.size() == 1) return found.front();
  if (found.empty()) {
    throw Failure(m_definition.At(0),
                  Quoted(path) + " is no " + kind + " of the project; add it with \"ondrel add " +
                      (m_kind == FileKind::icon ? "icon" : "code") + '"',
                  StatusText(HRESULT_FROM_WIN32(ERROR_NOT_FOUND)));
  }
  throw Failure(m_definition.At(0),
                Quoted(path) + " may be any of the " + kind + "s " + CookieList(found) + "; name one by its cookie",
                StatusText(E_INVALIDARG));
}

const ProjectFiles::File* ProjectFiles::AtPlace(const CString& path) const {
  const auto [first, last] = m_names.equal_range(LastPartOf(path));
  if (first == last) return nullptr;
  const platform::FoundFile wanted(path);
  const auto found =
      std::find_if(first, last, [&](const auto& entry) { return wanted.IsAt(m_files[entry.second].path); });
  return found == last ? nullptr : &m_files[found->second];
}

std::vector<__int64> ProjectFiles::FindPath(const CString& path) const {
  if (path.IsEmpty()) return {};
  const platform::FoundFile wanted(path);
  std::vector<__int64> found;
  const auto spelled = std::find_if(m_files.begin(), m_files.end(), [&](const File& file) {
    return m_definition.DisplayPath(file.path) == path || file.path == path;
  });
  if (spelled != m_files.end()) {
    found.push_back(spelled->cookie);
    // The project's own name of one file may be, from the working folder, that of another of its files.
    if (wanted.IsAt(spelled->path)) return found;
    for (const File& file : m_files) {
      if (wanted.IsAt(file.path)) found.push_back(file.cookie);
    }
    return found;
  }
  const CString inProject = WithBackslashes(m_definition.folder + path);
  const CString fromHere = platform::FullPath(path);
  for (const File& file : m_files) {
    const CString written = WithBackslashes(file.path);
    if (written == inProject || written == fromHere || wanted.IsAt(file.path)) found.push_back(file.cookie);
  }
  return found;
}

}  // namespace ondrel::command
