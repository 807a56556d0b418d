// The nodes of a document: elements, attributes and processing instructions.

#include "xml/dom_nodes.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include <ondrel/platform/xml.h>

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
  if (value != nullptr && text.size() <= valueSize) {
    // The room of the old value is written again, so that an attribute set over and over does not grow the document.
    if (!text.empty()) std::memmove(const_cast<char*>(value), text.data(), text.size());
  } else {
    value = arena.Copy(text);
  }
  valueSize = static_cast<std::uint32_t>(text.size());
  return S_OK;
}

HRESULT ValueNode::SetText(Arena& arena, std::u16string_view text) {
  return WithKept(text, [&](std::string_view kept) { return SetValue(arena, kept); });
}

HRESULT AttributeNode::get_nodeValue(VARIANT* out) { return GiveValue(*this, out); }

HRESULT AttributeNode::put_value(VARIANT given) {
  return WithStatus([&]() -> HRESULT {
    if (given.vt == VT_BSTR) return SetText(Owner().arena, TextOf(given.bstrVal));
    VARIANT text;
    VariantInit(&text);
    HRESULT status = VariantChangeType(&text, &given, 0, VT_BSTR);
    if (FAILED(status)) return status;
    status = WithStatus([&] { return SetText(Owner().arena, TextOf(text.bstrVal)); });
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
  return WithStatus([&] {
    const std::u16string_view wanted = TextOf(itemName);
    AttributeNode* attribute = FirstAttribute();
    while (attribute != nullptr && !IsKeptAs(attribute->name->text, wanted)) attribute = attribute->NextAttribute();
    return GiveNode(attribute, item);
  });
}

AttributeNode* ElementNode::FirstAttribute() {
  AttributeNode* first = nullptr;
  // From the last to the first, so that the element changes only when all have been made.
  for (std::size_t left = m_parsed.size(); left > 0; --left) {
    const ParsedAttribute& parsed = m_parsed[left - 1];
    auto* const attribute = Owner().arena.New<AttributeNode>(parsed.name);
    attribute->value = parsed.value.data();
    attribute->valueSize = static_cast<std::uint32_t>(parsed.value.size());
    attribute->parent = this;
    attribute->next = first;
    first = attribute;
  }
  if (first != nullptr) m_firstAttribute = first;
  m_parsed = {};
  m_room = 0;
  return m_firstAttribute;
}

std::optional<std::string_view> ElementNode::FindValue(std::u16string_view attributeName) const {
  for (const ParsedAttribute& attribute : m_parsed) {
    if (IsKeptAs(attribute.name->text, attributeName)) return attribute.value;
  }
  for (const AttributeNode* node = m_firstAttribute; node != nullptr; node = node->NextAttribute()) {
    if (IsKeptAs(node->name->text, attributeName)) return node->Value();
  }
  return std::nullopt;
}

HRESULT ElementNode::setNamedItem(IXMLDOMNode* item, IXMLDOMNode** added) {
  if (added != nullptr) *added = nullptr;
  TreeNode* const node = FindNode(item, Owner());
  if (node == nullptr) return kForeignNode;
  if (node->kind != NodeKind::attribute) return kWrongPlace;
  if (node->parent != nullptr && node->parent != this) return kAttributeInUse;
  if (node->parent == nullptr) {
    const HRESULT status = WithStatus([&] { return PutAttribute(static_cast<AttributeNode&>(*node)), S_OK; });
    if (FAILED(status)) return status;
  }
  return added == nullptr ? S_OK : GiveNode(node, added);
}

void ElementNode::PutAttribute(const Name& attributeName, std::string_view value) {
  constexpr std::size_t kFirstRoom = 2;
  Arena& arena = Owner().arena;
  if (m_firstAttribute != nullptr) {
    auto* const attribute = arena.New<AttributeNode>(&attributeName);
    attribute->value = value.data();
    attribute->valueSize = static_cast<std::uint32_t>(value.size());
    PutAttribute(*attribute);
    return;
  }
  for (ParsedAttribute& attribute : m_parsed) {
    if (attribute.name != &attributeName) continue;
    attribute.value = value;
    return;
  }
  if (m_room == 0) {
    const std::span<ParsedAttribute> moved = arena.NewArray<ParsedAttribute>(std::max(kFirstRoom, 2 * m_parsed.size()));
    std::copy(m_parsed.begin(), m_parsed.end(), moved.begin());
    m_room = static_cast<std::uint32_t>(moved.size() - m_parsed.size());
    m_parsed = moved.first(m_parsed.size());
  }
  m_parsed = {m_parsed.data(), m_parsed.size() + 1};
  m_parsed.back() = {&attributeName, value};
  --m_room;
}

void ElementNode::PutAttribute(AttributeNode& attribute) {
  AttributeNode* previous = nullptr;
  AttributeNode* old = FirstAttribute();
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
    m_firstAttribute = &attribute;
  } else {
    previous->next = &attribute;
  }
}

}  // namespace ondrel::platform
