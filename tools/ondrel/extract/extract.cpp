// From an object image to the folder of a project, and the proof that the way back leads to the same image.
#include "extract/extract.h"

#include <memory>
#include <utility>

#include <ondrel/platform/xml_references.h>

#include "definition_file.h"
#include "extract/extracted_parts.h"
#include "extract/image_comparison.h"
#include "output.h"
#include "printable.h"
#include "tree_drawing.h"

namespace ondrel::command {
namespace {

constexpr LPCTSTR kProjectFile = _T("project.xml");

/// What is known of an image before anything is written.
struct ImageFacts {
  std::string summary;
  std::size_t codeFiles = 0;
  std::size_t icons = 0;
};

/// Raises Failure for whatever is no image that loads.
ImageFacts RequireImage(const std::string& file) {
  const auto definition = ReadDefinition(file, TextReading::utf8);
  if (definition->form != DefinitionForm::image) {
    throw Failure({file}, "it is a project file, whose files are on disk already; name an object image",
                  StatusText(kInvalidData));
  }
  CMMCObjectSet& set = definition->set;
  return {SummaryText(set), set.GetCodeFiles().size(), set.GetIconFiles().size()};
}

/// What is wrong with the place, in the terms of a folder.
Failure ExplainPlace(const std::string& folder, const CFileException& fault) {
  const HRESULT status = StatusOf(fault);
  switch (static_cast<DWORD>(status) & 0xFFFF) {
    case ERROR_FILE_EXISTS:
      return {{folder}, "it is a file or a link; name a folder that is not there yet", StatusText(status)};
    case ERROR_NOT_EMPTY:
      return {{folder}, "the folder is not empty; name one that is, or one that is not there yet", StatusText(status)};
    default:
      return {{folder}, ExplainFileFault(fault.m_strFileName, status), StatusText(status)};
  }
}

std::unique_ptr<Definition> ReadWrittenProject(const platform::NewFolder& folder) {
  return ReadProject(platform::PathToUtf8(folder.PathOf(kProjectFile)), TextReading::utf8);
}

void ReplaceAll(std::string& text, std::string_view old, std::string_view replacement) {
  for (std::size_t at = text.find(old); at != std::string::npos; at = text.find(old, at + replacement.size())) {
    text.replace(at, old.size(), replacement);
  }
}

/// The project as the library saves it, but that every script names its file: a load would not come back from one that
/// does not, as a save writes it for the cookie 0. Text beyond ASCII is written as references.
std::string ProjectText(CMMCObjectSet& set, const CString& path) {
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  archive.m_strFileName = path;
  set.SerializeProjectFile(archive, nullptr);
  archive.Close();
  std::string text(reinterpret_cast<const char*>(file.GetBytes()), static_cast<std::size_t>(file.GetLength()));
  ReplaceAll(text, "<Script/>", "<Script File=\"0\"/>");
  return platform::ReferenceValues(text).value_or(std::move(text));
}

/// Writes the project of the parts, whose files are in the folder by now.
void WriteProjectFile(platform::NewFolder& folder, ExtractedParts& parts) {
  // Loading is the one way to give a set files under cookies that are known.
  folder.WriteFile(kProjectFile, parts.FilesProject());
  const auto project = ReadWrittenProject(folder);
  // What is refused here is named when the image is compared with what it has become.
  for (auto& [parent, record] : parts.Nodes()) {
    const __int64 cookie = record.GetCookie();
    project->set.AddNode(parent, cookie, std::move(record));
  }
  for (CMMCObjectParams& record : parts.Dialogs()) {
    const __int64 cookie = record.GetCookie();
    project->set.AddDialog(cookie, std::move(record));
  }
  folder.WriteFile(kProjectFile, ProjectText(project->set, folder.PathOf(kProjectFile)));
}

/// Why the project in the folder compiles to another image, in one clause; empty when it does not.
std::string BrokenPromise(const platform::NewFolder& folder, CFile& image) {
  std::unique_ptr<Definition> project;
  std::optional<ULONGLONG> difference;
  std::string fault;
  try {
    project = ReadWrittenProject(folder);
    difference = FirstDifference(*project, image);
    if (!difference) return {};
  } catch (const std::exception&) {
    fault = CurrentFailure({}).what();
    ReplaceAll(fault, Printable(folder.PathOf(_T(""))), "");
    if (project == nullptr) return "the project does not load: " + fault;
  }
  const std::vector<std::string> reasons = ReasonsForDifference(*project, image);
  if (reasons.empty()) {
    return fault.empty() ? "from byte " + std::to_string(*difference) + " on the image is not as a compile writes it"
                         : fault;
  }
  if (reasons.size() == 1) return reasons.front();
  return reasons.front() + ", and " + Counted(reasons.size() - 1, "more reason", "more reasons");
}

/// Gives why the promise is not kept, if it is not.
std::string ExtractTo(platform::NewFolder& folder, const ImageFacts& facts, const std::string& imageName) {
  CFile image(platform::PathFromUtf8(imageName), CFile::modeRead | CFile::shareDenyWrite);
  {
    ExtractedParts parts(folder, facts.codeFiles, facts.icons);
    WalkImage(image, parts);
    WriteProjectFile(folder, parts);
  }
  std::string broken = BrokenPromise(folder, image);
  image.Close();
  folder.Commit();
  return broken;
}

}  // namespace

int Extract(const ExtractRequest& request) {
  const ImageFacts facts = RequireImage(request.image);
  const CString path = platform::PathFromUtf8(request.folder);
  if (platform::IsSameFile(path, _T("."))) {
    throw Failure({request.folder}, "it is the working folder, which cannot be replaced; name a folder in it",
                  StatusText(E_INVALIDARG));
  }
  std::string broken;
  try {
    platform::NewFolder folder(path);
    broken = ExtractTo(folder, facts, request.image);
  } catch (const CFileException& fault) {
    throw ExplainPlace(request.folder, fault);
  } catch (const std::exception&) {
    throw CurrentFailure({request.folder});
  }
  if (!broken.empty()) {
    throw Failure({request.folder},
                  "all files are written, but project.xml compiles to another image: " + broken +
                      "; look through it before you use it",
                  StatusText(E_NOTIMPL));
  }
  WriteOutput(PrintablePath(request.folder) + ": " + facts.summary + "; project.xml compiles to the same image\n");
  return kDone;
}

}  // namespace ondrel::command
