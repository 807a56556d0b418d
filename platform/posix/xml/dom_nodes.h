// The nodes of a document: elements, attributes and processing instructions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "xml/dom_node.h"

namespace ondrel::platform {

/// A node with a text of its own, kept in the tree's arena.
struct ValueNode : TreeNode {
  using TreeNode::TreeNode;

  std::string_view Value() const { return {value, valueSize}; }
  /// E_OUTOFMEMORY for a text beyond 32 bits of length. Raises std::bad_alloc.
  HRESULT SetValue(Arena& arena, std::string_view text);
  /// The same for text that is not in its kept form yet.
  HRESULT SetText(Arena& arena, std::u16string_view text);

  std::uint32_t valueSize = 0;
  const char* value = nullptr;
};

class AttributeNode final : public DomNode<IXMLDOMAttribute, ValueNode> {
 public:
  explicit AttributeNode(const Name* attributeName) : DomNode(NodeKind::attribute, attributeName) {}

  AttributeNode* NextAttribute() const { return static_cast<AttributeNode*>(next); }

  HRESULT STDMETHODCALLTYPE get_nodeValue(VARIANT* out) override;
  HRESULT STDMETHODCALLTYPE put_value(VARIANT given) override;
};

/// An attribute that no node was made of yet: that is done when one is asked for, which the short ways never do.
struct ParsedAttribute {
  const Name* name = nullptr;
  std::string_view value;
};

class InstructionNode final : public DomNode<IXMLDOMProcessingInstruction, ValueNode> {
 public:
  explicit InstructionNode(const Name* target) : DomNode(NodeKind::instruction, target) {}

  HRESULT STDMETHODCALLTYPE get_nodeValue(VARIANT* out) override;
};

/// An element, and in one object the map of its attributes.
class ElementNode final : public DomNode<IXMLDOMElement, ParentNode>, public IXMLDOMNamedNodeMap {
 public:
  explicit ElementNode(const Name* elementName) : DomNode(NodeKind::element, elementName) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return DomNode::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return DomNode::Release(); }

  HRESULT STDMETHODCALLTYPE get_attributes(IXMLDOMNamedNodeMap** attributes) override;
  HRESULT STDMETHODCALLTYPE getElementsByTagName(BSTR name, IXMLDOMNodeList** nodes) override;
  HRESULT STDMETHODCALLTYPE getNamedItem(BSTR name, IXMLDOMNode** item) override;
  HRESULT STDMETHODCALLTYPE setNamedItem(IXMLDOMNode* item, IXMLDOMNode** added) override;

  /// The attributes of a new element, in the tree's arena.
  void SetAttributes(std::span<ParsedAttribute> attributes) { m_parsed = attributes; }
  /// The first attribute, or null; the others follow it. Raises std::bad_alloc.
  AttributeNode* FirstAttribute();
  // These make no nodes.

  /// Calls `use` with the name and the kept text of each attribute that there is now: what `use` calls in turn may add
  /// some, or ask for their nodes. Raises std::bad_alloc.
  template <class Use>
  void ForEachAttribute(const Use& use) const {
    constexpr std::size_t kFew = 4;  // as elements nearly always have
    std::array<ParsedAttribute, kFew> few;
    std::vector<ParsedAttribute> more;
    std::size_t count = 0;
    const auto note = [&](const ParsedAttribute& attribute) {
      if (count < kFew) {
        few[count++] = attribute;
      } else {
        more.push_back(attribute);
      }
    };
    for (const ParsedAttribute& attribute : m_parsed) note(attribute);
    for (const AttributeNode* node = m_firstAttribute; node != nullptr; node = node->NextAttribute()) {
      note({node->name, node->Value()});
    }
    for (std::size_t i = 0; i < count; ++i) use(*few[i].name, few[i].value);
    for (const ParsedAttribute& attribute : more) use(*attribute.name, attribute.value);
  }
  /// The text of an attribute, or none.
  std::optional<std::string_view> FindValue(std::u16string_view attributeName) const;

  /// Puts an attribute in place of the one of the same name, or behind the last. The value lies in the tree's arena.
  /// Raises std::bad_alloc.
  void PutAttribute(const Name& attributeName, std::string_view value);
  /// Puts an attribute that stands nowhere in place of the one of the same name, or behind the last. Raises
  /// std::bad_alloc.
  void PutAttribute(AttributeNode& attribute);

  ElementNode* nextOfName = nullptr;  // see Name::firstElement

 private:
  std::span<ParsedAttribute> m_parsed;  // those that no nodes were made of yet: all or none
  std::uint32_t m_room = 0;             // behind them
  AttributeNode* m_firstAttribute = nullptr;
};

}  // namespace ondrel::platform
