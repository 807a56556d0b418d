// The look at a place before anything is written to it.
#include "output_place.h"

#include <ondrel/platform/program.h>

#include "failure.h"
#include "printable.h"

namespace ondrel::command {

std::string SourceFile::Name() const { return spelling.IsEmpty() ? kind : std::string(kind) + ' ' + Quoted(spelling); }

std::vector<SourceFile> SourcesOf(const Definition& definition) {
  const bool isProject = definition.form == DefinitionForm::project;
  std::vector<SourceFile> sources;
  sources.push_back({platform::PathFromUtf8(definition.file), isProject ? "the project" : "the object image"});
  if (!definition.project) return sources;
  for (const ProjectFile& file : definition.project->IconFiles()) {
    sources.push_back({*file.path, "icon file", file.spelling});
  }
  for (const ProjectFile& file : definition.project->CodeFiles()) {
    sources.push_back({*file.path, "code file", file.spelling});
  }
  return sources;
}

void RequirePlace(const std::string& place, const std::string& output, const std::vector<SourceFile>& sources) {
  const CString path = platform::PathFromUtf8(place);
  const platform::PlaceKind kind = platform::KindOfPlace(path);
  if (kind == platform::PlaceKind::nothing) return;
  if (kind != platform::PlaceKind::file) {
    constexpr HRESULT kDenied = HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
    throw Failure({place}, ExplainFileFault(path, kDenied), StatusText(kDenied));
  }
  for (const SourceFile& source : sources) {
    if (!platform::IsSameFile(path, source.path)) continue;
    throw Failure({place}, output + " would overwrite " + source.Name() + "; give it another name",
                  StatusText(E_INVALIDARG));
  }
}

}  // namespace ondrel::command
