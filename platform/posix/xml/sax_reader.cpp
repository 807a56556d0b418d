// The reader: reports a document to a content handler, node by node.

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "xml/classes.h"
#include "xml/dom_nodes.h"
#include "xml/xml_writer.h"

namespace ondrel::platform {

namespace {

constexpr std::string_view kDeclarationTarget = "xml";

HRESULT IntLength(const std::u16string& text, int& length) {
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return E_OUTOFMEMORY;
  length = static_cast<int>(text.size());
  return S_OK;
}

/// The attributes of the element that is being reported. The object is the reader's own and belongs to no count: a
/// handler may use it during the call only.
class ReportedAttributes final : public ISAXAttributes {
 public:
  void Read(const ElementNode& element) {
    m_count = 0;
    element.ForEachAttribute([this](const Name& name, std::string_view value) {
      if (m_count == m_attributes.size()) m_attributes.emplace_back();
      ReadKeptText(name.text, m_attributes[m_count].name);
      ReadKeptText(value, m_attributes[m_count].value);
      ++m_count;
    });
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    return FindInterface<ISAXAttributes>(*this, id, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE getLength(int* length) override {
    if (length == nullptr) return E_POINTER;
    *length = static_cast<int>(m_count);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE getQName(int index, const WCHAR** name, int* length) override {
    return Give(index, &Attribute::name, name, length);
  }
  HRESULT STDMETHODCALLTYPE getValue(int index, const WCHAR** value, int* length) override {
    return Give(index, &Attribute::value, value, length);
  }

 private:
  struct Attribute {
    std::u16string name;
    std::u16string value;
  };

  HRESULT Give(int index, std::u16string Attribute::*part, const WCHAR** text, int* length) const {
    if (text == nullptr || length == nullptr) return E_POINTER;
    if (index < 0 || static_cast<std::size_t>(index) >= m_count) return E_INVALIDARG;
    const std::u16string& given = m_attributes[static_cast<std::size_t>(index)].*part;
    *text = given.c_str();
    return IntLength(given, *length);
  }

  std::vector<Attribute> m_attributes;  // only the first m_count are in use; the others keep their memory
  std::size_t m_count = 0;
};

/// Hands the nodes of a tree to a content handler.
class Reporter {
 public:
  explicit Reporter(ISAXContentHandler& handler) : m_handler(handler) {}

  HRESULT startDocument() { return m_handler.startDocument(); }
  HRESULT endDocument() { return m_handler.endDocument(); }

  HRESULT StartElement(const ElementNode& element) {
    m_attributes.Read(element);
    int length = 0;
    if (const HRESULT status = ReadName(element, length); FAILED(status)) return status;
    const WCHAR* const name = m_name.c_str();
    return m_handler.startElement(_T(""), 0, name, length, name, length, &m_attributes);
  }

  HRESULT EndElement(const ElementNode& element) {
    int length = 0;
    if (const HRESULT status = ReadName(element, length); FAILED(status)) return status;
    const WCHAR* const name = m_name.c_str();
    return m_handler.endElement(_T(""), 0, name, length, name, length);
  }

  HRESULT Instruction(const InstructionNode& node) {
    int length = 0;
    if (const HRESULT status = ReadName(node, length); FAILED(status)) return status;
    std::u16string data;
    ReadKeptText(node.Value(), data);
    int dataLength = 0;
    if (const HRESULT status = IntLength(data, dataLength); FAILED(status)) return status;
    return m_handler.processingInstruction(m_name.c_str(), length, data.c_str(), dataLength);
  }

 private:
  HRESULT ReadName(const TreeNode& node, int& length) {
    ReadKeptText(node.name->text, m_name);
    return IntLength(m_name, length);
  }

  ISAXContentHandler& m_handler;
  ReportedAttributes m_attributes;
  std::u16string m_name;
};

template <class Receiver>
HRESULT Start(TreeNode& node, Receiver& receiver) {
  if (node.kind == NodeKind::element) return receiver.StartElement(static_cast<ElementNode&>(node));
  if (node.name->text == kDeclarationTarget) return S_OK;  // the declaration, which whoever writes makes anew
  return receiver.Instruction(static_cast<InstructionNode&>(node));
}

/// Reports a tree to a Reporter, or to the writer of this layer.
template <class Receiver>
HRESULT Report(const TreeReference& tree, Receiver& receiver) {
  HRESULT status = receiver.startDocument();
  TreeNode* node = tree->root.firstChild;
  while (SUCCEEDED(status) && node != nullptr) {
    status = Start(*node, receiver);
    TreeNode* const child = node->kind == NodeKind::element ? static_cast<ElementNode*>(node)->firstChild : nullptr;
    if (child != nullptr) {
      node = child;
      continue;
    }
    while (SUCCEEDED(status) && node != nullptr) {
      if (node->kind == NodeKind::element) status = receiver.EndElement(static_cast<ElementNode&>(*node));
      if (node->next != nullptr) {
        node = node->next;
        break;
      }
      node = node->parent;
      if (node == &tree->root) node = nullptr;
    }
  }
  return SUCCEEDED(status) ? receiver.endDocument() : status;
}

class SaxReader final : public ISAXXMLReader {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    return FindInterface<ISAXXMLReader>(*this, id, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return m_references.Increment(); }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG count = m_references.Decrement();
    if (count == 0) delete this;
    return count;
  }

  HRESULT STDMETHODCALLTYPE putContentHandler(ISAXContentHandler* handler) override {
    if (handler != nullptr) handler->AddRef();
    if (ISAXContentHandler* const old = std::exchange(m_handler, handler); old != nullptr) old->Release();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE parse(VARIANT input) override {
    if (input.vt != VT_DISPATCH || input.pdispVal == nullptr) return E_INVALIDARG;
    void* owner = nullptr;
    if (FAILED(input.pdispVal->QueryInterface(kTreeOwnerId, &owner))) return E_INVALIDARG;  // not one of our documents
    if (m_handler == nullptr) return S_OK;
    // The handler may change or let go of the reader, so it is held here.
    ISAXContentHandler* const handler = m_handler;
    handler->AddRef();
    const HRESULT status = WithStatus([&] {
      const TreeReference tree(*static_cast<TreeOwner*>(owner)->tree);
      void* writer = nullptr;
      if (SUCCEEDED(handler->QueryInterface(kXmlWriterId, &writer))) {
        return Report(tree, *static_cast<XmlWriter*>(writer));
      }
      Reporter reporter(*handler);
      return Report(tree, reporter);
    });
    handler->Release();
    return status;
  }

 private:
  ~SaxReader() {
    if (m_handler != nullptr) m_handler->Release();
  }

  ReferenceCount m_references;
  ISAXContentHandler* m_handler = nullptr;
};

}  // namespace

HRESULT CreateSaxReader(REFIID id, void** object) {
  return WithStatus([&] { return GiveNew(new SaxReader, id, object); });
}

}  // namespace ondrel::platform
