// A tree made from XML text.

#include "xml/tree_builder.h"

#include <memory>

#include "text/xml_text_parser.h"
#include "xml/dom_nodes.h"

namespace ondrel::platform {

namespace {

class TreeBuilder final : public XmlElementSink {
 public:
  explicit TreeBuilder(Tree& tree) : m_tree(tree), m_open(&tree.root) {}

  void OnStartElement(std::string_view name, std::span<const Attribute> attributes) override {
    auto* const element = m_tree.arena.New<ElementNode>(m_tree.names.Intern(name));
    // The parser has seen to it that no two attributes have one name, so each goes straight behind the last.
    AttributeNode* last = nullptr;
    for (const Attribute& given : attributes) {
      auto* const attribute = m_tree.arena.New<AttributeNode>(m_tree.names.Intern(given.name));
      if (FAILED(attribute->SetValue(m_tree.arena, given.value))) throw std::bad_alloc();
      attribute->parent = element;
      if (last == nullptr) {
        element->firstAttribute = attribute;
      } else {
        last->next = attribute;
      }
      last = attribute;
    }
    Attach(*m_open, *element);
    m_open = element;
  }

  void OnEndElement(std::string_view) override { m_open = m_open->parent; }

 private:
  Tree& m_tree;
  ParentNode* m_open;
};

struct ReleaseTree {
  void operator()(Tree* tree) const { tree->ReleaseReference(); }
};

}  // namespace

Tree* BuildTree(std::u16string_view text) {
  std::unique_ptr<Tree, ReleaseTree> tree(new Tree);
  TreeBuilder builder(*tree);
  XmlTextParser parser(builder);
  XmlTextFault fault;
  return parser.Parse(text, fault) ? tree.release() : nullptr;
}

}  // namespace ondrel::platform
