// From project files to object images, and to what else is made beside them.
#include "compile/compile.h"

#include <map>
#include <memory>

#include <ondrel/platform/program.h>

#include "compile/code_file_faults.h"
#include "compile/image_file.h"
#include "compile/inputs.h"
#include "output.h"
#include "output_place.h"
#include "printable.h"
#include "tree_drawing.h"

namespace ondrel::command {
namespace {

/// A dependency file beside its place, complete.
class PreparedDependencies {
 public:
  PreparedDependencies(std::string place, const std::string& image, const Definition& definition)
      : m_place(std::move(place)), m_file(platform::PathFromUtf8(m_place)) {
    const std::string text = DependencyText(image, InputsOf(definition));
    m_file.Write(text.data(), static_cast<UINT>(text.size()));
  }

  const platform::ReplacementFile& File() const { return m_file; }
  void Commit() {
    try {
      m_file.Commit();
    } catch (const std::exception&) {
      throw CurrentFailure({m_place});
    }
  }

 private:
  std::string m_place;
  platform::ReplacementFile m_file;
};

std::optional<PreparedDependencies> PrepareDependencies(const CompileRequest& request, const std::string& image,
                                                        Definition& definition) {
  if (!request.dependencyFile) return std::nullopt;
  RequirePlace(*request.dependencyFile, "the dependency file", definition);
  try {
    return std::optional<PreparedDependencies>(std::in_place, *request.dependencyFile, image, definition);
  } catch (const std::exception&) {
    throw CurrentFailure({*request.dependencyFile});
  }
}

/// The name of a project's image in the folder of the images: that of the project, with another ending.
std::string ImageName(const std::string& project) {
  const std::size_t separator = project.find_last_of("/\\");
  const std::string name = project.substr(separator == std::string::npos ? 0 : separator + 1);
  const std::size_t ending = name.rfind('.');
  return name.substr(0, ending == 0 ? std::string::npos : ending) + ".img";
}

/// The images of the projects, in their order.
std::vector<std::string> ImagesOf(const CompileRequest& request) {
  if (request.image) return {*request.image};
  std::string folder = request.directory.value_or("");
  if (platform::KindOfPlace(platform::PathFromUtf8(folder)) != platform::PlaceKind::folder) {
    throw Failure({folder}, "there is no such folder; make it, or name another",
                  StatusText(HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND)));
  }
  if (folder.back() != '/' && folder.back() != '\\') folder += '/';
  std::vector<std::string> images;
  // Names that differ only in case are one name on some systems.
  std::map<CCaselessSortStringT<CString>, const std::string*> projects;
  for (const std::string& project : request.projects) {
    images.push_back(folder + ImageName(project));
    const auto [former, isNew] = projects.emplace(platform::PathFromUtf8(images.back()), &project);
    if (isNew) continue;
    throw Failure({project},
                  "its image would have the name of that of " + Quoted(platform::PathFromUtf8(*former->second)) +
                      "; compile one of them into another folder",
                  StatusText(E_INVALIDARG));
  }
  return images;
}

/// No image may stand where a project does: it may be one that comes later.
void RequireNoProjects(const std::vector<std::string>& images, const std::vector<std::string>& projects) {
  if (projects.size() < 2) return;
  std::vector<SourceFile> sources;
  sources.reserve(projects.size());
  for (const std::string& project : projects) sources.push_back({platform::PathFromUtf8(project), "a project"});
  for (const std::string& image : images) RequirePlace(image, "the image", sources);
}

std::unique_ptr<Definition> ReadByRules(const CompileRequest& request, std::size_t index, CodeFiles& codeFiles) {
  return ReadProject(request.projects[index], request.reading,
                     [&codeFiles](Definition& definition) { return codeFiles.Prepare(definition); });
}

/// The line about the image.
std::string CompileProject(const CompileRequest& request, std::size_t index, const std::string& image) {
  Progress progress(index + 1, request.projects.size());
  CodeFiles codeFiles(request.rules, progress);
  const auto definition = ReadByRules(request, index, codeFiles);
  RequirePlace(image, "the image", *definition);
  RequireOwnCookies(*definition);
  auto dependencies = PrepareDependencies(request, image, *definition);
  const ULONGLONG bytes = WriteImage(*definition, image, dependencies ? &dependencies->File() : nullptr);
  if (dependencies) dependencies->Commit();
  return PrintablePath(image) + ": " + SummaryText(definition->set) + ", " + Counted(bytes, "byte", "bytes") + '\n';
}

/// The lines of a project's inputs.
std::string InputLines(const CompileRequest& request, std::size_t index) {
  Progress progress(index + 1, request.projects.size());
  CodeFiles codeFiles(request.rules, progress);
  const auto definition = ReadByRules(request, index, codeFiles);
  std::string lines;
  for (const std::string& input : InputsOf(*definition)) lines += PrintablePath(input) + '\n';
  return lines;
}

}  // namespace

int Compile(const CompileRequest& request) {
  if (request.listsInputs) {
    std::string lines;
    for (std::size_t index = 0; index < request.projects.size(); ++index) lines += InputLines(request, index);
    WriteOutput(lines);
    return kDone;
  }
  const std::vector<std::string> images = ImagesOf(request);
  RequireNoProjects(images, request.projects);
  for (std::size_t index = 0; index < images.size(); ++index) {
    WriteOutput(CompileProject(request, index, images[index]));
  }
  return kDone;
}

}  // namespace ondrel::command
