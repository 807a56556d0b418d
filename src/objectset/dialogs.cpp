// The dialogs: kept outside the tree, named by cookie and by a unique name.

#include <ondrel/MMCObjectSet.h>

#include "statuses.h"

using ondrel::kAlreadyExists;
using ondrel::kNotFound;

std::list<__int64> CMMCObjectSet::GetDialogs() {
  CSingleLock lock(&m_lock, TRUE);
  std::list<__int64> cookies;
  for (const auto& [key, params] : m_tables.dialogs) cookies.push_back(key.second);
  return cookies;
}

__int64 CMMCObjectSet::GetDialog(CString name) const {
  CSingleLock lock(&m_lock, TRUE);
  const auto dialog = m_tables.dialogNames.find(name);
  return dialog == m_tables.dialogNames.end() ? 0 : dialog->second;
}

__int64 CMMCObjectSet::AddNewDialog(CString name) {
  CSingleLock lock(&m_lock, TRUE);
  const std::optional<__int64> cookie = NextObjectCookie();
  if (!cookie) return kNoCookie;
  if (FAILED(AddDialog(*cookie, CMMCObjectParams(*cookie, std::move(name), CMMCObjectParams::eDialog))))
    return kNoCookie;
  SetModifiedFlag(TRUE);
  return *cookie;
}

HRESULT CMMCObjectSet::AddDialog(__int64 cookie, CMMCObjectParams params) {
  CSingleLock lock(&m_lock, TRUE);
  const auto [name, added] = m_tables.dialogNames.emplace(params.GetName(), params.GetCookie());
  if (!added) return kAlreadyExists;
  HRESULT status = kAlreadyExists;
  try {
    std::optional<ObjectIndex::iterator> before;  // dialogs mostly come at the end
    status = AddObject(m_tables.dialogs, {0, cookie}, std::move(params), before);
  } catch (...) {
    m_tables.dialogNames.erase(name);
    throw;
  }
  if (FAILED(status)) m_tables.dialogNames.erase(name);
  return status;
}

HRESULT CMMCObjectSet::RemoveDialog(__int64 cookie) {
  CSingleLock lock(&m_lock, TRUE);
  const auto dialog = FindObject(m_tables.dialogs, cookie);
  if (dialog == m_tables.dialogs.end()) return kNotFound;
  // The current name: a dialog renamed by SetParams leaves its old name in the table.
  m_tables.dialogNames.erase(dialog->second.GetName());
  RemoveObject(m_tables.dialogs, dialog);
  SetModifiedFlag(TRUE);
  return S_OK;
}
