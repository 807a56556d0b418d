// The short ways to an attribute's value, past the interfaces.

#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <ondrel/platform/xml.h>

#include "text/unicode.h"
#include "xml/dom_nodes.h"

namespace ondrel::platform {

namespace {

/// The element of this layer that a map belongs to, or null.
ElementNode* ElementOf(IXMLDOMNamedNodeMap* attributes) {
  void* found = nullptr;
  if (attributes == nullptr || FAILED(attributes->QueryInterface(kTreeNodeId, &found))) return nullptr;
  return static_cast<ElementNode*>(static_cast<TreeNode*>(found));  // of the nodes of a tree, these alone are a map
}

std::optional<std::string_view> FindIn(IXMLDOMNamedNodeMap* attributes, BSTR name) {
  const ElementNode* const element = ElementOf(attributes);
  return element == nullptr ? std::nullopt : element->FindValue(TextOf(name));
}

HRESULT Add(IXMLDOMNamedNodeMap* attributes, BSTR name, std::string_view kept) {
  ElementNode* const element = ElementOf(attributes);
  if (element == nullptr || kept.size() > std::numeric_limits<std::uint32_t>::max()) return S_FALSE;
  Tree& tree = element->Owner();
  const Name* const attributeName = tree.names.InternPlain(TextOf(name));
  if (attributeName == nullptr) return S_FALSE;
  element->PutAttribute(*attributeName, {tree.arena.Copy(kept), kept.size()});
  return S_OK;
}

}  // namespace

HRESULT FindDigits(IXMLDOMNamedNodeMap* attributes, BSTR name, LONGLONG& number) {
  constexpr std::size_t kMostDigits = 19;  // of which an unsigned number holds all
  return WithStatus([&]() -> HRESULT {
    const std::optional<std::string_view> value = FindIn(attributes, name);
    if (!value || value->empty() || value->size() > kMostDigits) return S_FALSE;
    ULONGLONG parsed = 0;
    for (const char digit : *value) {
      if (digit < '0' || digit > '9') return S_FALSE;
      parsed = parsed * 10 + static_cast<ULONGLONG>(digit - '0');
    }
    if (parsed > static_cast<ULONGLONG>(std::numeric_limits<LONGLONG>::max())) return S_FALSE;
    number = static_cast<LONGLONG>(parsed);
    return S_OK;
  });
}

HRESULT FindAscii(IXMLDOMNamedNodeMap* attributes, BSTR name, CString& text) {
  return WithStatus([&]() -> HRESULT {
    const std::optional<std::string_view> value = FindIn(attributes, name);
    if (!value) return S_FALSE;
    std::u16string units(value->size(), u'\0');
    std::size_t done = CopyAscii(value->data(), value->size(), units.data());
    for (; done < value->size() && static_cast<unsigned char>((*value)[done]) < 0x80; ++done) {
      units[done] = static_cast<char16_t>((*value)[done]);
    }
    if (done < value->size()) return S_FALSE;
    text = CString(std::move(units));
    return S_OK;
  });
}

HRESULT AddNumber(IXMLDOMNamedNodeMap* attributes, BSTR name, LONGLONG number) {
  std::array<char, std::numeric_limits<LONGLONG>::digits10 + 3> digits;  // one more digit, the sign, and room behind
  const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  return WithStatus([&] { return Add(attributes, name, {digits.data(), end}); });
}

HRESULT AddText(IXMLDOMNamedNodeMap* attributes, BSTR name, const CString& text) {
  return WithStatus(
      [&] { return WithKept(text.View(), [&](std::string_view kept) { return Add(attributes, name, kept); }); });
}

}  // namespace ondrel::platform
