// The nodes of a document: elements, attributes and processing instructions.

#include "xml/dom_nodes.h"

#include <cstring>
#include <limits>

namespace ondrel::platform {

namespace {

HRESULT GiveValue(const ValueNode& node, VARIANT* value) {
  if (value == nullptr) return E_INVALIDARG;
  VariantInit(value);
  const HRESULT status = GiveKeptText(node.Value(), value->bstrVal);
  if (SUCCEEDED(status)) value->vt = VT_BSTR;
  return status;
}

}  // namespace

HRESULT ValueNode::SetValue(Arena& arena, std::string_view text) {
  if (text.size() > std::numeric_limits<std::uint32_t>::max()) return E_OUTOFMEMORY;
  if (text.size() <= valueSize) {
    // The room of the old value is written again, so that an attribute set over and over does not grow the document.
    if (!text.empty()) std::memmove(const_cast<char*>(value), text.data(), text.size());
  } else {
    value = arena.Copy(text);
  }
  valueSize = static_cast<std::uint32_t>(text.size());
  return S_OK;
}

HRESULT AttributeNode::get_nodeValue(VARIANT* out) { return GiveValue(*this, out); }

HRESULT AttributeNode::put_value(VARIANT given) {
  return WithStatus([&]() -> HRESULT {
    if (given.vt == VT_BSTR) return SetValue(Owner().arena, KeptText(TextOf(given.bstrVal)));
    VARIANT text;
    VariantInit(&text);
    HRESULT status = VariantChangeType(&text, &given, 0, VT_BSTR);
    if (FAILED(status)) return status;
    status = WithStatus([&] { return SetValue(Owner().arena, KeptText(TextOf(text.bstrVal))); });
    VariantClear(&text);
    return status;
  });
}

HRESULT InstructionNode::get_nodeValue(VARIANT* out) { return GiveValue(*this, out); }

HRESULT ElementNode::QueryInterface(REFIID id, void** object) {
  if (object != nullptr && id == IXMLDOMNamedNodeMap::kId)
    return get_attributes(reinterpret_cast<IXMLDOMNamedNodeMap**>(object));
  return DomNode::QueryInterface(id, object);
}

HRESULT ElementNode::get_attributes(IXMLDOMNamedNodeMap** attributes) {
  if (attributes == nullptr) return E_INVALIDARG;
  *attributes = this;
  AddRef();
  return S_OK;
}

HRESULT ElementNode::getElementsByTagName(BSTR tagName, IXMLDOMNodeList** nodes) {
  return GetElementsByTagName(Owner(), *this, tagName, nodes);
}

HRESULT ElementNode::getNamedItem(BSTR itemName, IXMLDOMNode** item) {
  if (itemName == nullptr || item == nullptr) return E_INVALIDARG;
  *item = nullptr;
  return WithStatus([&]() -> HRESULT {
    const Name* const wanted = Owner().names.Find(KeptText(TextOf(itemName)));
    if (wanted == nullptr) return S_FALSE;
    AttributeNode* attribute = firstAttribute;
    while (attribute != nullptr && attribute->name != wanted) attribute = attribute->NextAttribute();
    return GiveNode(attribute, item);
  });
}

HRESULT ElementNode::setNamedItem(IXMLDOMNode* item, IXMLDOMNode** added) {
  if (added != nullptr) *added = nullptr;
  TreeNode* const node = FindNode(item, Owner());
  if (node == nullptr) return kForeignNode;
  if (node->kind != NodeKind::attribute) return kWrongPlace;
  if (node->parent != nullptr && node->parent != this) return kAttributeInUse;
  if (node->parent == nullptr) PutAttribute(static_cast<AttributeNode&>(*node));
  return added == nullptr ? S_OK : GiveNode(node, added);
}

// In place of the attribute of the same name, or behind the last.
void ElementNode::PutAttribute(AttributeNode& attribute) {
  AttributeNode* previous = nullptr;
  AttributeNode* old = firstAttribute;
  while (old != nullptr && old->name != attribute.name) {
    previous = old;
    old = old->NextAttribute();
  }
  if (old != nullptr) {
    attribute.next = old->next;
    old->next = nullptr;
    old->parent = nullptr;
  }
  attribute.parent = this;
  if (previous == nullptr) {
    firstAttribute = &attribute;
  } else {
    previous->next = &attribute;
  }
}

}  // namespace ondrel::platform
