// What the interfaces of all nodes have in common.
#pragma once

#include <type_traits>

#include <ondrel/platform/os/xml.h>

#include "com/com_object.h"
#include "xml/kept_text.h"
#include "xml/statuses.h"
#include "xml/tree.h"

namespace ondrel::platform {

/// Asks a node of this layer for its TreeNode. The answer carries no reference.
inline constexpr IID kTreeNodeId{0x7B3D9A10, 0x46C2, 0x4A0D, {0x9E, 0x3A, 0x52, 0x0C, 0xE7, 0x11, 0x84, 0x6D}};
/// A document's one reference to its contents.
struct TreeOwner {
  Tree* tree;
};

/// Asks a document of this layer for its TreeOwner. The answer carries no reference.
inline constexpr IID kTreeOwnerId{0x7B3D9A11, 0x46C2, 0x4A0D, {0x9E, 0x3A, 0x52, 0x0C, 0xE7, 0x11, 0x84, 0x6D}};

/// What the data of a processing instruction cannot hold, because it would end there.
inline constexpr std::u16string_view kEndOfInstruction = u"?>";

/// The interface of a node other than the document's own.
IXMLDOMNode* InterfaceOf(TreeNode& node);

/// The node behind an interface, or null for one of another tree or another maker.
TreeNode* FindNode(IUnknown* node, const Tree& tree);

/// Gives a reference to `node` as `given`, or null and S_FALSE when there is none.
HRESULT GiveNode(TreeNode* node, IXMLDOMNode** given);

// The operations of IXMLDOMNode, for any node. `parent` is null for a node that has no children.
HRESULT AppendChild(Tree& tree, ParentNode* parent, IXMLDOMNode* child, IXMLDOMNode** appended);
HRESULT SelectNodes(Tree& tree, const ParentNode* from, BSTR path, IXMLDOMNodeList** nodes);
HRESULT SelectSingleNode(Tree& tree, const ParentNode* from, BSTR path, IXMLDOMNode** node);
HRESULT GetElementsByTagName(Tree& tree, const ParentNode& above, BSTR name, IXMLDOMNodeList** nodes);

/// A node that lives in a tree's arena. `Interface` is the node's own interface, `Data` its part of the tree.
template <class Interface, class Data>
class DomNode : public Interface, public Data {
 public:
  using Data::Data;

  Tree& Owner() const { return *this->name->tree; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object != nullptr && id == kTreeNodeId) {
      *object = static_cast<TreeNode*>(this);
      return S_OK;
    }
    return FindInterface<Interface, IXMLDOMNode, IDispatch>(*this, id, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return Owner().AddReference(); }
  ULONG STDMETHODCALLTYPE Release() override { return Owner().ReleaseReference(); }

  HRESULT STDMETHODCALLTYPE get_nodeName(BSTR* nodeName) override {
    return nodeName == nullptr ? E_INVALIDARG : GiveKeptText(this->name->text, *nodeName);
  }
  HRESULT STDMETHODCALLTYPE get_nodeValue(VARIANT* value) override {
    if (value == nullptr) return E_INVALIDARG;
    VariantInit(value);
    value->vt = VT_NULL;
    return S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE get_attributes(IXMLDOMNamedNodeMap** attributes) override {
    if (attributes == nullptr) return E_INVALIDARG;
    *attributes = nullptr;
    return S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE appendChild(IXMLDOMNode* child, IXMLDOMNode** appended) override {
    return AppendChild(Owner(), Children(), child, appended);
  }
  HRESULT STDMETHODCALLTYPE selectNodes(BSTR path, IXMLDOMNodeList** nodes) override {
    return SelectNodes(Owner(), Children(), path, nodes);
  }
  HRESULT STDMETHODCALLTYPE selectSingleNode(BSTR path, IXMLDOMNode** node) override {
    return SelectSingleNode(Owner(), Children(), path, node);
  }

 private:
  ParentNode* Children() {
    if constexpr (std::is_base_of_v<ParentNode, Data>) {
      return this;
    } else {
      return nullptr;
    }
  }
};

}  // namespace ondrel::platform
