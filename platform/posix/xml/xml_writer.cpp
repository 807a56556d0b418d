// The writer: makes indented UTF-8 text of what is reported to it.

#include <algorithm>
#include <string>
#include <string_view>
#include <type_traits>

#include <ondrel/platform/xml.h>

#include "xml/classes.h"
#include "xml/kept_text.h"
#include "xml/xml_writer.h"

namespace ondrel::platform {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::u16string_view kUtf8Name = u"utf-8";

// A chain of a million elements would take a million tabs for its innermost ones, and so more room than any disk has.
// Beyond this depth no one reads the indentation; the lines stay.
constexpr std::size_t kMostTabs = 64;
constexpr std::string_view kTabs =
    "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t"
    "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";
static_assert(kTabs.size() == kMostTabs);

bool IsUtf8Name(std::u16string_view encoding) {
  return std::equal(encoding.begin(), encoding.end(), kUtf8Name.begin(), kUtf8Name.end(),
                    [](char16_t given, char16_t expected) {
                      return given == expected || (given >= 'A' && given <= 'Z' && given - 'A' + 'a' == expected);
                    });
}

std::u16string_view Text(const WCHAR* text, int length) {
  return text == nullptr || length <= 0 ? std::u16string_view()
                                        : std::u16string_view(text, static_cast<unsigned>(length));
}

/// The kept form of a text given by its length.
std::string Kept(const WCHAR* text, int length) { return KeptText(Text(text, length)); }

}  // namespace

HRESULT XmlWriter::QueryInterface(REFIID id, void** object) {
  if (object != nullptr && id == kXmlWriterId) {
    *object = this;
    return S_OK;
  }
  return FindInterface<IMXWriter, IDispatch, ISAXContentHandler>(*this, id, object);
}

ULONG XmlWriter::Release() {
  const ULONG count = m_references.Decrement();
  if (count == 0) delete this;
  return count;
}

HRESULT XmlWriter::put_omitXMLDeclaration(VARIANT_BOOL value) {
  m_omitDeclaration = value != VARIANT_FALSE;
  return S_OK;
}

HRESULT XmlWriter::put_standalone(VARIANT_BOOL value) {
  m_standalone = value != VARIANT_FALSE;
  return S_OK;
}

HRESULT XmlWriter::put_indent(VARIANT_BOOL value) {
  m_indent = value != VARIANT_FALSE;
  return S_OK;
}

HRESULT XmlWriter::put_encoding(BSTR encoding) { return IsUtf8Name(TextOf(encoding)) ? S_OK : E_INVALIDARG; }

HRESULT XmlWriter::put_output(VARIANT destination) {
  if (destination.vt == VT_EMPTY) {
    m_output.SetStream(nullptr);
    return S_OK;
  }
  if (destination.vt != VT_UNKNOWN || destination.punkVal == nullptr) return E_INVALIDARG;
  void* stream = nullptr;
  if (FAILED(destination.punkVal->QueryInterface(IStream::kId, &stream))) return E_INVALIDARG;
  m_output.SetStream(static_cast<IStream*>(stream));
  static_cast<IStream*>(stream)->Release();
  return S_OK;
}

template <class Writing>
HRESULT XmlWriter::Write(Writing&& writing) {
  return WithStatus([&]() -> HRESULT {
    if constexpr (std::is_void_v<decltype(writing())>) {
      writing();
    } else if (const HRESULT status = writing(); FAILED(status)) {
      return status;
    }
    return m_output.Status();
  });
}

