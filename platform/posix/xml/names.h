// Element and attribute names of a document: each is kept once, so two names are equal when their addresses are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "xml/arena.h"

namespace ondrel::platform {

struct Tree;
class ElementNode;

/// A qualified name, in UTF-8. It also tells to which tree the nodes of this name belong.
struct Name {
  Tree* tree;
  std::uint64_t hash;
  std::string_view text;
  bool isPlain;  // has no colon
  // The names that were asked for after this one, the last first: documents repeat themselves.
  Name* follower = nullptr;
  Name* otherFollower = nullptr;
  // The elements of this name that a text was parsed into, in document order.
  ElementNode* firstElement = nullptr;
  ElementNode* lastElement = nullptr;
};

class NameTable {
 public:
  /// The names are kept in `arena`, which must live as long.
  NameTable(Tree& tree, Arena& arena) : m_tree(tree), m_arena(arena) {}

  /// The name, added if it is new. Raises std::bad_alloc.
  Name* Intern(std::string_view text);
  /// The same for text that must be a name without a colon; null for another.
  Name* InternPlain(std::u16string_view text);
  /// The name, or null when no node ever had it.
  const Name* Find(std::string_view text) const;
  std::size_t Count() const { return m_count; }

 private:
  Name* Follow(Name* name);
  Name*& Slot(std::uint64_t hash, std::string_view text);
  void Grow();

  Tree& m_tree;
  Arena& m_arena;
  std::vector<Name*> m_slots;  // open addressing: a power of two, at most half of it in use
  std::size_t m_count = 0;
  Name* m_last = nullptr;  // that was interned
};

/// Whether `text` is a name without a colon, as XML 1.0 defines names.
bool IsXmlName(std::u16string_view text);

}  // namespace ondrel::platform
