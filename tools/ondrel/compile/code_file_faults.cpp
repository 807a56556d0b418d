// The look at code files after a write has failed, or would store the wrong bytes.
#include "compile/code_file_faults.h"

#include <algorithm>
#include <list>
#include <map>
#include <vector>

#include "code_file_fault.h"
#include "printable.h"

namespace ondrel::command {
namespace {

Failure FailureOf(const Definition& definition, const ProjectFile& file, const std::string& explanation,
                  HRESULT status) {
  return {definition.At(file.line), FileLabel(file) + ": " + explanation, StatusText(status)};
}

}  // namespace

Failure CodeFileFailure(const Definition& definition, const CString& path, const std::string& explanation,
                        HRESULT status) {
  for (const ProjectFile& file : definition.Project().CodeFiles()) {
    if (file.path == path) return FailureOf(definition, file, explanation, status);
  }
  return {definition.At(0), Quoted(path) + ": " + explanation, StatusText(status)};
}

void RequireCodeFiles(const Definition& definition) {
  std::map<__int64, const ProjectFile*> icons;
  for (const ProjectFile& icon : definition.Project().IconFiles()) icons.emplace(*icon.cookie, &icon);
  for (const ProjectFile& file : definition.Project().CodeFiles()) {
    if (const auto icon = icons.find(*file.cookie); icon != icons.end()) {
      throw FailureOf(definition, file,
                      "its cookie is also that of the icon file in line " + std::to_string(icon->second->line) +
                          "; give it another",
                      HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS));
    }
    if (const auto fault = FindCodeFileFault(definition.PlaceOf(*file.path))) {
      throw FailureOf(definition, file, fault->explanation, fault->status);
    }
  }
}

void RequireOwnCookies(Definition& definition) {
  const std::list<__int64> icons = definition.set.GetIconFiles();
  if (icons.empty()) return;
  const std::list<__int64> listed = definition.set.GetCodeFiles();
  std::vector<__int64> codeFiles(listed.begin(), listed.end());
  std::sort(codeFiles.begin(), codeFiles.end());
  const bool isShared = std::any_of(icons.begin(), icons.end(), [&](__int64 cookie) {
    return std::binary_search(codeFiles.begin(), codeFiles.end(), cookie);
  });
  if (isShared) RequireCodeFiles(definition);
}

}  // namespace ondrel::command
