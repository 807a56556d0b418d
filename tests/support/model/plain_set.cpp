#include "support/model/plain_set.h"

#include <algorithm>

#include "support/statuses.h"

namespace ondrel::test {
namespace {

std::string Key(__int64 first, __int64 second) {
  return "(" + std::to_string(first) + ", " + std::to_string(second) + ")";
}

}  // namespace

std::map<std::pair<__int64, __int64>, RecordFields> PlainSet::InTreeOrder() const {
  std::map<std::pair<__int64, __int64>, RecordFields> nodes;
  for (const auto& [cookie, node] : m_nodes) nodes[{node.parent, cookie}] = node.record;
  return nodes;
}

__int64 PlainSet::NextCookie() const {
  if (m_nodes.empty() && m_dialogs.empty()) return 0;
  if (m_nodes.empty()) return m_dialogs.rbegin()->first + 1;
  if (m_dialogs.empty()) return m_nodes.rbegin()->first + 1;
  return std::max(m_nodes.rbegin()->first, m_dialogs.rbegin()->first) + 1;
}

__int64 PlainSet::AddNewNode(__int64 parent, const CString& name, CMMCObjectParams::_eTypeNode type) {
  const __int64 cookie = NextCookie();
  m_nodes[cookie] = {parent, {.cookie = cookie, .name = name, .type = type}};
  m_modified = true;
  return cookie;
}

HRESULT PlainSet::AddNode(__int64 parent, __int64 cookie, const RecordFields& record) {
  if (IsTaken(cookie)) return kAlreadyExists;
  m_nodes[cookie] = {parent, record};
  return 0;
}

HRESULT PlainSet::RemoveNode(__int64 cookie) {
  if (!m_nodes.contains(cookie)) return kNotFound;
  if (!GetChildNodes(cookie).empty()) return kNotEmpty;
  m_nodes.erase(cookie);
  m_modified = true;
  return 0;
}

HRESULT PlainSet::MoveNodeDown(__int64 cookie) {
  if (!m_nodes.contains(cookie)) return kNotFound;
  // The siblings of any cookie, also those that are not listed.
  std::list<__int64> siblings;
  for (const auto& [other, node] : m_nodes) {
    if (node.parent == m_nodes[cookie].parent) siblings.push_back(other);
  }
  if (siblings.back() == cookie) return 0;
  const __int64 next = *std::next(std::find(siblings.begin(), siblings.end(), cookie));

  PlainSet rebuilt;
  for (const auto& [key, record] : InTreeOrder()) {
    RecordFields copy = record;
    if (key.second == cookie) copy.cookie = next;
    if (key.second == next) copy.cookie = cookie;
    __int64 parent = key.first;
    if (key.first == cookie) parent = next;
    if (key.first == next) parent = cookie;
    if (const HRESULT status = rebuilt.AddNode(parent, copy.cookie, copy); status != 0) return status;
  }
  for (const auto& [key, record] : m_dialogs) {
    if (const HRESULT status = rebuilt.AddDialog(record.cookie, record); status != 0) return status;
  }
  *this = rebuilt;
  m_modified = true;
  return 0;
}

__int64 PlainSet::AddNewDialog(const CString& name) {
  if (m_dialogNames.contains(name)) return -2;
  const __int64 cookie = NextCookie();
  m_dialogs[cookie] = {.cookie = cookie, .name = name, .type = CMMCObjectParams::eDialog};
  m_dialogNames[name] = cookie;
  m_modified = true;
  return cookie;
}

HRESULT PlainSet::AddDialog(__int64 cookie, const RecordFields& record) {
  if (IsTaken(cookie) || m_dialogNames.contains(record.name)) return kAlreadyExists;
  m_dialogs[cookie] = record;
  m_dialogNames[record.name] = record.cookie;
  return 0;
}

HRESULT PlainSet::RemoveDialog(__int64 cookie) {
  if (!m_dialogs.contains(cookie)) return kNotFound;
  m_dialogNames.erase(m_dialogs[cookie].name);
  m_dialogs.erase(cookie);
  m_modified = true;
  return 0;
}

void PlainSet::SetParams(__int64 cookie, const RecordFields& record) {
  if (m_nodes.contains(cookie)) {
    m_nodes[cookie].record = record;
  } else if (m_dialogs.contains(cookie)) {
    m_dialogs[cookie] = record;
  } else {
    return;
  }
  m_modified = true;
}

std::list<__int64> PlainSet::GetChildNodes(__int64 parent) const {
  std::list<__int64> children;
  for (const auto& [cookie, node] : m_nodes) {
    if (node.parent == parent && cookie >= 0) children.push_back(cookie);
  }
  return children;
}

std::list<__int64> PlainSet::GetDialogs() const {
  std::list<__int64> dialogs;
  for (const auto& [cookie, record] : m_dialogs) dialogs.push_back(cookie);
  return dialogs;
}

__int64 PlainSet::GetDialog(const CString& name) const {
  const auto dialog = m_dialogNames.find(name);
  return dialog == m_dialogNames.end() ? 0 : dialog->second;
}

std::string PlainSet::Describe() const {
  std::string text;
  std::map<__int64, std::string> objects;
  for (const auto& [key, record] : InTreeOrder()) {
    text += "node " + Key(key.first, key.second) + ": " + test::Describe(record) + "\n";
    objects[key.second] = "node " + Key(key.first, key.second);
  }
  for (const auto& [cookie, record] : m_dialogs) {
    text += "dialog " + Key(0, cookie) + ": " + test::Describe(record) + "\n";
    objects[cookie] = "dialog " + Key(0, cookie);
  }
  for (const auto& [name, cookie] : m_dialogNames) {
    text += "dialog name " + test::Describe(name) + ": " + std::to_string(cookie) + "\n";
  }
  for (const auto& [cookie, place] : objects) text += "object " + std::to_string(cookie) + ": " + place + "\n";
  return text;
}

}  // namespace ondrel::test
