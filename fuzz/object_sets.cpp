// Filling, using and examining sets.
#include "object_sets.h"

#include <limits>
#include <vector>

#include "expect.h"
#include "icon_sets.h"
#include "support/archive_bytes.h"
#include "support/object_set_probe.h"

namespace ondrel::fuzz {
namespace {

constexpr __int64 kBaseTop = 0;
constexpr __int64 kBaseView = 1;
constexpr __int64 kBaseDialog = 2;
constexpr __int64 kBaseIcon = 40;
constexpr __int64 kBaseDiskFile = 50;
constexpr __int64 kBaseMemoryFile = 51;

/// Every record lies in one store, under its own keys, and the object index leads to it.
template <class Tables, class Store>
void CheckStore(const Tables& tables, const Store& store) {
  for (auto entry = store.begin(); entry != store.end(); ++entry) {
    const __int64 cookie = entry->first.second;
    const auto object = tables.objects.find(cookie);
    Expect(object != tables.objects.end() && &*object->second == &*entry, "the object index leads to each record");
    Expect(entry->second.GetCookie() == cookie, "a loaded record has the cookie that it is filed under");
  }
}

void CheckStores(const CMMCObjectSet& set) {
  const auto& tables = CMMCObjectSetProbe::Tables(set);
  CheckStore(tables, tables.nodes);
  CheckStore(tables, tables.dialogs);
  Expect(tables.objects.size() == tables.nodes.size() + tables.dialogs.size(), "the object index has nothing else");
  Expect(tables.dialogNames.size() == tables.dialogs.size(), "each dialog has one name");
  for (const auto& [name, cookie] : tables.dialogNames) {
    const auto dialog = tables.dialogs.find({0, cookie});
    Expect(dialog != tables.dialogs.end() && dialog->second.GetName() == name, "a dialog is found by its name");
  }
  Expect(tables.iconPaths.size() == tables.iconCookiePaths.size(), "each icon's path has one cookie");
  for (const auto& [cookie, path] : tables.iconCookiePaths) {
    Expect(path->second == cookie && tables.icons.contains(cookie), "an icon with a path is there");
  }
  Expect(tables.codePaths.size() == tables.codeCookiePaths.size(), "each code file's path has one cookie");
  for (const auto& [cookie, path] : tables.codeCookiePaths) {
    Expect(path->second.first == cookie, "a code file's cookie leads to its path");
  }
}

void LookAtTree(CMMCObjectSet& set) {
  std::vector<__int64> parents = {CMMCObjectSet::RootNode};
  while (!parents.empty()) {
    const __int64 parent = parents.back();
    parents.pop_back();
    __int64 former = -1;
    for (const __int64 child : set.GetChildNodes(parent)) {
      CMMCObjectParams* params = nullptr;
      Expect(child > former, "children are listed in the order of their cookies, from 0");
      Expect(set.GetParams(child, params) && params != nullptr, "a listed child has a record");
      Expect(!params->GetIdentity().IsEmpty(), "a record has an identity");
      former = child;
      parents.push_back(child);
    }
  }
}

void LookAtDialogs(CMMCObjectSet& set) {
  for (const __int64 cookie : set.GetDialogs()) {
    CMMCObjectParams* params = nullptr;
    Expect(set.GetParams(cookie, params), "a listed dialog has a record");
    Expect(set.GetDialog(params->GetName()) == cookie, "a dialog is found by its name");
  }
}

void LookAtCodeFiles(CMMCObjectSet& set) {
  for (const __int64 cookie : set.GetCodeFiles()) {
    std::vector<char> contents;
    CString path;
    const bool hasContents = set.GetCodeFileContents(cookie, contents);
    const bool hasPath = set.GetFilePath(cookie, path);
    Expect(hasContents || hasPath, "a listed code file has contents or a path");
  }
}

}  // namespace

bool StoreNoBytes(const WCHAR*, CVellum& archive, CMMCObjectSet::Transform, CMMCObjectSet::Variables) {
  archive.Write(std::vector<char>());
  return true;
}

CMMCObjectSet::Transform KeepBytes(const WCHAR*) {
  return [](std::vector<char> bytes, const CMMCObjectSet::Variables&) { return bytes; };
}

void FillBaseSet(CMMCObjectSet& set) {
  using Params = CMMCObjectParams;
  const bool isFilled =
      set.AddNode(CMMCObjectSet::RootNode, kBaseTop, Params(kBaseTop, _T("Top"), Params::eList)) == S_OK &&
      set.AddNode(kBaseTop, kBaseView, Params(kBaseView, _T("View"), Params::eHTML)) == S_OK &&
      set.AddDialog(kBaseDialog, Params(kBaseDialog, _T("Dialog"), Params::eDialog)) == S_OK &&
      CMMCObjectSetProbe::InsertIconFile(set, kBaseIcon, CMMCObjectIcon()) == S_OK &&
      CMMCObjectSetProbe::InsertCodeFile(set, _T("code.js"), kBaseDiskFile, KeepBytes(nullptr)) == S_OK &&
      CMMCObjectSetProbe::InsertCodeFile(set, kBaseMemoryFile, {'x', 'y'}) == S_OK;
  Expect(isFilled && !set.IsModified(), "an empty set takes an object of each kind and stays unmodified");
}

void UseSet(CMMCObjectSet& set) {
  LookAtSet(set);
  const auto& objects = CMMCObjectSetProbe::Tables(set).objects;
  const std::size_t former = objects.size();
  // There is no cookie for another object behind the largest one.
  const bool hasRoom = objects.empty() || objects.rbegin()->first < std::numeric_limits<__int64>::max();
  const __int64 node = set.AddNewNode(CMMCObjectSet::RootNode, _T("A node beside all others"), CMMCObjectParams::eList);
  Expect(objects.size() == former + (hasRoom ? 1 : 0), "a node is added where there is a cookie for it");
  if (hasRoom) {
    Expect(set.IsModified() && set.RemoveNode(node) == S_OK, "a new node modifies the set and can be removed");
    const __int64 dialog = set.AddNewDialog(_T("A dialog beside all others"));
    Expect(objects.size() == former + 1 && set.RemoveDialog(dialog) == S_OK, "a new dialog can be removed");
  }
  Expect(objects.size() == former, "what was added and removed is not there");
  if (set.GetChildNodes(CMMCObjectSet::RootNode).size() <= 1) ImageOf(set);
}

void LookAtSet(CMMCObjectSet& set) {
  CheckStores(set);
  LookAtTree(set);
  LookAtDialogs(set);
  LookAtCodeFiles(set);
  LookAtIcons(set);
}

std::string ImageOf(CMMCObjectSet& set, int bufferSize) {
  return ondrel::test::Stored([&set](CVellum& archive) { set.SerializeObjects(archive, FALSE, FALSE); }, bufferSize);
}

}  // namespace ondrel::fuzz
