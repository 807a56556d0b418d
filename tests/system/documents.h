// Documents for tests: made from text, looked into, written again.
#pragma once

#include <string>
#include <string_view>

#include <ondrel/platform/xml.h>

#include "support/print_text.h"

namespace ondrel::test {

/// A status as eight digits, for comparisons that show it as people know it.
std::string Hex(HRESULT status);

CComPtr<IXMLDOMDocument> NewDocument();
/// LoadDocument's status. Narrow text is taken as the narrow code page.
HRESULT Load(IXMLDOMDocument* document, const CString& text);
HRESULT Load(IXMLDOMDocument* document, const std::string& text);
/// A document with this text. Raises std::runtime_error when it is refused.
CComPtr<IXMLDOMDocument> Loaded(const CString& text);
CComPtr<IXMLDOMDocument> Loaded(const std::string& text);
/// Whether a new document accepts the text.
bool IsAccepted(const CString& text);
bool IsAccepted(const std::string& text);

CComPtr<IXMLDOMElement> RootOf(IXMLDOMDocument* document);
CComPtr<IXMLDOMElement> NewElement(IXMLDOMDocument* document, LPCWSTR name);
CComPtr<IXMLDOMAttribute> NewAttribute(IXMLDOMDocument* document, LPCWSTR name, LPCWSTR value);
/// Creates an attribute and sets it on the element.
void SetAttribute(IXMLDOMDocument* document, IXMLDOMNode* element, LPCWSTR name, const CString& value);

CComPtr<IXMLDOMNamedNodeMap> AttributesOf(IXMLDOMNode* element);
/// The text of an attribute that was given this value.
CString Kept(const VARIANT& value);
CString NameOf(IXMLDOMNode* node);
/// The attribute's text, or "(none)".
CString AttributeOf(IXMLDOMNode* element, LPCWSTR name);
/// The names and attributes N of what a list gives, as "a(1) b(2) ", up to its end.
std::string Listing(IXMLDOMNodeList* list);
std::string Selected(IXMLDOMNode* node, LPCWSTR path);
std::string Tagged(IXMLDOMElement* element, LPCWSTR name);

struct WriterSettings {
  VARIANT_BOOL omitDeclaration = VARIANT_FALSE;
  VARIANT_BOOL standalone = VARIANT_TRUE;
  VARIANT_BOOL indent = VARIANT_TRUE;
};
/// Writes the document to the stream through reader and writer; the reader's status.
HRESULT Write(IXMLDOMDocument* document, IStream* stream, const WriterSettings& settings = {});
/// The document's text. Raises std::runtime_error when it cannot be written.
std::string Written(IXMLDOMDocument* document, const WriterSettings& settings = {});
/// All bytes of a memory stream.
std::string BytesOf(IStream* stream);

/// Neither a declaration nor indentation.
inline constexpr WriterSettings kPlainWriter{VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE};

}  // namespace ondrel::test
