// Editing a definition: files first, then the objects that refer to them by cookie.
#include "backups.h"

#include "definition_files.h"

namespace host {
namespace {

constexpr __int64 kNoCookie = -2;  // what the operations that add an object give when they fail

/// A dialog's name that is taken fails so, too.
__int64 Added(__int64 cookie) {
  if (cookie == kNoCookie) AtlThrow(HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS));
  return cookie;
}

__int64 AddIcon(CMMCObjectSet& definition, const std::filesystem::path& path) {
  __int64 cookie = 0;
  AtlThrowIfFailed(definition.AddIconFile(LibraryPath(path), cookie));
  return cookie;
}

/// A file that is added here goes into images as it is. It is read when an image is written, not before.
__int64 AddScript(CMMCObjectSet& definition, const std::filesystem::path& path) {
  __int64 cookie = 0;
  const auto keep = [](std::vector<char> bytes, const CMMCObjectSet::Variables&) { return bytes; };
  AtlThrowIfFailed(definition.AddCodeFile(LibraryPath(path), keep, cookie));
  return cookie;
}

/// The record of an object that is there.
CMMCObjectParams RecordOf(const CMMCObjectSet& definition, __int64 cookie) {
  CMMCObjectParams* record = nullptr;
  if (!definition.GetParams(cookie, record)) AtlThrow(HRESULT_FROM_WIN32(ERROR_NOT_FOUND));
  return *record;
}

}  // namespace

void AddBackups(CMMCObjectSet& definition, const std::filesystem::path& folder) {
  const std::list<__int64> topNodes = definition.GetChildNodes(CMMCObjectSet::RootNode);
  if (topNodes.empty()) AtlThrow(HRESULT_FROM_WIN32(ERROR_NOT_FOUND));

  // The dialog first: its name is what a console with backups has already.
  const __int64 dialog = Added(definition.AddNewDialog(kBackupDialog));
  const __int64 icon = AddIcon(definition, folder / "backup.ico");
  const __int64 menu = AddScript(definition, folder / "backup-menu.js");

  const __int64 backups = Added(definition.AddNewNode(topNodes.front(), _T("Backups"), CMMCObjectParams::eList));
  const __int64 last = Added(definition.AddNewNode(backups, _T("Last Backup"), CMMCObjectParams::eHTML));

  for (const __int64 cookie : {dialog, backups, last}) {
    CMMCObjectParams record = RecordOf(definition, cookie);
    record.SetIcon(icon);
    if (cookie == backups) record.SetMenuScript(menu);
    definition.SetParams(cookie, &record);
  }
}

}  // namespace host
