// The console tree: listing, adding, removing and reordering nodes.

#include <ondrel/MMCObjectSet.h>

#include <algorithm>
#include <limits>

#include <ondrel/platform/prefetch.h>

#include "statuses.h"

using ondrel::kAlreadyExists;
using ondrel::kNotEmpty;
using ondrel::kNotFound;
using ondrel::platform::PrefetchBehind;

namespace {

// Records that were loaded, or added in order, lie in memory as they are visited, each with its texts and lists in some
// hundred bytes. So this asks for about one record, several nodes ahead of the one that is visited.
constexpr std::size_t kPrefetchDistance = 4096;
constexpr std::size_t kPrefetchSize = 512;

/// A cookie once those of two siblings are exchanged.
__int64 Exchanged(__int64 cookie, __int64 node, __int64 next) {
  return cookie == node ? next : cookie == next ? node : cookie;
}

}  // namespace

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

const CMMCObjectParams* CMMCObjectSet::VisitNext(TreeWalk& walk, std::size_t& children) {
  CSingleLock lock(&m_lock, TRUE);
  auto [cookie, entry, level] = walk.pending.back();
  walk.pending.pop_back();
  const bool isUpToDate = walk.edition == m_edition && IsIndexWhole();
  if (!isUpToDate) {
    const auto object = m_tables.objects.find(cookie);
    if (object == m_tables.objects.end()) return nullptr;
    entry = object->second;
    if (walk.edition == 0) walk.edition = m_edition;  // this is the first
  }

  // Behind the children of a node there are those of the next one of its level, unless that one has none.
  std::optional<TreeWalk::Place>& place = walk.places[std::min(level, kWalkLevels - 1)];
  ObjectStore& nodes = m_tables.nodes;
  const ObjectStore::key_type first(cookie, 0);
  const bool isBehindPlace = isUpToDate && place && place->cookie < cookie;
  auto child = isBehindPlace ? place->behind : nodes.end();
  if (!isBehindPlace || (child != nodes.end() && child->first < first)) child = nodes.lower_bound(first);
  const std::size_t start = walk.pending.size();
  for (; child != nodes.end() && child->first.first == cookie; ++child) {
    walk.pending.push_back({child->first.second, child, level + 1});
  }
  std::reverse(walk.pending.begin() + static_cast<std::ptrdiff_t>(start), walk.pending.end());
  place = {cookie, child};
  children = walk.pending.size() - start;
  PrefetchBehind(&*entry, kPrefetchDistance, kPrefetchSize);
  return &entry->second;
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
  return AddObject(m_tables.nodes, {parent, cookie}, std::move(params), m_tables.lastNode);
}

HRESULT CMMCObjectSet::RemoveNode(__int64 cookie) {
  CSingleLock lock(&m_lock, TRUE);
  const auto node = FindObject(m_tables.nodes, cookie);
  if (node == m_tables.nodes.end()) return kNotFound;
  if (!GetChildNodes(cookie).empty()) return kNotEmpty;
  RemoveObject(m_tables.nodes, node);
  SetModifiedFlag(TRUE);
  return S_OK;
}

HRESULT CMMCObjectSet::MoveNodeDown(__int64 cookie) {
  CSingleLock lock(&m_lock, TRUE);
  const auto node = FindObject(m_tables.nodes, cookie);
  if (node == m_tables.nodes.end()) return kNotFound;
  const auto next = std::next(node);
  if (next == m_tables.nodes.end() || next->first.first != node->first.first) return S_OK;
  if (RecordsFitKeys()) {
    ExchangeSiblings(node, next);
  } else if (const HRESULT status = AddAllExchanged(cookie, next->first.second); FAILED(status)) {
    return status;
  }
  SetModifiedFlag(TRUE);
  return S_OK;
}

bool CMMCObjectSet::RecordsFitKeys() const {
  const auto& dialogs = m_tables.dialogs;
  const auto& names = m_tables.dialogNames;
  if (m_cookiesChanged || names.size() != dialogs.size() || !IsIndexWhole()) return false;
  // Names change without word of it, so they are compared.
  return std::all_of(dialogs.begin(), dialogs.end(), [&](const auto& dialog) {
    const auto name = names.find(dialog.second.m_name);
    return name != names.end() && name->second == dialog.first.second;
  });
}

void CMMCObjectSet::ExchangeSiblings(ObjectStore::iterator node, ObjectStore::iterator next) {
  const __int64 cookie = node->first.second;
  const __int64 nextCookie = next->first.second;
  // Every entry leaves the tree before any comes back: the new keys are those of other entries.
  ObjectStore moved;
  const auto move = [&](ObjectStore::iterator former) {
    ObjectStore::node_type entry = m_tables.nodes.extract(former);
    auto& [parent, own] = entry.key();
    parent = Exchanged(parent, cookie, nextCookie);
    own = Exchanged(own, cookie, nextCookie);
    entry.mapped().m_cookie = own;
    const auto place = moved.insert(std::move(entry)).position;
    m_tables.objects.find(place->first.second)->second = place;
  };
  // The two first: one of them may be its own parent, or that of the other.
  move(node);
  move(next);
  for (const __int64 parent : {cookie, nextCookie}) {
    auto child = m_tables.nodes.lower_bound({parent, std::numeric_limits<__int64>::min()});
    while (child != m_tables.nodes.end() && child->first.first == parent) move(child++);
  }
  m_tables.nodes.merge(moved);
  ++m_edition;
}

HRESULT CMMCObjectSet::AddAllExchanged(__int64 cookie, __int64 nextCookie) {
  /// A record whose cookie may be changed.
  class CMyMMCObjectParams : public CMMCObjectParams {
   public:
    explicit CMyMMCObjectParams(const CMMCObjectParams& params) : CMMCObjectParams(params) {}
    ~CMyMMCObjectParams() override = default;
    void SetCookie(__int64 newCookie) { m_cookie = newCookie; }
  };

  // Each node under its record's own cookie and each dialog under its current name: hosts rely on a move to make
  // changed records take effect. Where these do not fit together, the old tables return.
  Tables former;
  former.SwapObjects(m_tables);
  HRESULT status = S_OK;
  try {
    for (auto old = former.nodes.begin(); SUCCEEDED(status) && old != former.nodes.end(); ++old) {
      const auto& [key, params] = *old;
      const bool isExchanged = key.second == cookie || key.second == nextCookie;
      CMyMMCObjectParams copy(params);
      copy.SetCookie(isExchanged ? Exchanged(key.second, cookie, nextCookie) : params.GetCookie());
      status = AddNode(Exchanged(key.first, cookie, nextCookie), copy.GetCookie(), copy);
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
  m_cookiesChanged = false;
  return S_OK;
}
