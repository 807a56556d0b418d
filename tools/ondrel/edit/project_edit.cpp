// Nothing of what a person has in a project gets lost on the way through an edit.
#include "edit/project_edit.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

#include <ondrel/platform/program.h>

#include "check/remark.h"
#include "edit/object_name.h"
#include "edit/saved_text.h"
#include "edit/text_difference.h"
#include "output.h"
#include "printable.h"

namespace ondrel::command {
namespace {

void RequireNoLosses(Definition& definition) {
  std::vector<Remark> losses = LossesOfSave(definition);
  // The edit may be what mends a script of cookie 0; where it does not, RequireLasting refuses the save.
  std::erase_if(losses, [](const Remark& loss) { return std::string_view(loss.code) == "script-cookie-zero"; });
  if (losses.empty()) return;
  const Remark& first = losses.front();
  std::string others;
  if (losses.size() > 1) others = " (and " + Counted(losses.size() - 1, "more loss", "more losses") + ")";
  throw Failure(definition.At(first.line), first.explanation + others + "; --lossy saves all the same",
                StatusText(kInvalidData));
}

/// Whether a file holds these bytes and no others. Raises CFileException.
bool HoldsBytes(const CString& path, std::string_view bytes) {
  CFile file(path, CFile::modeRead | CFile::shareDenyNone);
  if (file.GetLength() != bytes.size()) return false;
  constexpr std::size_t kBlockSize = 65'536;
  std::array<char, kBlockSize> block;
  while (!bytes.empty()) {
    const UINT read = file.Read(block.data(), static_cast<UINT>(std::min(block.size(), bytes.size())));
    if (read == 0 || std::memcmp(block.data(), bytes.data(), read) != 0) return false;
    bytes.remove_prefix(read);
  }
  return file.Read(block.data(), 1) == 0;
}

/// Looks once more at the place of a new file or at the file that is to be replaced.
void RequireAsLoaded(const Definition& definition, const CString& path) {
  if (definition.FileBytes().empty()) {
    if (platform::KindOfPlace(path) == platform::PlaceKind::nothing) return;
    throw Failure(definition.At(0), "there is something by that name already; give the new project another name",
                  StatusText(HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS)));
  }
  if (HoldsBytes(path, definition.FileBytes())) return;
  throw Failure(definition.At(0), "another program has changed the file meanwhile, so it stays as it is now; try again",
                StatusText(HRESULT_FROM_WIN32(ERROR_LOCK_VIOLATION)));
}

/// A file that its user may not write is not replaced either, though the system might allow that.
void RequireWritable(const CString& path) { CFile file(path, CFile::modeReadWrite | CFile::shareDenyNone); }

void ReplaceProject(const Definition& definition, const std::string& text) {
  const CString path = platform::PathFromUtf8(definition.file);
  try {
    if (!definition.FileBytes().empty()) RequireWritable(path);
    platform::ReplacementFile file(path);
    file.Write(text.data(), static_cast<UINT>(text.size()));
    RequireAsLoaded(definition, path);
    file.Commit();
  } catch (const std::exception&) {
    throw CurrentFailure(definition.At(0));
  }
}

}  // namespace

std::unique_ptr<Definition> OpenForEdit(const EditRequest& request) {
  auto definition = ReadProject(request.project, request.reading);
  if (!request.isLossy) RequireNoLosses(*definition);
  return definition;
}

std::unique_ptr<Definition> OpenNew(const EditRequest& request) {
  auto definition = std::make_unique<Definition>();
  definition->file = request.project;
  const CString path = FullPathOf(*definition);
  definition->folder = path.Left(path.ReverseFind('\\') + 1);
  RequireAsLoaded(*definition, path);
  return definition;
}

void RequireSavedNode(Definition& definition, __int64 cookie) {
  if (cookie >= 0 || IsDialog(definition.set, cookie)) return;
  throw Failure(definition.At(definition.Project().LineOfObject(cookie)),
                "node " + std::to_string(cookie) +
                    " has a negative cookie, and no save keeps such nodes; give it "
                    "another cookie in the file",
                StatusText(E_INVALIDARG));
}

int FinishEdit(const EditRequest& request, Definition& definition, const std::vector<__int64>& changed,
               const std::string& report) {
  const std::string text = SavedText(definition);
  RequireLasting(definition, text, changed);
  if (request.isDryRun) {
    WriteOutput(UnifiedDifference(PrintablePath(request.project), definition.FileBytes(), text));
  } else {
    ReplaceProject(definition, text);
    WriteOutput(report);
  }
  return kDone;
}

}  // namespace ondrel::command
