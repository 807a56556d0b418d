// One place down among siblings.
#include "edit/move_node.h"

#include <optional>

#include "edit/object_name.h"
#include "node_walk.h"
#include "output.h"

namespace ondrel::command {
namespace {

/// Finds the sibling behind a node: what the library exchanges its cookie with.
class NextSiblingFinder : public NodeVisitor {
 public:
  explicit NextSiblingFinder(__int64 node) : m_node(node) {}
  void EnterNode(const CMMCObjectParams& node, std::size_t depth, bool isLast) override {
    if (m_isOver && !m_next && depth == m_depth) m_next = node.GetCookie();
    if (node.GetCookie() != m_node) return;
    m_isFound = true;
    m_depth = depth;
    m_isOver = !isLast;
  }
  void LeaveNode(bool) override {}
  bool IsFound() const { return m_isFound; }
  std::optional<__int64> Next() const { return m_next; }

 private:
  __int64 m_node;
  std::size_t m_depth = 0;
  bool m_isFound = false;
  bool m_isOver = false;
  std::optional<__int64> m_next;
};

}  // namespace

int MoveDown(const MoveDownRequest& request) {
  const auto definition = OpenForEdit(request.edit);
  const __int64 cookie = FindObjectNamed(*definition, request.node);
  if (IsDialog(definition->set, cookie)) {
    throw Failure(definition->At(0), ObjectLabel(definition->set, cookie) + " has no place in the tree; name a node",
                  StatusText(E_INVALIDARG));
  }
  RequireSavedNode(*definition, cookie);
  NextSiblingFinder finder(cookie);
  WalkNodes(definition->set, finder);
  if (!finder.IsFound()) {
    throw Failure(definition->At(0),
                  ObjectLabel(definition->set, cookie) +
                      " lies below a node with a negative cookie, which no save keeps; "
                      "give that another cookie in the file",
                  StatusText(E_INVALIDARG));
  }
  const std::string line = ObjectLine(definition->set, cookie);
  if (!finder.Next()) {
    WriteOutput(line + " (it is the last one already, and the file stays as it is)\n");
    return kDone;
  }
  if (const HRESULT status = definition->set.MoveNodeDown(cookie); FAILED(status)) {
    throw Failure(definition->At(0),
                  "node " + std::to_string(cookie) +
                      " cannot be moved; look at the file with "
                      "\"ondrel check\"",
                  StatusText(status));
  }
  const __int64 moved = *finder.Next();
  return FinishEdit(request.edit, *definition, {cookie, moved},
                    ObjectLine(definition->set, moved) + " (it was node " + std::to_string(cookie) + ")\n");
}

}  // namespace ondrel::command
