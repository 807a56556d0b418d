// The writer: makes indented UTF-8 text of what is reported to it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <ondrel/platform/xml.h>

#include "com/com_object.h"
#include "xml/dom_nodes.h"
#include "xml/text_output.h"

namespace ondrel::platform {

/// Asks a content handler for the XmlWriter that it is. The answer carries no reference.
inline constexpr IID kXmlWriterId{0x7B3D9A12, 0x46C2, 0x4A0D, {0x9E, 0x3A, 0x52, 0x0C, 0xE7, 0x11, 0x84, 0x6D}};

class XmlWriter final : public IMXWriter, public ISAXContentHandler {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return m_references.Increment(); }
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE put_omitXMLDeclaration(VARIANT_BOOL value) override;
  HRESULT STDMETHODCALLTYPE put_standalone(VARIANT_BOOL value) override;
  HRESULT STDMETHODCALLTYPE put_indent(VARIANT_BOOL value) override;
  HRESULT STDMETHODCALLTYPE put_encoding(BSTR encoding) override;
  HRESULT STDMETHODCALLTYPE put_output(VARIANT destination) override;

  HRESULT STDMETHODCALLTYPE startDocument() override;
  HRESULT STDMETHODCALLTYPE endDocument() override;
  HRESULT STDMETHODCALLTYPE startElement(const WCHAR* namespaceUri, int namespaceUriLength, const WCHAR* localName,
                                         int localNameLength, const WCHAR* qName, int qNameLength,
                                         ISAXAttributes* attributes) override;
  HRESULT STDMETHODCALLTYPE endElement(const WCHAR* namespaceUri, int namespaceUriLength, const WCHAR* localName,
                                       int localNameLength, const WCHAR* qName, int qNameLength) override;
  HRESULT STDMETHODCALLTYPE processingInstruction(const WCHAR* target, int targetLength, const WCHAR* data,
                                                  int dataLength) override;

  // The same for nodes of a tree, whose text is kept in the form that is written.
  HRESULT StartElement(const ElementNode& element);
  HRESULT EndElement(const ElementNode& element);
  HRESULT Instruction(const InstructionNode& instruction);

 private:
  ~XmlWriter() = default;

  /// Does one event's writing; the result is the first failure so far.
  template <class Writing>
  HRESULT Write(Writing&& writing);
  /// The kept form of a name, which need not be one when a stranger reports it; a node's name always is.
  std::string CheckedName(const WCHAR* name, int length);
  HRESULT PutAttributes(ISAXAttributes* attributes);
  void PutAttribute(std::string_view name, std::string_view value);
  void OpenTag(std::string_view name);
  void EndTag(std::string_view name);
  void PutInstruction(std::string_view target, std::string_view data);
  /// An element's tag stays open until it is known whether anything stands in it.
  void CloseStartTag();
  void Indent();
  void EndLine();

  ReferenceCount m_references;
  TextOutput m_output;
  std::size_t m_depth = 0;
  bool m_isTagOpen = false;
  bool m_omitDeclaration = false;
  bool m_standalone = false;
  bool m_indent = false;
};

}  // namespace ondrel::platform
