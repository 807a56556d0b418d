// Nodes and dialogs, and what a plain set holds, as text.
#include "support/model/plain_set.h"

#include <algorithm>
#include <limits>

#include "support/model/digest.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

constexpr __int64 kNoCookie = -2;

std::string Key(__int64 first, __int64 second) {
  return "(" + std::to_string(first) + ", " + std::to_string(second) + ")";
}

}  // namespace

std::map<std::pair<__int64, __int64>, PlainRecord> PlainSet::InTreeOrder() const {
  std::map<std::pair<__int64, __int64>, PlainRecord> nodes;
  for (const auto& [cookie, node] : m_nodes) nodes[{node.parent, cookie}] = node.record;
  return nodes;
}

std::optional<__int64> PlainSet::NextCookie() const {
  if (m_nodes.empty() && m_dialogs.empty()) return 0;
  __int64 largest = std::numeric_limits<__int64>::min();
  for (const auto& [cookie, node] : m_nodes) largest = std::max(largest, cookie);
  for (const auto& [cookie, record] : m_dialogs) largest = std::max(largest, cookie);
  if (largest == std::numeric_limits<__int64>::max()) return std::nullopt;
  return largest + 1;
}

__int64 PlainSet::AddNewNode(__int64 parent, const PlainText& name, int type) {
  const std::optional<__int64> cookie = NextCookie();
  if (!cookie) return kNoCookie;
  m_nodes[*cookie] = {parent, {.cookie = *cookie, .name = name, .type = type}};
  m_modified = true;
  return *cookie;
}

HRESULT PlainSet::AddNode(__int64 parent, __int64 cookie, const PlainRecord& record) {
  if (IsTaken(cookie)) return kAlreadyExists;
  m_nodes[cookie] = {parent, record};
  return S_OK;
}

HRESULT PlainSet::RemoveNode(__int64 cookie) {
  if (!m_nodes.contains(cookie)) return kNotFound;
  if (!GetChildNodes(cookie).empty()) return kNotEmpty;
  m_nodes.erase(cookie);
  m_modified = true;
  return S_OK;
}

HRESULT PlainSet::MoveNodeDown(__int64 cookie) {
  if (!m_nodes.contains(cookie)) return kNotFound;
  // The siblings of any cookie, also those that are not listed.
  std::list<__int64> siblings;
  for (const auto& [other, node] : m_nodes) {
    if (node.parent == m_nodes[cookie].parent) siblings.push_back(other);
  }
  if (siblings.back() == cookie) return S_OK;
  const __int64 next = *std::next(std::find(siblings.begin(), siblings.end(), cookie));

  PlainSet rebuilt;
  for (const auto& [key, record] : InTreeOrder()) {
    PlainRecord copy = record;
    if (key.second == cookie) copy.cookie = next;
    if (key.second == next) copy.cookie = cookie;
    __int64 parent = key.first;
    if (key.first == cookie) parent = next;
    if (key.first == next) parent = cookie;
    if (const HRESULT status = rebuilt.AddNode(parent, copy.cookie, copy); status != S_OK) return status;
  }
  for (const auto& [key, record] : m_dialogs) {
    if (const HRESULT status = rebuilt.AddDialog(record.cookie, record); status != S_OK) return status;
  }
  m_nodes = rebuilt.m_nodes;
  m_dialogs = rebuilt.m_dialogs;
  m_dialogNames = rebuilt.m_dialogNames;
  m_modified = true;
  return S_OK;
}

__int64 PlainSet::AddNewDialog(const PlainText& name) {
  const std::optional<__int64> cookie = NextCookie();
  if (!cookie || m_dialogNames.contains(name)) return kNoCookie;
  m_dialogs[*cookie] = {.cookie = *cookie, .name = name, .type = kPlainDialog};
  m_dialogNames[name] = *cookie;
  m_modified = true;
  return *cookie;
}

