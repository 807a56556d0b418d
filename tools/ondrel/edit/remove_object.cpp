// Leaf by leaf, since the library removes no node that has others below it.
#include "edit/remove_object.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "edit/object_name.h"
#include "printable.h"

namespace ondrel::command {
namespace {

/// A node and all below it, each before those below it.
std::vector<__int64> Subtree(CMMCObjectSet& set, __int64 node) {
  std::vector<__int64> nodes{node};
  for (std::size_t index = 0; index < nodes.size(); ++index) {
    const std::list<__int64> children = set.GetChildNodes(nodes[index]);
    nodes.insert(nodes.end(), children.begin(), children.end());
  }
  return nodes;
}

void RequireRemoved(const Definition& definition, __int64 cookie, HRESULT status) {
  if (SUCCEEDED(status)) return;
  throw Failure(definition.At(0), std::to_string(cookie) + " cannot be removed; look at the file with \"ondrel check\"",
                StatusText(status));
}

}  // namespace

int Remove(const RemoveRequest& request) {
  const auto definition = OpenForEdit(request.edit);
  CMMCObjectSet& set = definition->set;
  const __int64 cookie = FindObjectNamed(*definition, request.object);
  std::string report = "removed " + ObjectLine(set, cookie);
  if (IsDialog(set, cookie)) {
    RequireRemoved(*definition, cookie, set.RemoveDialog(cookie));
    return FinishEdit(request.edit, *definition, {}, report + '\n');
  }
  RequireSavedNode(*definition, cookie);
  std::vector<__int64> nodes = Subtree(set, cookie);
  if (const std::size_t below = nodes.size() - 1; below > 0) {
    const std::string count = Counted(below, "node", "nodes");
    if (!request.isRecursive) {
      throw Failure(definition->At(0),
                    ObjectLabel(set, cookie) + " has " + count + " below it; --recursive removes them with it",
                    StatusText(HRESULT_FROM_WIN32(ERROR_NOT_EMPTY)));
    }
    report += ", and " + count + " below it";
  }
  std::reverse(nodes.begin(), nodes.end());
  for (const __int64 node : nodes) RequireRemoved(*definition, node, set.RemoveNode(node));
  return FinishEdit(request.edit, *definition, {}, report + '\n');
}

}  // namespace ondrel::command
