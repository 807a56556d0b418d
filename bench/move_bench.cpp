// Moving a node among its siblings in a large set, against adding every node again.
#include <array>
#include <memory>
#include <string>

#include "definition.h"
#include "forms.h"
#include "measure.h"

namespace ondrel::bench {
namespace {

__int64 Nodes() { return IsQuick() ? 10'000 : 1'000'000; }

CMMCObjectSet& Definition() {
  static const auto set = MakeDefinition(Nodes());
  return *set;
}

/// Nodes at the top, in the middle, and leaves; each has a sibling behind it, and the first have children.
std::array<__int64, 5> MovedNodes() {
  return {1, 15, Nodes() / 1'000 + 3, Nodes() / 20 + 5, Nodes() - Nodes() / 10 + 7};
}

CString NameOf(CMMCObjectSet& set, __int64 cookie) {
  CMMCObjectParams* params = nullptr;
  Require(set.GetParams(cookie, params) && params->GetCookie() == cookie, "a node does not have its cookie");
  return params->GetName();
}

/// A node and its next sibling, before they change places.
class Neighbours {
 public:
  Neighbours(CMMCObjectSet& set, __int64 first)
      : m_set(set),
        m_first(first),
        m_names{NameOf(set, first), NameOf(set, first + 1)},
        m_children{set.GetChildNodes(first), set.GetChildNodes(first + 1)} {}

  void RequireExchanged() const {
    Require(NameOf(m_set, m_first) == m_names[1] && NameOf(m_set, m_first + 1) == m_names[0],
            "two siblings have not changed places");
    Require(m_set.GetChildNodes(m_first) == m_children[1] && m_set.GetChildNodes(m_first + 1) == m_children[0],
            "children have not followed their parent");
  }

 private:
  CMMCObjectSet& m_set;
  __int64 m_first;
  std::array<CString, 2> m_names;
  std::array<std::list<__int64>, 2> m_children;
};

void Move(benchmark::State& state) {
  CMMCObjectSet& set = Definition();
  std::size_t next = 0;
  for (auto _ : state) {
    const __int64 node = MovedNodes().at(next++ % MovedNodes().size());
    const Neighbours neighbours(set, node);
    const auto start = std::chrono::steady_clock::now();
    const HRESULT status = set.MoveNodeDown(node);
    const auto end = std::chrono::steady_clock::now();
    Require(status == S_OK, "a node is not moved");
    neighbours.RequireExchanged();
    state.SetIterationTime(std::chrono::duration<double>(end - start).count());
  }
}

void AddEveryNode(benchmark::State& state) {
  CMMCObjectSet& source = Definition();
  const auto add = [&](CMMCObjectSet& set) {
    CMMCObjectParams* params = nullptr;
    bool isAdded = true;
    for (__int64 node = 0; node < Nodes(); ++node) {
      isAdded = source.GetParams(node, params) && set.AddNode(ParentOf(node), node, *params) == S_OK && isAdded;
    }
    Require(isAdded, "a node is not added");
  };
  Measure(state, MakeSet, add);
}

}  // namespace

void AddBenchmarks() {
  AddWork("move_node_down/ours", Nodes(), static_cast<int>(MovedNodes().size()), Move);
  AddWork("move_node_down/adding every node again", Nodes(), 1, AddEveryNode);
}

}  // namespace ondrel::bench
