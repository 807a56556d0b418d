// The look at a place before anything is written to it.
#include "output_place.h"

#include <algorithm>
#include <list>

#include <ondrel/platform/program.h>

#include "failure.h"
#include "printable.h"

namespace ondrel::command {

std::string SourceFile::Name() const { return spelling.IsEmpty() ? kind : std::string(kind) + ' ' + Quoted(spelling); }

namespace {

/// A definition's file and, of a project, the icon and code files in the order of its text.
std::vector<SourceFile> SourcesOf(const Definition& definition) {
  const bool isProject = definition.form == DefinitionForm::project;
  std::vector<SourceFile> sources;
  sources.push_back({platform::PathFromUtf8(definition.file), isProject ? "the project" : "the object image"});
  if (!isProject) return sources;
  for (const ProjectFile& file : definition.Project().IconFiles()) {
    sources.push_back({*file.path, "icon file", file.spelling});
  }
  for (const ProjectFile& file : definition.Project().CodeFiles()) {
    sources.push_back({definition.PlaceOf(*file.path), "code file", file.spelling});
  }
  return sources;
}

/// Whether a file is the definition's or one that its set has a path of.
bool IsSource(const platform::FoundFile& file, Definition& definition) {
  if (!file.IsThere()) return false;
  if (file.IsAt(platform::PathFromUtf8(definition.file))) return true;
  std::list<__int64> cookies = definition.set.GetIconFiles();
  cookies.splice(cookies.end(), definition.set.GetCodeFiles());
  return std::any_of(cookies.begin(), cookies.end(), [&](__int64 cookie) {
    CString path;
    return definition.set.GetFilePath(cookie, path) && file.IsAt(definition.PlaceOf(path));
  });
}

}  // namespace

void RequirePlace(const std::string& place, const std::string& output, const std::vector<SourceFile>& sources) {
  const CString path = platform::PathFromUtf8(place);
  const platform::PlaceKind kind = platform::KindOfPlace(path);
  if (kind == platform::PlaceKind::nothing) return;
  if (kind != platform::PlaceKind::file) {
    constexpr HRESULT kDenied = HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
    throw Failure({place}, ExplainFileFault(path, kDenied), StatusText(kDenied));
  }
  const platform::FoundFile former(path);
  for (const SourceFile& source : sources) {
    if (!former.IsAt(source.path)) continue;
    throw Failure({place}, output + " would overwrite " + source.Name() + "; give it another name",
                  StatusText(E_INVALIDARG));
  }
}

void RequirePlace(const std::string& place, const std::string& output, Definition& definition) {
  // The set knows the files; how the project spells them matters only to who is refused.
  const bool isTaken = IsSource(platform::FoundFile(platform::PathFromUtf8(place)), definition);
  RequirePlace(place, output, isTaken ? SourcesOf(definition) : std::vector<SourceFile>());
}

}  // namespace ondrel::command