HRESULT XmlWriter::startDocument() {
  return Write([&] {
    m_output.Start();
    m_depth = 0;
    m_isTagOpen = false;
    if (m_omitDeclaration) return;
    m_output.Put("<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"");
    m_output.Put(m_standalone ? "yes\"?>" : "no\"?>");
    EndLine();
  });
}

HRESULT XmlWriter::endDocument() {
  return WithStatus([&] { return m_output.Flush(); });
}

HRESULT XmlWriter::startElement(const WCHAR*, int, const WCHAR*, int, const WCHAR* name, int nameLength,
                                ISAXAttributes* attributes) {
  return Write([&] {
    OpenTag(CheckedName(name, nameLength));
    return PutAttributes(attributes);
  });
}

HRESULT XmlWriter::StartElement(const ElementNode& element) {
  return Write([&] {
    OpenTag(element.name->text);
    element.ForEachAttribute([&](const Name& name, std::string_view value) { PutAttribute(name.text, value); });
  });
}

HRESULT XmlWriter::endElement(const WCHAR*, int, const WCHAR*, int, const WCHAR* name, int nameLength) {
  return Write([&] { EndTag(CheckedName(name, nameLength)); });
}

HRESULT XmlWriter::EndElement(const ElementNode& element) {
  return Write([&] { EndTag(element.name->text); });
}

HRESULT XmlWriter::processingInstruction(const WCHAR* target, int targetLength, const WCHAR* data, int dataLength) {
  if (Text(data, dataLength).find(kEndOfInstruction) != std::u16string_view::npos) return kInvalidInstruction;
  return Write([&] { PutInstruction(CheckedName(target, targetLength), Kept(data, dataLength)); });
}

HRESULT XmlWriter::Instruction(const InstructionNode& instruction) {
  return Write([&] { PutInstruction(instruction.name->text, instruction.Value()); });
}

std::string XmlWriter::CheckedName(const WCHAR* name, int length) {
  std::string kept = Kept(name, length);
  m_output.Check(kept);
  return kept;
}

HRESULT XmlWriter::PutAttributes(ISAXAttributes* attributes) {
  int count = 0;
  if (attributes == nullptr) return S_OK;
  HRESULT status = attributes->getLength(&count);
  for (int index = 0; SUCCEEDED(status) && index < count; ++index) {
    const WCHAR* name = nullptr;
    const WCHAR* value = nullptr;
    int nameLength = 0;
    int valueLength = 0;
    status = attributes->getQName(index, &name, &nameLength);
    if (SUCCEEDED(status)) status = attributes->getValue(index, &value, &valueLength);
    if (SUCCEEDED(status)) PutAttribute(CheckedName(name, nameLength), Kept(value, valueLength));
  }
  return status;
}

void XmlWriter::PutAttribute(std::string_view name, std::string_view value) {
  m_output.Put(" ");
  m_output.Put(name);
  m_output.Put("=\"");
  m_output.PutAttributeText(value);
  m_output.Put("\"");
}

void XmlWriter::OpenTag(std::string_view name) {
  CloseStartTag();
  Indent();
  m_output.Put("<");
  m_output.Put(name);
  m_isTagOpen = true;
  ++m_depth;
}

void XmlWriter::EndTag(std::string_view name) {
  if (m_depth > 0) --m_depth;
  if (m_isTagOpen) {
    m_output.Put("/>");
    m_isTagOpen = false;
  } else {
    Indent();
    m_output.Put("</");
    m_output.Put(name);
    m_output.Put(">");
  }
  EndLine();
}

void XmlWriter::PutInstruction(std::string_view target, std::string_view data) {
  CloseStartTag();
  Indent();
  m_output.Put("<?");
  m_output.Put(target);
  if (!data.empty()) m_output.Put(" ");
  m_output.PutText(data);
  m_output.Put("?>");
  EndLine();
}

void XmlWriter::CloseStartTag() {
  if (!m_isTagOpen) return;
  m_isTagOpen = false;
  m_output.Put(">");
  EndLine();
}

void XmlWriter::Indent() {
  if (m_indent) m_output.Put(kTabs.substr(0, m_depth));
}

void XmlWriter::EndLine() {
  if (m_indent) m_output.Put(kLineEnd);
}

HRESULT CreateXmlWriter(REFIID id, void** object) {
  return WithStatus([&] { return GiveNew(new XmlWriter, id, object); });
}

HRESULT GetContentHandler(IMXWriter* writer, ISAXContentHandler** handler) {
  if (writer == nullptr || handler == nullptr) return E_POINTER;
  return writer->QueryInterface(ISAXContentHandler::kId, reinterpret_cast<void**>(handler));
}

}  // namespace ondrel::platform
