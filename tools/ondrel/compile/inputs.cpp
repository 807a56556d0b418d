// The list of inputs, and its form for make.
#include "compile/inputs.h"

#include <algorithm>
#include <set>
#include <string_view>

#include <ondrel/platform/program.h>

#include "failure.h"

namespace ondrel::command {
namespace {

std::string WithSlashes(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

/// As compilers write it: make has no other way to tell these characters from its own.
std::string MakeName(const std::string& name) {
  std::string text;
  for (const char byte : WithSlashes(name)) {
    if (byte == '$') text += '$';
    if (byte == ' ' || byte == '\t' || byte == '#') text += '\\';
    text += byte;
  }
  return text;
}

}  // namespace

std::vector<std::string> InputsOf(const Definition& definition) {
  const std::string project = WithSlashes(definition.file);
  const std::string folder = project.substr(0, project.rfind('/') + 1);
  std::vector<std::string> inputs{project};
  std::set<std::string> listed{project};
  const auto add = [&](const ProjectFile& file) {
    const CString& place = definition.PlaceOf(*file.path);
    const CString shown = definition.DisplayPath(place);
    const bool isInFolder = shown.GetLength() < place.GetLength();
    std::string name = WithSlashes(platform::PathToUtf8(shown));
    if (isInFolder) name.insert(0, folder);
    if (listed.insert(name).second) inputs.push_back(std::move(name));
  };
  for (const ProjectFile& icon : definition.Project().IconFiles()) add(icon);
  for (const ProjectFile& file : definition.Project().CodeFiles()) add(file);
  return inputs;
}

std::string DependencyText(const std::string& image, const std::vector<std::string>& inputs) {
  std::string text = MakeName(image) + ':';
  for (const std::string& input : inputs) {
    if (input.find_first_of("\r\n") != std::string::npos) {
      throw Failure({input}, "a dependency file cannot hold a name with a line end; give the file another name",
                    StatusText(E_INVALIDARG));
    }
    text += (&input == &inputs.front() ? " " : " \\\n ") + MakeName(input);
  }
  return text + '\n';
}

}  // namespace ondrel::command
