// The document: what makes nodes and reads text. Its nodes belong to its tree, which can outlive it.

#include <ondrel/platform/xml.h>

#include "xml/classes.h"
#include "xml/dom_nodes.h"
#include "xml/tree_builder.h"

namespace ondrel::platform {

namespace {

constexpr std::string_view kDocumentName = "#document";

/// Puts the tree that `build` gives in place of a document's; S_FALSE when it gives none.
template <class Build>
HRESULT Load(TreeOwner& document, Build&& build, VARIANT_BOOL* loaded) {
  return StatusOf([&]() -> HRESULT {
    Tree* const tree = build();
    if (tree == nullptr) return S_FALSE;
    document.tree->ReleaseReference();
    document.tree = tree;
    if (loaded != nullptr) *loaded = VARIANT_TRUE;
    return S_OK;
  });
}

class DomDocument final : public IXMLDOMDocument, private TreeOwner {
 public:
  DomDocument() : TreeOwner{new Tree} {}
  DomDocument(const DomDocument&) = delete;
  DomDocument& operator=(const DomDocument&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object != nullptr && id == kTreeOwnerId) {
      *object = static_cast<TreeOwner*>(this);
      return S_OK;
    }
    return FindInterface<IXMLDOMDocument, IXMLDOMNode, IDispatch>(*this, id, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return m_references.Increment(); }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG count = m_references.Decrement();
    if (count == 0) delete this;
    return count;
  }

  HRESULT STDMETHODCALLTYPE get_nodeName(BSTR* name) override {
    return name == nullptr ? E_INVALIDARG : GiveKeptText(kDocumentName, *name);
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
    return AppendChild(*tree, &tree->root, child, appended);
  }
  HRESULT STDMETHODCALLTYPE selectNodes(BSTR path, IXMLDOMNodeList** nodes) override {
    return SelectNodes(*tree, &tree->root, path, nodes);
  }
  HRESULT STDMETHODCALLTYPE selectSingleNode(BSTR path, IXMLDOMNode** node) override {
    return SelectSingleNode(*tree, &tree->root, path, node);
  }

  HRESULT STDMETHODCALLTYPE get_documentElement(IXMLDOMElement** element) override {
    if (element == nullptr) return E_INVALIDARG;
    *element = nullptr;
    for (TreeNode* node = tree->root.firstChild; node != nullptr; node = node->next) {
      if (node->kind != NodeKind::element) continue;
      *element = static_cast<ElementNode*>(node);
      (*element)->AddRef();
      return S_OK;
    }
    return S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE createElement(BSTR name, IXMLDOMElement** element) override {
    return Create<ElementNode>(name, element, [](ElementNode&) { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE createAttribute(BSTR name, IXMLDOMAttribute** attribute) override {
    return Create<AttributeNode>(name, attribute, [](AttributeNode&) { return S_OK; });
  }
  HRESULT STDMETHODCALLTYPE createProcessingInstruction(BSTR target, BSTR data,
                                                        IXMLDOMProcessingInstruction** instruction) override {
    return Create<InstructionNode>(target, instruction, [&](InstructionNode& node) {
      if (TextOf(data).find(kEndOfInstruction) != std::u16string_view::npos) return kInvalidInstruction;
      return node.SetText(tree->arena, TextOf(data));
    });
  }

  HRESULT STDMETHODCALLTYPE loadXML(BSTR text, VARIANT_BOOL* loaded) override {
    if (loaded != nullptr) *loaded = VARIANT_FALSE;
    return Load(
        *this, [&] { return BuildTree(TextOf(text)); }, loaded);
  }

 private:
  ~DomDocument() { tree->ReleaseReference(); }

  // A node that stands nowhere yet; `finish` completes it and gives a status.
  template <class Node, class Interface, class Finish>
  HRESULT Create(BSTR name, Interface** created, Finish&& finish) {
    if (created == nullptr) return E_INVALIDARG;
    *created = nullptr;
    return WithStatus([&]() -> HRESULT {
      const Name* const nodeName = tree->names.InternPlain(TextOf(name));
      if (nodeName == nullptr) return kNotAnXmlName;
      auto* const node = tree->arena.New<Node>(nodeName);
      if (const HRESULT status = finish(*node); FAILED(status)) return status;
      *created = node;
      node->AddRef();
      return S_OK;
    });
  }

  ReferenceCount m_references;
};

}  // namespace

HRESULT CreateDomDocument(REFIID id, void** object) {
  return WithStatus([&] { return GiveNew(new DomDocument, id, object); });
}

HRESULT CreateDocument(IXMLDOMDocument** document) {
  return CreateDomDocument(InterfaceId<IXMLDOMDocument>(), reinterpret_cast<void**>(document));
}

HRESULT LoadDocument(IXMLDOMDocument* document, BSTR text, VARIANT_BOOL* loaded) {
  if (document == nullptr || loaded == nullptr) return E_INVALIDARG;
  return document->loadXML(text, loaded);  // which already has these rules
}

HRESULT LoadNarrowDocument(IXMLDOMDocument* document, const NarrowTextReader& read, VARIANT_BOOL* loaded) {
  void* owner = nullptr;
  if (document == nullptr || loaded == nullptr || FAILED(document->QueryInterface(kTreeOwnerId, &owner))) {
    return E_INVALIDARG;
  }
  *loaded = VARIANT_FALSE;
  return Load(
      *static_cast<TreeOwner*>(owner), [&] { return BuildTree1252(read); }, loaded);
}

}  // namespace ondrel::platform
