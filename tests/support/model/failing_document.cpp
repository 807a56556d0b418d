#include "support/model/failing_document.h"

#include <atomic>
#include <utility>

#include <ondrel/platform/framework.h>

#include "os/whole_interfaces.h"

namespace ondrel::test {
namespace {

using platform::InterfaceId;

/// Asks a stand-in for the real object. The answer carries no reference.
constexpr IID kRealObject{0x3F6A1C52, 0x90D4, 0x4E0B, {0xA1, 0x77, 0x2D, 0x58, 0x0C, 0x9E, 0x41, 0xB6}};

/// The object behind a stand-in, or the object itself.
IXMLDOMNode* RealNode(IXMLDOMNode* node) {
  void* real = nullptr;
  if (node != nullptr && SUCCEEDED(node->QueryInterface(kRealObject, &real))) return static_cast<IXMLDOMNode*>(real);
  return node;
}

std::string Named(const char* call, BSTR name) {
  return std::string(call) + ' ' + platform::ToUtf8(CString(name, static_cast<int>(SysStringLen(name))));
}

template <class Interface>
class StandIn : public Whole<Interface> {
 public:
  StandIn(Interface* real, DocumentCalls& calls) : m_real(real), m_calls(calls) {}

  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --m_references;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    if constexpr (std::is_base_of_v<IXMLDOMNode, Interface>) {
      if (id == kRealObject) {
        *object = static_cast<IXMLDOMNode*>(m_real);
        return S_OK;
      }
      if (id == InterfaceId<IXMLDOMNode>()) *object = static_cast<IXMLDOMNode*>(this);
    }
    if (id == InterfaceId<Interface>() || id == InterfaceId<IUnknown>() || id == InterfaceId<IDispatch>()) {
      *object = this;
    }
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }

 protected:
  virtual ~StandIn() = default;

  /// Passes a call on that gives an object, and gives `Wrapper` of it, or null as it is.
  template <class Wrapper, class Result, class Call>
  HRESULT Give(std::string name, Result** result, Call call) {
    *result = nullptr;
    if (const HRESULT status = m_calls.Note(std::move(name)); FAILED(status)) return status;
    CComPtr<Result> real;
    const HRESULT status = call(&real);
    if (real != nullptr) {
      *result = new Wrapper(real, m_calls);
      (*result)->AddRef();
    }
    return status;
  }
  template <class Call>
  HRESULT Pass(std::string name, Call call) {
    const HRESULT status = m_calls.Note(std::move(name));
    return FAILED(status) ? status : call();
  }

  CComPtr<Interface> m_real;
  DocumentCalls& m_calls;

 private:
  std::atomic<ULONG> m_references = 0;
};

class NodesStandIn;
class AttributesStandIn;

template <class Interface>
class NodeStandIn : public StandIn<Interface> {
 public:
  using StandIn<Interface>::StandIn;

  HRESULT STDMETHODCALLTYPE get_nodeName(BSTR* name) override {
    return this->Pass("get_nodeName", [&] { return this->m_real->get_nodeName(name); });
  }
  HRESULT STDMETHODCALLTYPE get_nodeValue(VARIANT* value) override {
    return this->Pass("get_nodeValue", [&] { return this->m_real->get_nodeValue(value); });
  }
  HRESULT STDMETHODCALLTYPE appendChild(IXMLDOMNode* child, IXMLDOMNode** appended) override {
    return this->Pass("appendChild", [&] { return this->m_real->appendChild(RealNode(child), appended); });
  }
  HRESULT STDMETHODCALLTYPE get_attributes(IXMLDOMNamedNodeMap** attributes) override {
    return this->template Give<AttributesStandIn>("get_attributes", attributes,
                                                  [&](auto** real) { return this->m_real->get_attributes(real); });
  }
  HRESULT STDMETHODCALLTYPE selectNodes(BSTR path, IXMLDOMNodeList** nodes) override {
    return this->template Give<NodesStandIn>(Named("selectNodes", path), nodes,
                                             [&](auto** real) { return this->m_real->selectNodes(path, real); });
  }
  HRESULT STDMETHODCALLTYPE selectSingleNode(BSTR path, IXMLDOMNode** node) override {
    return this->template Give<NodeStandIn<IXMLDOMNode>>(
        Named("selectSingleNode", path), node, [&](auto** real) { return this->m_real->selectSingleNode(path, real); });
  }
};

class ElementStandIn final : public NodeStandIn<IXMLDOMElement> {
 public:
  using NodeStandIn::NodeStandIn;

