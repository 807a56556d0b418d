#include "model.h"

#include <algorithm>

namespace ondrel::bench {
namespace {

std::u16string TextOf(const CString& text) { return std::u16string(text.View()); }

std::vector<Query> QueriesOf(const CMMCObjectParams::QueryList& queries) {
  std::vector<Query> copies;
  for (const auto& [tag, file] : queries) copies.emplace_back(TextOf(tag), file);
  return copies;
}

Record RecordOf(const CMMCObjectParams& params) {
  return {.cookie = params.GetCookie(),
          .name = TextOf(params.GetName()),
          .icon = params.GetIcon(),
          .type = params.GetNodeType(),
          .childQueries = QueriesOf(params.GetChildQueries()),
          .menuScript = params.GetMenuScript(),
          .scripts = params.GetScripts(),
          .styleSheet = params.GetStyleSheet(),
          .renderQueries = QueriesOf(params.GetRenderQueries())};
}

std::string DifferenceOfStores(const std::string& what, const Store& expected, const Store& actual) {
  const auto [left, right] = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
  if (left != expected.end()) {
    const bool isThere = right != actual.end() && right->first == left->first;
    return what + ' ' + std::to_string(left->first.second) + (isThere ? " has another record" : " is missing");
  }
  return right == actual.end() ? "" : what + ' ' + std::to_string(right->first.second) + " should not be there";
}

/// Whether the index leads to each entry of a store.
bool LeadsTo(const Model& model, const Store& store) {
  return std::all_of(store.begin(), store.end(), [&](const Store::value_type& entry) {
    const auto object = model.objects.find(entry.first.second);
    return object != model.objects.end() && &*object->second == &entry;
  });
}

}  // namespace

void Model::AddIndex() {
  for (auto entry = nodes.begin(); entry != nodes.end(); ++entry) objects.emplace(entry->first.second, entry);
  for (auto entry = dialogs.begin(); entry != dialogs.end(); ++entry) {
    objects.emplace(entry->first.second, entry);
    dialogNames.emplace(entry->second.name, entry->first.second);
  }
}

void FillModel(Model& model, CMMCObjectSet& set) {
  CMMCObjectParams* params = nullptr;
  std::vector<__int64> parents = {CMMCObjectSet::RootNode};
  while (!parents.empty()) {
    const __int64 parent = parents.back();
    parents.pop_back();
    for (const __int64 child : set.GetChildNodes(parent)) {
      set.GetParams(child, params);
      model.AddNode(parent, RecordOf(*params));
      parents.push_back(child);
    }
  }
  for (const __int64 dialog : set.GetDialogs()) {
    set.GetParams(dialog, params);
    model.AddDialog(RecordOf(*params));
  }
}

std::string Difference(const Model& expected, const Model& actual) {
  std::string difference = DifferenceOfStores("node", expected.nodes, actual.nodes);
  if (difference.empty()) difference = DifferenceOfStores("dialog", expected.dialogs, actual.dialogs);
  if (difference.empty() && expected.dialogNames != actual.dialogNames) difference = "the names of dialogs differ";
  const bool isIndexed = actual.objects.size() == actual.nodes.size() + actual.dialogs.size() &&
                         LeadsTo(actual, actual.nodes) && LeadsTo(actual, actual.dialogs);
  if (difference.empty() && !isIndexed) difference = "the index does not lead to every record";
  return difference;
}

std::string Difference(const Model& expected, CMMCObjectSet& actual) {
  Model model;
  FillModel(model, actual);
  return Difference(expected, model);
}

}  // namespace ondrel::bench
