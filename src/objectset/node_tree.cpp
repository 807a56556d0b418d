// The console tree: listing, adding, removing and reordering nodes.

#include <ondrel/MMCObjectSet.h>

#include "statuses.h"

using ondrel::kAlreadyExists;
using ondrel::kNotEmpty;
using ondrel::kNotFound;

std::list<__int64> CMMCObjectSet::GetChildNodes(__int64 parent) {
  CSingleLock lock(&m_lock, TRUE);
  std::list<__int64> children;
  // From cookie 0 on: a child with a negative cookie is not listed, and so not saved either. Definitions rely on it.
  for (auto node = m_tables.nodes.lower_bound({parent, 0}); node != m_tables.nodes.end() && node->first.first == parent;
       ++node) {
    children.push_back(node->first.second);
  }
  return children;
}

__int64 CMMCObjectSet::AddNewNode(__int64 parent, CString name, CMMCObjectParams::_eTypeNode type) {
  CSingleLock lock(&m_lock, TRUE);
  const std::optional<__int64> cookie = NextObjectCookie();
  if (!cookie) return kNoCookie;
  if (FAILED(AddNode(parent, *cookie, CMMCObjectParams(*cookie, std::move(name), type)))) return kNoCookie;
  SetModifiedFlag(TRUE);
  return *cookie;
}

HRESULT CMMCObjectSet::AddNode(__int64 parent, __int64 cookie, CMMCObjectParams params) {
  CSingleLock lock(&m_lock, TRUE);
  return AddObject(m_tables.nodes, {parent, cookie}, std::move(params));
}

HRESULT CMMCObjectSet::RemoveNode(__int64 cookie) {
  CSingleLock lock(&m_lock, TRUE);
  const auto node = FindObject(m_tables.nodes, cookie);
  if (node == m_tables.nodes.end()) return kNotFound;
  if (!GetChildNodes(cookie).empty()) return kNotEmpty;
  m_tables.nodes.erase(node);
  m_tables.objects.erase(cookie);
  SetModifiedFlag(TRUE);
  return S_OK;
}

HRESULT CMMCObjectSet::MoveNodeDown(__int64 cookie) {
  /// A record whose cookie may be changed.
  class CMyMMCObjectParams : public CMMCObjectParams {
   public:
    explicit CMyMMCObjectParams(const CMMCObjectParams& params) : CMMCObjectParams(params) {}
    ~CMyMMCObjectParams() override = default;
    void SetCookie(__int64 newCookie) { m_cookie = newCookie; }
  };

  CSingleLock lock(&m_lock, TRUE);
  const auto node = FindObject(m_tables.nodes, cookie);
  if (node == m_tables.nodes.end()) return kNotFound;
  const __int64 parent = node->first.first;
  const auto next = std::next(node);
  if (next == m_tables.nodes.end() || next->first.first != parent) return S_OK;
  const __int64 nextCookie = next->first.second;
  const auto exchanged = [&](__int64 key, __int64 otherwise) {
    return key == cookie ? nextCookie : key == nextCookie ? cookie : otherwise;
  };

  // Everything is added anew, each node under its record's own cookie and each dialog under its current name, so that
  // records that were changed since they were added take effect; where they do not fit together, the old tables return.
  Tables former;
  former.SwapObjects(m_tables);
  HRESULT status = S_OK;
  try {
    for (auto old = former.nodes.begin(); SUCCEEDED(status) && old != former.nodes.end(); ++old) {
      const auto& [key, params] = *old;
      CMyMMCObjectParams copy(params);
      copy.SetCookie(exchanged(key.second, params.GetCookie()));
      status = AddNode(exchanged(key.first, key.first), copy.GetCookie(), copy);
    }
    for (auto old = former.dialogs.begin(); SUCCEEDED(status) && old != former.dialogs.end(); ++old) {
      status = AddDialog(old->second.GetCookie(), old->second);
    }
  } catch (...) {
    former.SwapObjects(m_tables);
    throw;
  }
  if (FAILED(status)) {
    former.SwapObjects(m_tables);
    return status;
  }
  SetModifiedFlag(TRUE);
  return S_OK;
}
