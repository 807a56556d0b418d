// The search for what a person names, level by level.
#include "edit/object_name.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include <ondrel/platform/program.h>

#include "edit/cookie_text.h"
#include "printable.h"

namespace ondrel::command {
namespace {

constexpr HRESULT kNoSuchObject = HRESULT_FROM_WIN32(ERROR_NOT_FOUND);
constexpr WCHAR kNameSeparator = '/';
constexpr WCHAR kNameEscape = '\\';

CString NameOfObject(CMMCObjectSet& set, __int64 cookie) {
  CMMCObjectParams* params = nullptr;
  return set.GetParams(cookie, params) ? params->GetName() : CString();
}

/// The names of a path; none where a backslash stands before anything but "/" and "\".
std::optional<std::vector<CString>> SplitNodePath(const CString& path) {
  std::vector<CString> names(1);
  for (int index = 0; index < path.GetLength(); ++index) {
    WCHAR unit = path[index];
    if (unit == kNameSeparator) {
      names.emplace_back();
      continue;
    }
    if (unit == kNameEscape) {
      unit = path[++index];  // behind the last there is a zero
      if (unit != kNameSeparator && unit != kNameEscape) return std::nullopt;
    }
    names.back() += unit;
  }
  return names;
}

/// Where a search for a path ended.
struct PathSearch {
  std::vector<__int64> found;  ///< The nodes that have the whole path.
  std::size_t level = 0;       ///< The first level without a node of its name, where nothing was found.
};

PathSearch FindNodePath(CMMCObjectSet& set, const std::vector<CString>& names) {
  PathSearch search;
  std::vector<__int64> parents{CMMCObjectSet::RootNode};
  for (const CString& name : names) {
    std::vector<__int64> found;
    for (const __int64 parent : parents) {
      for (const __int64 child : set.GetChildNodes(parent)) {
        if (NameOfObject(set, child) == name) found.push_back(child);
      }
    }
    if (found.empty()) return search;
    parents = std::move(found);
    ++search.level;
  }
  search.found = std::move(parents);
  return search;
}

/// The dialogs whose name a person may have given as it is, or written as a path of one name.
std::vector<__int64> FindDialogsNamed(CMMCObjectSet& set, const CString& given,
                                      const std::optional<std::vector<CString>>& path) {
  std::vector<__int64> found;
  for (const __int64 cookie : set.GetDialogs()) {
    const CString name = NameOfObject(set, cookie);
    if (name == given || (path && path->size() == 1 && path->front() == name)) found.push_back(cookie);
  }
  return found;
}

Failure NoSuchObject(const Definition& definition, const std::string& what) {
  return {definition.At(0), what + "; \"ondrel show\" tells names and cookies", StatusText(kNoSuchObject)};
}

__int64 FindObjectCookie(const Definition& definition, const std::string& text) {
  const std::optional<__int64> cookie = ReadCookieText(text);
  CMMCObjectParams* params = nullptr;
  if (!cookie || !definition.set.GetParams(*cookie, params)) {
    throw NoSuchObject(definition, "no node or dialog has the cookie " + Shortened(text));
  }
  return *cookie;
}

std::string ExplainMissingNode(const std::vector<CString>& names, std::size_t level) {
  if (level == 0) return "no top-level node and no dialog has the name " + Quoted(names.front());
  return "node " + Quoted(names[level - 1]) + " has no node " + Quoted(names[level]) + " below it";
}

}  // namespace

__int64 FindObjectNamed(Definition& definition, const std::string& name) {
  if (name.empty()) {
    throw Failure(definition.At(0), "the name of a node or dialog is empty; give a cookie or a path",
                  StatusText(E_INVALIDARG));
  }
  if (LooksLikeCookie(name)) return FindObjectCookie(definition, name);

  const CString given = platform::PathFromUtf8(name);
  const std::optional<std::vector<CString>> path = SplitNodePath(given);
  PathSearch search;
  if (path) search = FindNodePath(definition.set, *path);
  const bool areNodes = !search.found.empty();
  const std::vector<__int64> found = areNodes ? search.found : FindDialogsNamed(definition.set, given, path);
  if (found.size() == 1) return found.front();
  if (found.size() > 1) {
    throw Failure(definition.At(0),
                  Quoted(given) + " may be any of the " + (areNodes ? "nodes " : "dialogs ") + CookieList(found) +
                      "; name one by its cookie",
                  StatusText(E_INVALIDARG));
  }
  if (!path) {
    throw Failure(definition.At(0),
                  Quoted(given) +
                      R"( has a backslash before neither "/" nor "\"; write "\\" for one in a name, and "/" )"
                      "between names",
                  StatusText(E_INVALIDARG));
  }
  throw NoSuchObject(definition, ExplainMissingNode(*path, search.level));
}

bool IsDialog(CMMCObjectSet& set, __int64 cookie) {
  const std::list<__int64> dialogs = set.GetDialogs();
  return std::find(dialogs.begin(), dialogs.end(), cookie) != dialogs.end();
}

std::string ObjectLabel(CMMCObjectSet& set, __int64 cookie) {
  return (IsDialog(set, cookie) ? "dialog " : "node ") + std::to_string(cookie);
}

std::string ObjectLine(CMMCObjectSet& set, __int64 cookie) {
  return ObjectLabel(set, cookie) + ": " + Printable(NameOfObject(set, cookie));
}

}  // namespace ondrel::command
