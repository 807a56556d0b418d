// The walk's explicit stack: for each level, the siblings that are still to come.
#include "node_walk.h"

#include <list>
#include <utility>
#include <vector>

namespace ondrel::command {
namespace {

class NodeCounter : public NodeVisitor {
 public:
  void EnterNode(const CMMCObjectParams&, std::size_t, bool) override { ++m_count; }
  void LeaveNode(bool) override {}
  std::size_t Count() const { return m_count; }

 private:
  std::size_t m_count = 0;
};

class ParentFinder : public NodeVisitor {
 public:
  explicit ParentFinder(__int64 node) : m_node(node) {}

  void EnterNode(const CMMCObjectParams& node, std::size_t, bool) override {
    if (node.GetCookie() == m_node) m_parent = m_open.back();
    m_open.push_back(node.GetCookie());
  }
  void LeaveNode(bool) override { m_open.pop_back(); }
  std::optional<__int64> Parent() const { return m_parent; }

 private:
  const __int64 m_node;
  std::vector<__int64> m_open{CMMCObjectSet::RootNode};  ///< From the root to the node that was entered last.
  std::optional<__int64> m_parent;
};

void Walk(CMMCObjectSet& set, std::list<__int64> nodes, NodeVisitor& visitor) {
  std::vector<std::list<__int64>> open;  // the front of each level but the last has been entered
  open.push_back(std::move(nodes));
  while (true) {
    std::list<__int64>& siblings = open.back();
    if (siblings.empty()) {
      open.pop_back();
      if (open.empty()) return;
      open.back().pop_front();
      visitor.LeaveNode(open.back().empty());
      continue;
    }
    CMMCObjectParams* node = nullptr;
    if (!set.GetParams(siblings.front(), node)) {
      siblings.pop_front();
      continue;
    }
    visitor.EnterNode(*node, open.size() - 1, siblings.size() == 1);
    open.push_back(set.GetChildNodes(siblings.front()));
  }
}

}  // namespace

void WalkNodes(CMMCObjectSet& set, NodeVisitor& visitor) {
  Walk(set, set.GetChildNodes(CMMCObjectSet::RootNode), visitor);
}

void WalkSubtree(CMMCObjectSet& set, __int64 node, NodeVisitor& visitor) { Walk(set, {node}, visitor); }

std::size_t CountNodes(CMMCObjectSet& set) {
  NodeCounter counter;
  WalkNodes(set, counter);
  return counter.Count();
}

std::size_t CountNodes(CMMCObjectSet& set, __int64 node) {
  NodeCounter counter;
  WalkSubtree(set, node, counter);
  return counter.Count();
}

std::optional<__int64> FindParent(CMMCObjectSet& set, __int64 node) {
  ParentFinder finder(node);
  WalkNodes(set, finder);
  return finder.Parent();
}

}  // namespace ondrel::command
