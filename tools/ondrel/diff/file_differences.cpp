// The comparison of icon files and code files.
#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <ondrel/platform/program.h>

#include "diff/differences.h"
#include "file_listing.h"
#include "printable.h"

namespace ondrel::command {
namespace {

constexpr UINT kComparedBytes = 64 * 1024;

/// The bytes of a code file, wherever the definition has them.
class CodeBytes {
 public:
  CodeBytes(const Definition& definition, __int64 cookie) : m_definition(definition) {
    if (definition.set.GetCodeFileContents(cookie, m_contents)) return;
    definition.set.GetFilePath(cookie, m_path);
    m_file.emplace();
    std::unique_ptr<CFileException> fault;
    if (!m_file->Open(m_path, CFile::modeRead | CFile::shareDenyWrite, &fault)) throw FailureOf(*fault);
  }

  bool IsSameFile(const CodeBytes& other) const {
    return m_file && other.m_file && platform::IsSameFile(m_path, other.m_path);
  }
  ULONGLONG Length() const { return m_file ? m_file->GetLength() : m_contents.size(); }

  /// The next bytes, at most `count`; how many, fewer only at the end.
  UINT Read(char* bytes, UINT count) {
    try {
      if (m_file) return m_file->Read(bytes, count);
    } catch (const CFileException& fault) {
      throw FailureOf(fault);
    }
    const auto size = static_cast<UINT>(std::min<std::size_t>(count, m_contents.size() - m_taken));
    std::copy_n(m_contents.begin() + static_cast<std::ptrdiff_t>(m_taken), size, bytes);
    m_taken += size;
    return size;
  }

 private:
  Failure FailureOf(const CFileException& fault) const {
    const HRESULT status = StatusOf(fault);
    return {
        {platform::PathToUtf8(m_definition.DisplayPath(m_path))}, ExplainFileFault(m_path, status), StatusText(status)};
  }

  const Definition& m_definition;
  std::vector<char> m_contents;
  std::size_t m_taken = 0;
  CString m_path;
  std::optional<CFile> m_file;
};

std::string ContentsChange(const Definition& older, const Definition& newer, __int64 cookie) {
  CodeBytes before(older, cookie);
  CodeBytes after(newer, cookie);
  if (before.IsSameFile(after)) return "";
  if (before.Length() != after.Length()) {
    return "contents of " + Counted(before.Length(), "byte", "bytes") + " -> " +
           Counted(after.Length(), "byte", "bytes");
  }
  std::vector<char> left(kComparedBytes);
  std::vector<char> right(kComparedBytes);
  for (UINT size = kComparedBytes; size == kComparedBytes;) {
    size = before.Read(left.data(), kComparedBytes);
    if (after.Read(right.data(), kComparedBytes) != size || std::memcmp(left.data(), right.data(), size) != 0) {
      return "contents of the same length";
    }
  }
  return "";
}

/// What an object image holds of an icon.
std::string StoredImages(const Definition& definition, __int64 cookie) {
  const CMMCObjectIcon* icon = nullptr;
  if (!definition.set.GetIconFile(cookie, &icon)) return {};
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  icon->Serialize(archive);
  archive.Close();
  return {reinterpret_cast<const char*>(file.GetBytes()), static_cast<std::size_t>(file.GetLength())};
}

std::string ImagesChange(const Definition& older, const Definition& newer, __int64 cookie) {
  return StoredImages(older, cookie) == StoredImages(newer, cookie) ? "" : "images";
}

template <class File, class ContentChange>
void CompareFiles(Subject::Kind kind, const std::vector<File>& olderFiles, const std::vector<File>& newerFiles,
                  ContentChange contentChange, Differences& differences) {
  const auto tell = [&](Difference::Change change, const File& file, std::string detail) {
    differences.push_back(
        {change, {kind, file.cookie}, Shortened(Printable(file.path.value_or(CString()))), std::move(detail)});
  };
  std::map<__int64, const File*> added;
  for (const File& file : newerFiles) added.emplace(file.cookie, &file);
  for (const File& file : olderFiles) {
    const auto found = added.find(file.cookie);
    if (found == added.end()) {
      tell(Difference::Change::removed, file, "");
      continue;
    }
    const File& newer = *found->second;
    added.erase(found);
    std::string detail;
    if (file.path && newer.path && *file.path != *newer.path) {
      detail = "path \"" + Printable(*file.path) + "\" -> \"" + Printable(*newer.path) + '"';
    }
    if (const std::string content = contentChange(file.cookie); !content.empty()) {
      detail += (detail.empty() ? "" : ", ") + content;
    }
    if (!detail.empty()) tell(Difference::Change::changed, file, std::move(detail));
  }
  for (const auto& [cookie, file] : added) tell(Difference::Change::added, *file, "");
}

}  // namespace

void FindFileDifferences(Definition& older, Definition& newer, Differences& differences) {
  CompareFiles(
      Subject::Kind::iconFile, ListIconFiles(older), ListIconFiles(newer),
      [&](__int64 cookie) { return ImagesChange(older, newer, cookie); }, differences);
  CompareFiles(
      Subject::Kind::codeFile, ListCodeFiles(older), ListCodeFiles(newer),
      [&](__int64 cookie) { return ContentsChange(older, newer, cookie); }, differences);
}

}  // namespace ondrel::command
