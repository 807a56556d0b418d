// The code files: those on disk, with their transforms, and those in memory, with their contents.

#include <ondrel/MMCObjectSet.h>

#include <algorithm>

#include "statuses.h"

using ondrel::kAlreadyExists;

namespace {

/// The whole file, as it is.
std::vector<char> ReadWholeFile(const CString& path) {
  constexpr UINT kBlock = 1U << 30;  // a read takes a 32-bit count

  CFile file(path, CFile::modeRead | CFile::shareDenyWrite);
  const ULONGLONG length = file.GetLength();
  std::vector<char> bytes(static_cast<std::size_t>(length));
  for (std::size_t done = 0; done < bytes.size();) {
    const UINT block = static_cast<UINT>(std::min<std::size_t>(bytes.size() - done, kBlock));
    const UINT read = file.Read(bytes.data() + done, block);
    // The file was cut while it was read; what is missing must not go into an image as zeros.
    if (read == 0) AfxThrowFileException(CFileException::endOfFile, -1, path);
    done += read;
  }
  return bytes;
}

}  // namespace

HRESULT CMMCObjectSet::AddCodeFile(CString path, Transform transform, __int64& cookie) {
  CSingleLock lock(&m_lock, TRUE);
  cookie = 0;
  const __int64 newCookie = GenerateFileCookie();
  const HRESULT status = InsertCodeFile(std::move(path), newCookie, std::move(transform));
  if (FAILED(status)) return status;
  cookie = newCookie;
  SetModifiedFlag(TRUE);
  return S_OK;
}

HRESULT CMMCObjectSet::InsertCodeFile(CString path, __int64 cookie, Transform transform) {
  CodePathTable& paths = m_tables.codePaths;
  const auto place = paths.lower_bound(path);
  const bool isTaken = place != paths.end() && place->first == path;
  if (isTaken || m_tables.codeCookiePaths.contains(cookie)) return kAlreadyExists;
  const auto entry = paths.emplace_hint(place, std::move(path), std::pair(cookie, std::move(transform)));
  try {
    m_tables.codeCookiePaths.emplace(cookie, entry);
  } catch (...) {
    paths.erase(entry);
    throw;
  }
  return S_OK;
}

HRESULT CMMCObjectSet::InsertCodeFile(__int64 cookie, std::vector<char>&& contents) {
  CSingleLock lock(&m_lock, TRUE);
  return m_tables.codeContents.try_emplace(cookie, std::move(contents)).second ? S_OK : kAlreadyExists;
}

std::list<__int64> CMMCObjectSet::GetCodeFiles() {
  CSingleLock lock(&m_lock, TRUE);
  std::list<__int64> cookies;
  for (const auto& [path, file] : m_tables.codePaths) cookies.push_back(file.first);
  for (const auto& [cookie, contents] : m_tables.codeContents) cookies.push_back(cookie);
  return cookies;
}

bool CMMCObjectSet::GetCodeFileContents(__int64 cookie, std::vector<char>& contents) const {
  CSingleLock lock(&m_lock, TRUE);
  const auto file = m_tables.codeContents.find(cookie);
  if (file == m_tables.codeContents.end()) return false;
  contents = file->second;
  return true;
}

bool CMMCObjectSet::GetFilePath(__int64 cookie, CString& path) const {
  CSingleLock lock(&m_lock, TRUE);
  if (const auto icon = m_tables.iconCookiePaths.find(cookie); icon != m_tables.iconCookiePaths.end()) {
    path = icon->second->first;
    return true;
  }
  if (const auto code = m_tables.codeCookiePaths.find(cookie); code != m_tables.codeCookiePaths.end()) {
    path = code->second->first;
    return true;
  }
  return false;
}

void CMMCObjectSet::SerializeCodeFile(__int64 cookie, CVellum& archive, Transform transform,
                                      Variables variables) const {
  StoreCodeFile(cookie, archive, transform, variables);
}

void CMMCObjectSet::StoreCodeFile(__int64 cookie, CVellum& archive, const Transform& transform,
                                  const Variables& variables) const {
  archive << cookie;
  CString path;
  if (!GetFilePath(cookie, path)) AfxThrowArchiveException(CArchiveException::genericException);
  if (m_codeFileWriter(path, archive, transform, variables)) return;
  archive.Write(transform(ReadWholeFile(path), variables));
}

void CMMCObjectSet::DeserializeCodeFile(CVellum& archive) {
  __int64 cookie = 0;
  std::vector<char> contents;
  archive >> cookie;
  archive.Read(contents);
  AtlThrowIfFailed(InsertCodeFile(cookie, std::move(contents)));
}
