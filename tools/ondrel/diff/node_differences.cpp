// The comparison of two console trees.
#include <algorithm>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

#include "diff/differences.h"
#include "diff/longest_rise.h"
#include "diff/record_changes.h"
#include "node_walk.h"
#include "printable.h"

namespace ondrel::command {
namespace {

constexpr auto kNoNode = static_cast<std::size_t>(-1);

struct TreeNode {
  const CMMCObjectParams* params = nullptr;
  std::size_t parent = kNoNode;
  std::size_t place = 0;        ///< Among its siblings, from 0.
  std::size_t other = kNoNode;  ///< The node of the other tree that it belongs to.
};

/// A tree's nodes, parents before their children and siblings in their order.
class ListedTree : private NodeVisitor {
 public:
  explicit ListedTree(CMMCObjectSet& set) { WalkNodes(set, *this); }

  std::vector<TreeNode> nodes;

  /// "Disk Console/Volumes"; of a deep node the last names, so that no line grows with the depth.
  std::string PathText(std::size_t node) const {
    constexpr int kMostNames = 8;
    std::string text;
    for (int names = 0; node != kNoNode; node = nodes[node].parent) {
      if (++names > kMostNames) return ".../" + text;
      std::string name = Shortened(Printable(nodes[node].params->GetName()));
      text = text.empty() ? std::move(name) : name + '/' + text;
    }
    return text;
  }
  std::string ParentText(std::size_t node) const {
    const std::size_t parent = nodes[node].parent;
    return parent == kNoNode ? "the top" : '"' + PathText(parent) + '"';
  }

 private:
  void EnterNode(const CMMCObjectParams& params, std::size_t, bool) override {
    const std::size_t parent = m_open.empty() ? kNoNode : m_open.back();
    m_open.push_back(nodes.size());
    m_places.back()++;
    nodes.push_back({&params, parent, m_places.back() - 1, kNoNode});
    m_places.push_back(0);
  }
  void LeaveNode(bool) override {
    m_open.pop_back();
    m_places.pop_back();
  }

  std::vector<std::size_t> m_open;
  std::vector<std::size_t> m_places = {0};  // for each level, how many siblings there were so far
};

class TreeComparison {
 public:
  TreeComparison(CMMCObjectSet& older, CMMCObjectSet& newer) : m_older(older), m_newer(newer) {
    JoinByCookie(true);
    JoinByPath();
    JoinByCookie(false);
    FindMovedSiblings();
  }

  void Tell(Differences& differences) const {
    for (std::size_t node = 0; node < m_older.nodes.size(); ++node) TellOlder(node, differences);
    for (std::size_t node = 0; node < m_newer.nodes.size(); ++node) {
      if (m_newer.nodes[node].other != kNoNode) continue;
      differences.push_back({Difference::Change::added, SubjectAt(m_newer, node), m_newer.PathText(node), ""});
    }
  }

 private:
  static Subject SubjectAt(const ListedTree& tree, std::size_t node) {
    return {Subject::Kind::node, tree.nodes[node].params->GetCookie()};
  }

  void Join(std::size_t older, std::size_t newer) {
    m_older.nodes[older].other = newer;
    m_newer.nodes[newer].other = older;
  }

  void JoinByCookie(bool byNameToo) {
    std::unordered_map<__int64, std::size_t> newer;
    for (std::size_t node = 0; node < m_newer.nodes.size(); ++node) {
      if (m_newer.nodes[node].other == kNoNode) newer.emplace(m_newer.nodes[node].params->GetCookie(), node);
    }
    for (std::size_t node = 0; node < m_older.nodes.size(); ++node) {
      const TreeNode& older = m_older.nodes[node];
      if (older.other != kNoNode) continue;
      const auto found = newer.find(older.params->GetCookie());
      if (found == newer.end()) continue;
      if (byNameToo && m_newer.nodes[found->second].params->GetName() != older.params->GetName()) continue;
      Join(node, found->second);
    }
  }

  /// Paths are told apart by numbers: each is its parent's path and a name.
  using PathKey = std::pair<std::size_t, CString>;
  /// Texts convert to pointers, which the order of a pair would compare.
  struct ComesBefore {
    bool operator()(const PathKey& left, const PathKey& right) const {
      return left.first != right.first ? left.first < right.first : left.second.Compare(right.second) < 0;
    }
  };
  using PathNumbers = std::map<PathKey, std::size_t, ComesBefore>;
  static std::vector<std::size_t> NumberPaths(const ListedTree& tree, PathNumbers& numbers) {
    std::vector<std::size_t> paths;
    paths.reserve(tree.nodes.size());
    for (const TreeNode& node : tree.nodes) {
      const std::size_t parent = node.parent == kNoNode ? kNoNode : paths[node.parent];
      paths.push_back(numbers.try_emplace({parent, node.params->GetName()}, numbers.size()).first->second);
    }
    return paths;
  }

