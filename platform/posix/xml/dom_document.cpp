// The document: what makes nodes and reads text. Its nodes belong to its tree, which can outlive it.

#include <ondrel/platform/xml.h>

#include "xml/classes.h"
#include "xml/dom_nodes.h"
#include "xml/tree_builder.h"

namespace ondrel::platform {

namespace {

constexpr std::string_view kDocumentName = "#document";

class DomDocument final : public IXMLDOMDocument {
 public:
  DomDocument() : m_tree(new Tree) {}
  DomDocument(const DomDocument&) = delete;
  DomDocument& operator=(const DomDocument&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object != nullptr && id == kTreeId) {
      *object = m_tree;
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
    return AppendChild(*m_tree, &m_tree->root, child, appended);
  }
  HRESULT STDMETHODCALLTYPE selectNodes(BSTR path, IXMLDOMNodeList** nodes) override {
    return SelectNodes(*m_tree, &m_tree->root, path, nodes);
  }
  HRESULT STDMETHODCALLTYPE selectSingleNode(BSTR path, IXMLDOMNode** node) override {
    return SelectSingleNode(*m_tree, &m_tree->root, path, node);
  }

  HRESULT STDMETHODCALLTYPE get_documentElement(IXMLDOMElement** element) override {
    if (element == nullptr) return E_INVALIDARG;
    *element = nullptr;
    for (TreeNode* node = m_tree->root.firstChild; node != nullptr; node = node->next) {
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
      return node.SetValue(m_tree->arena, KeptText(TextOf(data)));
    });
  }

  HRESULT STDMETHODCALLTYPE loadXML(BSTR text, VARIANT_BOOL* loaded) override {
    if (loaded != nullptr) *loaded = VARIANT_FALSE;
    return WithStatus([&]() -> HRESULT {
      Tree* const tree = BuildTree(TextOf(text));
      if (tree == nullptr) return S_FALSE;
      m_tree->ReleaseReference();
      m_tree = tree;
      if (loaded != nullptr) *loaded = VARIANT_TRUE;
      return S_OK;
    });
  }

 private:
  ~DomDocument() { m_tree->ReleaseReference(); }

  // A node that stands nowhere yet; `finish` completes it and gives a status.
  template <class Node, class Interface, class Finish>
  HRESULT Create(BSTR name, Interface** created, Finish&& finish) {
    if (created == nullptr) return E_INVALIDARG;
    *created = nullptr;
    return WithStatus([&]() -> HRESULT {
      if (!IsXmlName(TextOf(name))) return kNotAnXmlName;
      auto* const node = m_tree->arena.New<Node>(m_tree->names.Intern(KeptText(TextOf(name))));
      if (const HRESULT status = finish(*node); FAILED(status)) return status;
      *created = node;
      node->AddRef();
      return S_OK;
    });
  }

  ReferenceCount m_references;
  Tree* m_tree;  // the document's one reference
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

}  // namespace ondrel::platform
