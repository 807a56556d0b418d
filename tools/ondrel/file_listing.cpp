// What the set and the disk know of each file.
#include "file_listing.h"

namespace ondrel::command {
namespace {

std::optional<CString> DisplayPathOf(const Definition& definition, __int64 cookie) {
  CString path;
  if (!definition.set.GetFilePath(cookie, path)) return std::nullopt;
  return definition.DisplayPath(path);
}

std::optional<ULONGLONG> SizeOnDisk(const CString& path) {
  CFile file;
  if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone)) return std::nullopt;
  return file.GetLength();
}

}  // namespace

std::vector<IconFile> ListIconFiles(const Definition& definition, const std::set<__int64>* only) {
  std::vector<IconFile> files;
  for (const __int64 cookie : definition.set.GetIconFiles()) {
    if (only != nullptr && !only->contains(cookie)) continue;
    const CMMCObjectIcon* icon = nullptr;
    if (!definition.set.GetIconFile(cookie, &icon)) continue;
    files.push_back(
        {cookie, DisplayPathOf(definition, cookie), icon->GetColourBitmap(true), icon->GetColourBitmap(false)});
  }
  return files;
}

std::vector<CodeFile> ListCodeFiles(Definition& definition, const std::set<__int64>* only) {
  std::vector<CodeFile> files;
  for (const __int64 cookie : definition.set.GetCodeFiles()) {
    if (only != nullptr && !only->contains(cookie)) continue;
    CodeFile file{cookie, std::nullopt, std::nullopt};
    std::vector<char> contents;
    CString path;
    if (definition.set.GetCodeFileContents(cookie, contents)) {
      file.bytes = contents.size();
    } else if (definition.set.GetFilePath(cookie, path)) {
      file.path = definition.DisplayPath(path);
      file.bytes = SizeOnDisk(path);
    }
    files.push_back(std::move(file));
  }
  return files;
}

}  // namespace ondrel::command