  HRESULT STDMETHODCALLTYPE getElementsByTagName(BSTR name, IXMLDOMNodeList** nodes) override {
    return Give<NodesStandIn>(Named("getElementsByTagName", name), nodes,
                              [&](auto** real) { return m_real->getElementsByTagName(name, real); });
  }
};

class AttributeStandIn final : public NodeStandIn<IXMLDOMAttribute> {
 public:
  using NodeStandIn::NodeStandIn;

  HRESULT STDMETHODCALLTYPE put_value(VARIANT value) override {
    return Pass("put_value", [&] { return m_real->put_value(value); });
  }
};

class InstructionStandIn final : public NodeStandIn<IXMLDOMProcessingInstruction> {
 public:
  using NodeStandIn::NodeStandIn;
};

class AttributesStandIn final : public StandIn<IXMLDOMNamedNodeMap> {
 public:
  using StandIn::StandIn;

  HRESULT STDMETHODCALLTYPE getNamedItem(BSTR name, IXMLDOMNode** item) override {
    return Give<NodeStandIn<IXMLDOMNode>>(Named("getNamedItem", name), item,
                                          [&](auto** real) { return m_real->getNamedItem(name, real); });
  }
  HRESULT STDMETHODCALLTYPE setNamedItem(IXMLDOMNode* item, IXMLDOMNode** added) override {
    return Pass("setNamedItem", [&] { return m_real->setNamedItem(RealNode(item), added); });
  }
};

class NodesStandIn final : public StandIn<IXMLDOMNodeList> {
 public:
  using StandIn::StandIn;

  HRESULT STDMETHODCALLTYPE nextNode(IXMLDOMNode** node) override {
    return Give<NodeStandIn<IXMLDOMNode>>("nextNode", node, [&](auto** real) { return m_real->nextNode(real); });
  }
};

class DocumentStandIn final : public NodeStandIn<IXMLDOMDocument> {
 public:
  using NodeStandIn::NodeStandIn;

  HRESULT STDMETHODCALLTYPE get_documentElement(IXMLDOMElement** element) override {
    return Give<ElementStandIn>("get_documentElement", element,
                                [&](auto** real) { return m_real->get_documentElement(real); });
  }
  HRESULT STDMETHODCALLTYPE createElement(BSTR name, IXMLDOMElement** element) override {
    return Give<ElementStandIn>(Named("createElement", name), element,
                                [&](auto** real) { return m_real->createElement(name, real); });
  }
  HRESULT STDMETHODCALLTYPE createAttribute(BSTR name, IXMLDOMAttribute** attribute) override {
    return Give<AttributeStandIn>(Named("createAttribute", name), attribute,
                                  [&](auto** real) { return m_real->createAttribute(name, real); });
  }
  HRESULT STDMETHODCALLTYPE createProcessingInstruction(BSTR target, BSTR data,
                                                        IXMLDOMProcessingInstruction** instruction) override {
    return Give<InstructionStandIn>(Named("createProcessingInstruction", target), instruction, [&](auto** real) {
      return m_real->createProcessingInstruction(target, data, real);
    });
  }
  HRESULT STDMETHODCALLTYPE loadXML(BSTR text, VARIANT_BOOL* loaded) override {
    return Pass("loadXML", [&] { return m_real->loadXML(text, loaded); });
  }
};

}  // namespace

HRESULT DocumentCalls::Note(std::string call) {
  m_log.push_back(std::move(call));
  return m_log.size() == m_failing ? m_status : S_OK;
}

CComPtr<IXMLDOMDocument> Failing(IXMLDOMDocument* document, DocumentCalls& calls) {
  return CComPtr<IXMLDOMDocument>(new DocumentStandIn(document, calls));
}

CComPtr<IXMLDOMElement> Failing(IXMLDOMElement* element, DocumentCalls& calls) {
  return CComPtr<IXMLDOMElement>(new ElementStandIn(element, calls));
}

CComPtr<IXMLDOMNodeList> Failing(IXMLDOMNodeList* nodes, DocumentCalls& calls) {
  return CComPtr<IXMLDOMNodeList>(new NodesStandIn(nodes, calls));
}

}  // namespace ondrel::test
