// A walk over a definition's console tree.
#pragma once

#include <cstddef>

#include <ondrel/MMCObjectSet.h>

namespace ondrel::command {

/// Told of every node, parents before their children, siblings in their order.
class NodeVisitor {
 public:
  virtual ~NodeVisitor() = default;
  /// `depth` is 0 for a top-level node; `isLast` says that no sibling follows.
  virtual void EnterNode(const CMMCObjectParams& node, std::size_t depth, bool isLast) = 0;
  /// After the node's whole subtree.
  virtual void LeaveNode(bool isLast) = 0;
};

/// Walks all nodes. The tree may be of any depth: the walk does not use the call stack for it.
void WalkNodes(CMMCObjectSet& set, NodeVisitor& visitor);

std::size_t CountNodes(CMMCObjectSet& set);

}  // namespace ondrel::command
