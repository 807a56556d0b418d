// The object image: the whole definition as one binary run, for use without the files it was made from.

#include <ondrel/MMCObjectSet.h>

#include <algorithm>
#include <array>

#include "params/archive_counts.h"

using ondrel::LoadCount;
using ondrel::StoreCount;

namespace {

constexpr DWORD kSetVersion = 1;
constexpr DWORD kRecordVersion = 1;
constexpr ULONGLONG kMostTopNodes = 1;

/// The folder of a path with its closing separator, or the whole path when it has no separator.
CString FolderOf(const CString& path) {
  const int separator = std::max(path.ReverseFind(_T('\\')), path.ReverseFind(_T('/')));
  return separator < 0 ? path : path.Left(separator + 1);
}

}  // namespace

void CMMCObjectSet::SerializeObjects(CVellum& archive, int setModified, int clearModified) {
  if (archive.IsStoring()) {
    StoreObjectImage(archive);
  } else {
    LoadObjectImage(archive);
  }
  if (setModified != 0) SetModifiedFlag(TRUE);
  if (clearModified != 0) SetModifiedFlag(FALSE);
}

void CMMCObjectSet::StoreObjectImage(CVellum& archive) {
  const std::list<__int64> topNodes = GetChildNodes(RootNode);
  if (topNodes.size() > kMostTopNodes) AfxThrowArchiveException(CArchiveException::badSchema);
  archive << kSetVersion << kRecordVersion;
  StoreCount(archive, topNodes.size());
  for (const __int64 cookie : topNodes) SerializeNode(cookie, archive);

  const std::list<__int64> dialogs = GetDialogs();
  StoreCount(archive, dialogs.size());
  for (const __int64 cookie : dialogs) StoreRecord(cookie, archive);

  const std::list<__int64> icons = GetIconFiles();
  StoreCount(archive, icons.size());
  for (const __int64 cookie : icons) SerializeIconFile(cookie, archive);

  // The first file of a folder, in path order, stands for it, so the later ones must not replace it.
  Variables folders;
  for (const auto& [path, file] : m_tables.codePaths) folders.try_emplace(FolderOf(path), file.first);
  StoreCount(archive, m_tables.codePaths.size());
  for (const auto& [path, file] : m_tables.codePaths) StoreCodeFile(file.first, archive, file.second, folders);

  StoreCount(archive, m_tables.codeContents.size());
  for (const auto& [cookie, contents] : m_tables.codeContents) {
    archive << cookie;
    archive.Write(contents);
  }
}

void CMMCObjectSet::StoreRecord(__int64 cookie, CVellum& archive) const {
  CMMCObjectParams* params = nullptr;
  if (!GetParams(cookie, params)) AfxThrowArchiveException(CArchiveException::genericException);
  params->Serialize(archive);
}

void CMMCObjectSet::SerializeNode(__int64 cookie, CVellum& archive) {
  TreeWalk walk;
  walk.pending.push_back({cookie, {}, 0});
  while (!walk.pending.empty()) {
    std::size_t children = 0;
    if (const CMMCObjectParams* const params = VisitNext(walk, children)) {
      params->Serialize(archive);
    } else {
      AfxThrowArchiveException(CArchiveException::genericException);
    }
    StoreCount(archive, children);
  }
}

void CMMCObjectSet::LoadObjectImage(CVellum& archive) {
  DWORD setVersion = 0;
  DWORD recordVersion = 0;
  archive >> setVersion >> recordVersion;
  if (setVersion != kSetVersion || recordVersion != kRecordVersion) {
    AfxThrowArchiveException(CArchiveException::badSchema);
  }
  const ULONGLONG topNodes = LoadCount(archive);
  if (topNodes > kMostTopNodes) AfxThrowArchiveException(CArchiveException::badSchema);
  // From here on a failure leaves what was read: an image is loaded into a set that holds nothing of worth.
  {
    CSingleLock lock(&m_lock, TRUE);
    Initialise();
  }
  if (topNodes == 1) DeserializeNode(RootNode, archive);
  for (ULONGLONG left = LoadCount(archive); left > 0; --left) {
    CMMCObjectParams params;
    params.Deserialize(archive);
    const __int64 cookie = params.GetCookie();
    AtlThrowIfFailed(AddDialog(cookie, std::move(params)));
  }
  for (ULONGLONG left = LoadCount(archive); left > 0; --left) DeserializeIconFile(archive);
  // Files that were on disk, then files that were in memory already: both become files in memory.
  for (int section = 0; section < 2; ++section) {
    for (ULONGLONG left = LoadCount(archive); left > 0; --left) DeserializeCodeFile(archive);
  }
}

void CMMCObjectSet::DeserializeNode(__int64 parent, CVellum& archive) {
  struct OpenNode {
    __int64 cookie;
    ULONGLONG childrenLeft;
  };
  std::vector<OpenNode> path(1, {parent, 1});
  std::array<std::optional<ObjectIndex::iterator>, kWalkLevels> lastOfLevel;
  std::uint64_t edition = 0;  // of the tables, since when those places hold
  while (!path.empty()) {
    if (path.back().childrenLeft == 0) {
      path.pop_back();
      continue;
    }
    --path.back().childrenLeft;
    CMMCObjectParams params;
    params.Deserialize(archive);
    const __int64 cookie = params.GetCookie();
    {
      CSingleLock lock(&m_lock, TRUE);
      if (edition != m_edition) lastOfLevel = {};
      auto& last = lastOfLevel[std::min(path.size(), kWalkLevels) - 1];
      AtlThrowIfFailed(AddObject(m_tables.nodes, {path.back().cookie, cookie}, std::move(params), last));
      edition = m_edition;
    }
    path.push_back({cookie, LoadCount(archive)});
  }
}
