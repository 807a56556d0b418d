// A tree made from XML text.

#include "xml/tree_builder.h"

#include <limits>
#include <memory>
#include <new>

#include "text/xml_text_parser.h"
#include "xml/dom_nodes.h"

namespace ondrel::platform {

namespace {

class TreeBuilder final : public XmlElementSink {
 public:
  explicit TreeBuilder(Tree& tree) : m_tree(tree), m_open(&tree.root) {}

  void OnStartElement(std::string_view name, std::span<const Attribute> attributes) override {
    Name& elementName = *m_tree.names.Intern(name);
    auto* const element = m_tree.arena.New<ElementNode>(&elementName);
    (elementName.lastElement == nullptr ? elementName.firstElement : elementName.lastElement->nextOfName) = element;
    elementName.lastElement = element;
    // The parser has seen to it that no two attributes have one name.
    const std::span<ParsedAttribute> parsed = m_tree.arena.NewArray<ParsedAttribute>(attributes.size());
    for (std::size_t i = 0; i < attributes.size(); ++i) {
      const std::string_view value = attributes[i].value;
      if (value.size() > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
      parsed[i] = {m_tree.names.Intern(attributes[i].name), {m_tree.arena.Copy(value), value.size()}};
    }
    element->SetAttributes(parsed);
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

template <class Parse>
Tree* Build(Parse&& parse) {
  std::unique_ptr<Tree, ReleaseTree> tree(new Tree);
  tree->listsElements = true;
  TreeBuilder builder(*tree);
  XmlTextParser parser(builder, XmlLayout::dropped);
  XmlTextFault fault;
  return parse(parser, fault) ? tree.release() : nullptr;
}

}  // namespace

Tree* BuildTree(std::u16string_view text) {
  return Build([text](XmlTextParser& parser, XmlTextFault& fault) { return parser.Parse(text, fault); });
}

Tree* BuildTree1252(const NarrowTextReader& read) {
  return Build([&read](XmlTextParser& parser, XmlTextFault& fault) { return parser.Parse1252(read, fault); });
}

}  // namespace ondrel::platform