  /// Of several nodes of one path the first belongs to the first, and so on.
  void JoinByPath() {
    PathNumbers numbers;
    const std::vector<std::size_t> olderPaths = NumberPaths(m_older, numbers);
    const std::vector<std::size_t> newerPaths = NumberPaths(m_newer, numbers);
    std::vector<std::vector<std::size_t>> newer(numbers.size());  // the nodes of each path, the first one last
    for (std::size_t node = m_newer.nodes.size(); node-- > 0;) {
      if (m_newer.nodes[node].other == kNoNode) newer[newerPaths[node]].push_back(node);
    }
    for (std::size_t node = 0; node < m_older.nodes.size(); ++node) {
      std::vector<std::size_t>& alike = newer[olderPaths[node]];
      if (m_older.nodes[node].other != kNoNode || alike.empty()) continue;
      Join(node, alike.back());
      alike.pop_back();
    }
  }

  /// Whether a node that both trees have lies below the same parent in both.
  bool KeepsParent(std::size_t older) const {
    const std::size_t parent = m_older.nodes[older].parent;
    const std::size_t newerParent = m_newer.nodes[m_older.nodes[older].other].parent;
    return parent == kNoNode ? newerParent == kNoNode : m_older.nodes[parent].other == newerParent;
  }

  void FindMovedSiblings() {
    // Siblings come one after the other here, in the order of the older tree, as they do in m_older for each parent.
    std::map<std::size_t, std::vector<std::size_t>> families;
    for (std::size_t node = 0; node < m_older.nodes.size(); ++node) {
      if (m_older.nodes[node].other != kNoNode && KeepsParent(node))
        families[m_older.nodes[node].parent].push_back(node);
    }
    m_changedPlace.resize(m_older.nodes.size());
    for (const auto& [parent, siblings] : families) {
      std::vector<std::size_t> places;
      places.reserve(siblings.size());
      for (const std::size_t node : siblings) places.push_back(m_newer.nodes[m_older.nodes[node].other].place);
      const std::vector<bool> stays = LongestRise(places);
      for (std::size_t index = 0; index < siblings.size(); ++index) m_changedPlace[siblings[index]] = !stays[index];
    }
  }

  void TellOlder(std::size_t node, Differences& differences) const {
    const TreeNode& older = m_older.nodes[node];
    const auto tell = [&](Difference::Change change, std::string detail) {
      differences.push_back({change, SubjectAt(m_older, node), m_older.PathText(node), std::move(detail)});
    };
    if (older.other == kNoNode) {
      tell(Difference::Change::removed, "");
      return;
    }
    const TreeNode& newer = m_newer.nodes[older.other];
    if (!KeepsParent(node)) {
      tell(Difference::Change::moved, "from " + m_older.ParentText(node) + " to " + m_newer.ParentText(older.other));
    } else if (m_changedPlace[node]) {
      tell(Difference::Change::moved, "from place " + std::to_string(older.place + 1) + " to place " +
                                          std::to_string(newer.place + 1) + " in " + m_newer.ParentText(older.other));
    }
    if (std::string changes = RecordChanges(*older.params, *newer.params); !changes.empty()) {
      tell(Difference::Change::changed, std::move(changes));
    }
  }

  ListedTree m_older;
  ListedTree m_newer;
  std::vector<bool> m_changedPlace;  // of the older tree's nodes: it has moved among its siblings
};

}  // namespace

void FindNodeDifferences(Definition& older, Definition& newer, Differences& differences) {
  TreeComparison(older.set, newer.set).Tell(differences);
}

void FindDialogDifferences(Definition& older, Definition& newer, Differences& differences) {
  struct ListedDialog {
    const CMMCObjectParams* params;
    const CMMCObjectParams* other;
  };
  const auto list = [](CMMCObjectSet& set) {
    std::vector<ListedDialog> dialogs;
    for (const __int64 cookie : set.GetDialogs()) {
      CMMCObjectParams* params = nullptr;
      if (set.GetParams(cookie, params)) dialogs.push_back({params, nullptr});
    }
    return dialogs;
  };
  std::vector<ListedDialog> olderDialogs = list(older.set);
  std::vector<ListedDialog> newerDialogs = list(newer.set);
  const auto join = [&](auto keyOf) {
    std::map<decltype(keyOf(*olderDialogs.front().params)), ListedDialog*> byKey;
    for (ListedDialog& dialog : newerDialogs) {
      if (dialog.other == nullptr) byKey.emplace(keyOf(*dialog.params), &dialog);
    }
    for (ListedDialog& dialog : olderDialogs) {
      if (dialog.other != nullptr) continue;
      const auto found = byKey.find(keyOf(*dialog.params));
      if (found == byKey.end()) continue;
      dialog.other = found->second->params;
      found->second->other = dialog.params;
    }
  };
  join([](const CMMCObjectParams& params) { return params.GetName(); });
  join([](const CMMCObjectParams& params) { return params.GetCookie(); });

  const auto tell = [&](Difference::Change change, const CMMCObjectParams& params, std::string detail) {
    differences.push_back({change,
                           {Subject::Kind::dialog, params.GetCookie()},
                           Shortened(Printable(params.GetName())),
                           std::move(detail)});
  };
  for (const ListedDialog& dialog : olderDialogs) {
    if (dialog.other == nullptr) {
      tell(Difference::Change::removed, *dialog.params, "");
    } else if (std::string changes = RecordChanges(*dialog.params, *dialog.other); !changes.empty()) {
      tell(Difference::Change::changed, *dialog.params, std::move(changes));
    }
  }
  for (const ListedDialog& dialog : newerDialogs) {
    if (dialog.other == nullptr) tell(Difference::Change::added, *dialog.params, "");
  }
}

}  // namespace ondrel::command
