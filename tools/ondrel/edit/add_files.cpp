// New icon files and code files.
#include "edit/add_files.h"

#include <utility>

#include <ondrel/platform/program.h>

#include "edit/file_name.h"
#include "edit/written_text.h"
#include "printable.h"

namespace ondrel::command {
namespace {

constexpr HRESULT kFileIsThere = HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS);

/// The full path of a file, through the project's folder as that is named, where it lies in it: a path that leads there
/// by another name, or through a link, would be stored whole and so be of use on this computer alone.
CString PathToStore(const CString& folder, const CString& path) {
  CString full = platform::FullPath(path);
  if (full.Find(folder) == 0) return full;
  const platform::FoundFile found(folder);
  for (int end = full.ReverseFind('\\'); end > 0; end = full.Left(end).ReverseFind('\\')) {
    if (found.IsAt(full.Left(end + 1))) return folder + full.Mid(end + 1);
  }
  return full;
}

void RequireFileToAdd(const Definition& definition, FileKind kind, const CString& path) {
  const auto refuse = [&](HRESULT status) {
    throw Failure(definition.At(0),
                  std::string(KindName(kind)) + ' ' + Quoted(path) + ": " + ExplainFileFault(path, status),
                  StatusText(status));
  };
  switch (platform::KindOfPlace(path)) {
    case platform::PlaceKind::nothing:
      return refuse(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    case platform::PlaceKind::file:
      return;
    default:
      return refuse(HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED));
  }
}

/// The status of the library, and the cookie.
HRESULT InsertFile(Definition& definition, FileKind kind, const CString& path, __int64& cookie) {
  if (kind == FileKind::icon) return definition.set.AddIconFile(path, cookie);
  // The transform is asked for in an image alone.
  const auto keep = [](std::vector<char> bytes, const CMMCObjectSet::Variables&) { return bytes; };
  return definition.set.AddCodeFile(path, keep, cookie);
}

/// The line about the new file.
std::string AddFile(Definition& definition, FileKind kind, ProjectFiles& known, std::size_t knownBefore,
                    const std::string& argument) {
  const CString given = platform::PathFromUtf8(argument);
  RequireFileToAdd(definition, kind, given);
  const CString path = PathToStore(definition.folder, given);
  const CString shown = definition.DisplayPath(path);
  RequireCarried(definition.At(0), "the path", shown);
  if (const ProjectFiles::File* const taken = known.AtPlace(path); taken != nullptr) {
    const bool isNew = known.IndexOf(*taken) >= knownBefore;
    throw Failure(
        definition.At(0),
        std::string(KindName(kind)) + ' ' + Quoted(shown) +
            (isNew ? " is named twice; name it once"
                   : " is in the project already, with the cookie " + std::to_string(taken->cookie) + "; use that"),
        StatusText(kFileIsThere));
  }
  ProjectFiles::File file{0, path};
  if (const HRESULT status = InsertFile(definition, kind, path, file.cookie); FAILED(status)) {
    throw Failure(definition.At(0),
                  std::string(KindName(kind)) + ' ' + Quoted(shown) + ": " + ExplainIconFault(path, status),
                  StatusText(status));
  }
  known.Add(file);
  const bool isInside = shown != path;
  return std::string(KindName(kind)) + ' ' + std::to_string(file.cookie) + ": " + Printable(shown) +
         (isInside ? "\n" : " (outside the project's folder, so it is named by its whole path)\n");
}

int AddFiles(const AddFilesRequest& request, FileKind kind) {
  const auto definition = OpenForEdit(request.edit);
  ProjectFiles known(*definition, kind);
  const std::size_t knownBefore = known.Count();
  std::string report;
  for (const std::string& file : request.files) report += AddFile(*definition, kind, known, knownBefore, file);
  return FinishEdit(request.edit, *definition, {}, report);
}

}  // namespace

int AddIcons(const AddFilesRequest& request) { return AddFiles(request, FileKind::icon); }

int AddCode(const AddFilesRequest& request) { return AddFiles(request, FileKind::code); }

}  // namespace ondrel::command
