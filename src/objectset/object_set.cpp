// The set itself: its stores, its two kinds of cookie, its records and its modified flag.

#include <ondrel/MMCObjectSet.h>

#include <limits>
#include <random>

#include "statuses.h"

using ondrel::kAlreadyExists;

const __int64 CMMCObjectSet::RootNode = -1;
const DWORD CMMCObjectSet::m_nCurrentVersion = 1;

CMMCObjectSet::CMMCObjectSet(CodeFileWriter writer) : m_codeFileWriter(writer) {}

CMMCObjectSet::~CMMCObjectSet() = default;

void CMMCObjectSet::Initialise() {
  m_tables = Tables();
  ++m_edition;
  m_cookiesChanged = false;
  SetModifiedFlag(FALSE);
}

void CMMCObjectSet::Tables::SwapObjects(Tables& other) noexcept {
  nodes.swap(other.nodes);
  dialogs.swap(other.dialogs);
  dialogNames.swap(other.dialogNames);
  objects.swap(other.objects);
  lastNode.swap(other.lastNode);
}

bool CMMCObjectSet::IsModified() const { return m_modified.load(std::memory_order_relaxed); }

void CMMCObjectSet::SetModifiedFlag(int modified) { m_modified.store(modified != 0, std::memory_order_relaxed); }

bool CMMCObjectSet::GetParams(__int64 cookie, CMMCObjectParams*& params) const {
  CSingleLock lock(&m_lock, TRUE);
  const auto object = m_tables.objects.find(cookie);
  if (object == m_tables.objects.end()) return false;
  params = &object->second->second;
  return true;
}

void CMMCObjectSet::SetParams(__int64 cookie, const CMMCObjectParams* params) {
  CSingleLock lock(&m_lock, TRUE);
  const auto object = m_tables.objects.find(cookie);
  if (object == m_tables.objects.end()) return;
  // The record alone changes: the keys, a dialog's name among them, are those it was added with until the tables are
  // rebuilt.
  object->second->second = *params;
  SetModifiedFlag(TRUE);
}

bool CMMCObjectSet::IsIndexWhole() const {
  return m_tables.objects.size() == m_tables.nodes.size() + m_tables.dialogs.size();
}

std::optional<__int64> CMMCObjectSet::NextObjectCookie() const {
  if (m_tables.objects.empty()) return 0;
  const __int64 largest = m_tables.objects.rbegin()->first;
  if (largest == std::numeric_limits<__int64>::max()) return std::nullopt;
  return largest + 1;
}

HRESULT CMMCObjectSet::AddObject(ObjectStore& store, const ObjectStore::key_type& key, CMMCObjectParams&& params,
                                 std::optional<ObjectIndex::iterator>& before) {
  // The places that are tried first make the search for the key short.
  ObjectIndex& objects = m_tables.objects;
  const std::size_t objectCount = objects.size();
  const auto object = objects.try_emplace(before ? std::next(*before) : objects.end(), key.second, store.end());
  if (objects.size() == objectCount) return kAlreadyExists;
  const std::size_t entryCount = store.size();
  try {
    object->second = store.try_emplace(before ? std::next((*before)->second) : store.end(), key);
  } catch (...) {
    objects.erase(object);
    throw;
  }
  if (store.size() == entryCount) {
    objects.erase(object);
    return kAlreadyExists;
  }
  CMMCObjectParams& stored = object->second->second;
  stored.Swap(params);
  stored.m_cookieChanged = &m_cookiesChanged;
  if (stored.m_cookie != key.second) m_cookiesChanged = true;
  before = object;
  ++m_edition;
  return S_OK;
}

void CMMCObjectSet::RemoveObject(ObjectStore& store, ObjectStore::iterator entry) {
  const auto object = m_tables.objects.find(entry->first.second);
  if (m_tables.lastNode == object) m_tables.lastNode.reset();
  if (object != m_tables.objects.end()) m_tables.objects.erase(object);
  store.erase(entry);
  ++m_edition;
}

CMMCObjectSet::ObjectStore::iterator CMMCObjectSet::FindObject(ObjectStore& store, __int64 cookie) {
  // A cookie stands in one of the two stores only, so its key is in the other one never.
  const auto object = m_tables.objects.find(cookie);
  return object == m_tables.objects.end() ? store.end() : store.find(object->second->first);
}

__int64 CMMCObjectSet::GenerateFileCookie() const {
  std::mt19937 engine(std::random_device{}());
  std::uniform_int_distribution<__int64> cookies(0, std::numeric_limits<__int64>::max());
  CSingleLock lock(&m_lock, TRUE);
  for (;;) {
    const __int64 cookie = cookies(engine);
    const bool taken = m_tables.iconCookiePaths.contains(cookie) || m_tables.codeCookiePaths.contains(cookie);
    if (cookie != 0 && !taken) return cookie;
  }
}
