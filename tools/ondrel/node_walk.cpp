// The walk's explicit stack: for each level, the siblings that are still to come.
#include "node_walk.h"

#include <list>
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

}  // namespace

void WalkNodes(CMMCObjectSet& set, NodeVisitor& visitor) {
  std::vector<std::list<__int64>> open;  // the front of each level but the last has been entered
  open.push_back(set.GetChildNodes(CMMCObjectSet::RootNode));
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

std::size_t CountNodes(CMMCObjectSet& set) {
  NodeCounter counter;
  WalkNodes(set, counter);
  return counter.Count();
}

}  // namespace ondrel::command
