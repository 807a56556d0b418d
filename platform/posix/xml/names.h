// Element and attribute names of a document: each is kept once, so two names are equal when their addresses are.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "xml/arena.h"

namespace ondrel::platform {

struct Tree;

/// A qualified name, in UTF-8. It also tells to which tree the nodes of this name belong.
struct Name {
  Tree* tree;
  std::uint64_t hash;
  std::string_view text;
};

class NameTable {
 public:
  /// The names are kept in `arena`, which must live as long.
  NameTable(Tree& tree, Arena& arena) : m_tree(tree), m_arena(arena) {}

  /// The name, added if it is new. Raises std::bad_alloc.
  const Name* Intern(std::string_view text);
  /// The name, or null when no node ever had it.
  const Name* Find(std::string_view text) const;

 private:
  const Name*& Slot(std::uint64_t hash, std::string_view text);
  void Grow();

  Tree& m_tree;
  Arena& m_arena;
  std::vector<const Name*> m_slots;  // open addressing: a power of two, at most half of it in use
  std::size_t m_count = 0;
};

/// Whether `text` is a name without a colon, as XML 1.0 defines names.
bool IsXmlName(std::u16string_view text);

}  // namespace ondrel::platform
