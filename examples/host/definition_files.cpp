// Loading and saving: an archive over a file, and one operation of the set.
#include "definition_files.h"

#include <vector>

namespace host {
namespace {

/// A host that keeps code elsewhere than in files, in a database for one, would write the bytes here and return true.
bool LeaveToTheSet(const WCHAR*, CVellum&, CMMCObjectSet::Transform, CMMCObjectSet::Variables) { return false; }

bool IsScript(const CString& path) { return path.Right(3).CompareNoCase(_T(".js")) == 0; }

std::vector<char> AsTheyAre(std::vector<char> bytes, const CMMCObjectSet::Variables&) { return bytes; }

/// Scripts lose the blanks before their lines: images hold what runs, not what is edited.
std::vector<char> WithoutIndentation(std::vector<char> bytes, const CMMCObjectSet::Variables&) {
  std::vector<char> kept;
  bool isLineStart = true;
  for (const char byte : bytes) {
    if (isLineStart && (byte == ' ' || byte == '\t')) continue;
    isLineStart = byte == '\n';
    kept.push_back(byte);
  }
  return kept;
}

CMMCObjectSet::Transform TransformOf(const WCHAR* path) { return IsScript(path) ? WithoutIndentation : AsTheyAre; }

/// Stores into memory, then into a file beside the old one, which takes its name when it is complete.
template <class Store>
void Replace(const std::filesystem::path& path, Store store) {
  CMemFile contents;
  CVellum archive(&contents, CArchive::store | CArchive::bNoFlushOnDelete);
  archive.m_strFileName = LibraryPath(path);
  store(archive);
  archive.Close();

  std::filesystem::path unfinished = path;
  unfinished += ".new";
  try {
    CFile file(LibraryPath(unfinished), CFile::modeWrite | CFile::modeCreate);
    file.Write(contents.GetBytes(), static_cast<UINT>(contents.GetLength()));
    file.Flush();
    file.Close();
    std::filesystem::rename(unfinished, path);
  } catch (...) {
    std::error_code ignored;  // what failed first is what counts
    std::filesystem::remove(unfinished, ignored);
    throw;
  }
}

}  // namespace

Definition::Definition() : CMMCObjectSet(LeaveToTheSet) {}

CString LibraryPath(const std::filesystem::path& path) {
  CString text(std::filesystem::absolute(path).string<WCHAR>());
  text.Replace(_T('/'), _T('\\'));
  return text;
}

void LoadProject(CMMCObjectSet& definition, const std::filesystem::path& path) {
  CFile file(LibraryPath(path), CFile::modeRead | CFile::shareDenyWrite);
  CVellum archive(&file, CArchive::load);
  definition.SerializeProjectFile(archive, TransformOf);
}

void SaveProject(CMMCObjectSet& definition, const std::filesystem::path& path) {
  Replace(path, [&](CVellum& archive) { definition.SerializeProjectFile(archive, nullptr); });
}

void LoadImage(CMMCObjectSet& definition, const std::filesystem::path& path) {
  CFile file(LibraryPath(path), CFile::modeRead | CFile::shareDenyWrite);
  CVellum archive(&file, CArchive::load);
  definition.SerializeObjects(archive, 0, 1);
}

void CompileImage(CMMCObjectSet& definition, const std::filesystem::path& path) {
  Replace(path, [&](CVellum& archive) { definition.SerializeObjects(archive, 0, 0); });
}

}  // namespace host
