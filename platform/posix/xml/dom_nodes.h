// The nodes of a document: elements, attributes and processing instructions.
#pragma once

#include <string_view>

#include "xml/dom_node.h"

namespace ondrel::platform {

/// A node with a text of its own, kept in the tree's arena.
struct ValueNode : TreeNode {
  using TreeNode::TreeNode;

  std::string_view Value() const { return {value, valueSize}; }
  /// E_OUTOFMEMORY for a text beyond 32 bits of length. Raises std::bad_alloc.
  HRESULT SetValue(Arena& arena, std::string_view text);

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

  AttributeNode* firstAttribute = nullptr;

 private:
  void PutAttribute(AttributeNode& attribute);
};

}  // namespace ondrel::platform