HRESULT PlainSet::AddDialog(__int64 cookie, const PlainRecord& record) {
  if (IsTaken(cookie) || m_dialogNames.contains(record.name)) return kAlreadyExists;
  m_dialogs[cookie] = record;
  m_dialogNames[record.name] = record.cookie;
  return S_OK;
}

HRESULT PlainSet::RemoveDialog(__int64 cookie) {
  if (!m_dialogs.contains(cookie)) return kNotFound;
  m_dialogNames.erase(m_dialogs[cookie].name);
  m_dialogs.erase(cookie);
  m_modified = true;
  return S_OK;
}

PlainRecord* PlainSet::GetParams(__int64 cookie) {
  if (m_nodes.contains(cookie)) return &m_nodes[cookie].record;
  if (m_dialogs.contains(cookie)) return &m_dialogs[cookie];
  return nullptr;
}

void PlainSet::SetParams(__int64 cookie, const PlainRecord& record) {
  PlainRecord* const kept = GetParams(cookie);
  if (kept == nullptr) return;
  *kept = record;
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

__int64 PlainSet::GetDialog(const PlainText& name) const {
  const auto dialog = m_dialogNames.find(name);
  return dialog == m_dialogNames.end() ? 0 : dialog->second;
}

std::list<__int64> PlainSet::GetObjects() const {
  std::list<__int64> objects = GetDialogs();
  for (const auto& [cookie, node] : m_nodes) objects.push_back(cookie);
  return objects;
}

void PlainSet::Initialise() {
  std::map<__int64, int> images = std::move(m_images);
  *this = PlainSet();
  m_images = std::move(images);
}

std::string PlainSet::DescribeObjects() const {
  std::string text;
  std::map<__int64, std::string> objects;
  for (const auto& [key, record] : InTreeOrder()) {
    text += "node " + Key(key.first, key.second) + ": " + Describe(record) + "\n";
    objects[key.second] = "node " + Key(key.first, key.second);
  }
  for (const auto& [cookie, record] : m_dialogs) {
    text += "dialog " + Key(0, cookie) + ": " + Describe(record) + "\n";
    objects[cookie] = "dialog " + Key(0, cookie);
  }
  for (const auto& [name, cookie] : m_dialogNames) {
    text += "dialog name " + Describe(name) + ": " + std::to_string(cookie) + "\n";
  }
  for (const auto& [cookie, place] : objects) text += "object " + std::to_string(cookie) + ": " + place + "\n";
  return text;
}

std::string PlainSet::Observed() const {
  const auto told = [&](__int64 cookie) {
    const PlainText* const path = GetFilePath(cookie);
    return path == nullptr ? "no path" : "path " + Describe(*path);
  };
  std::string text = m_modified ? "modified\n" : "unmodified\n";
  text += DescribeObjects();
  for (const auto& [cookie, icon] : m_icons) {
    const int* const image = GetIconFileImage(cookie);
    text += "icon " + std::to_string(cookie) + ": " + told(cookie) +
            (image != nullptr ? " image " + std::to_string(*image) : " no image") +
            (icon.hasHandles ? " with handles" : " without handles") + " " + Digest(icon.images.Record()) + "\n";
  }
  for (const __int64 cookie : GetCodeFiles()) {
    const std::string* const contents = GetCodeFileContents(cookie);
    text += "code file " + std::to_string(cookie) + ": " + told(cookie) +
            (contents != nullptr ? " contents " + Digest(*contents) : "") + "\n";
  }
  for (const auto& [path, cookie] : m_iconPaths) {
    text += "icon path " + Describe(path) + ": " + std::to_string(cookie) + "\n";
  }
  for (const auto& [path, file] : m_codePaths) {
    text += "code path " + Describe(path) + ": " + std::to_string(file.cookie) +
            (file.transform.kind == PlainTransform::Kind::none ? " without a transform\n" : " with a transform\n");
  }
  return text;
}

}  // namespace ondrel::test
