// A definition as a peer's user would keep it: plain records in the very ordered maps, and under the very index, that
// the set keeps.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/MMCObjectSet.h>

namespace ondrel::bench {

using Query = std::pair<std::u16string, __int64>;  ///< A tag, and the cookie of its query file.

struct Record {
  __int64 cookie = 0;
  std::u16string name;
  __int64 icon = 0;
  std::int32_t type = 0;
  std::vector<Query> childQueries;
  __int64 menuScript = 0;
  std::vector<__int64> scripts;
  __int64 styleSheet = 0;
  std::vector<Query> renderQueries;

  bool operator==(const Record&) const = default;
};

using Key = std::pair<__int64, __int64>;  ///< The cookies of the parent and of the node itself.
using Store = std::map<Key, Record>;

/// The index leads into the stores, so a model stays where it was made.
struct Model {
  Model() = default;
  Model(const Model&) = delete;
  Model& operator=(const Model&) = delete;

  Store nodes;
  Store dialogs;
  std::map<std::u16string, __int64> dialogNames;
  std::map<__int64, Store::iterator> objects;

  void AddNode(__int64 parent, Record record) {
    const auto [entry, added] = nodes.emplace(Key(parent, record.cookie), std::move(record));
    if (added) objects.emplace(entry->first.second, entry);
  }
  void AddDialog(Record record) {
    dialogNames.emplace(record.name, record.cookie);
    const auto [entry, added] = dialogs.emplace(Key(0, record.cookie), std::move(record));
    if (added) objects.emplace(entry->first.second, entry);
  }
  /// Fills the index, and the names, for stores that were filled as a whole.
  void AddIndex();
};

/// Fills a model with what a set holds.
void FillModel(Model& model, CMMCObjectSet& set);

/// What the first difference between two models is, the index included; empty when there is none.
std::string Difference(const Model& expected, const Model& actual);
/// The same for a set: as FillModel sees it.
std::string Difference(const Model& expected, CMMCObjectSet& actual);

}  // namespace ondrel::bench
