// XML documents for tests: read from text, and told as text, element by element as they stand in the tree.
#pragma once

#include <string>
#include <string_view>

#include <ondrel/platform/xml.h>

namespace ondrel::test {

/// An empty document. Its tree, and everything obtained from it, is used by one thread at a time.
CComPtr<IXMLDOMDocument> NewDocument();
/// A document of UTF-8 text. Raises std::invalid_argument for text that is not well-formed.
CComPtr<IXMLDOMDocument> ParseDocument(std::string_view text);

/// The document's element. Raises std::logic_error when there is none.
CComPtr<IXMLDOMElement> RootOf(IXMLDOMDocument* document);
/// A new element, the document's own. Requires that there is none yet.
CComPtr<IXMLDOMElement> AddRoot(IXMLDOMDocument* document, LPCWSTR name);
/// The elements that a path of names leads to.
CComPtr<IXMLDOMNodeList> Select(IXMLDOMNode* node, LPCWSTR path);

/// The document's element with everything in it, on one line: `<A X="1"><B/></A>`. Elements and attributes stand in
/// their order in the tree. In values & < and " are written as references.
std::string XmlOf(IXMLDOMDocument* document);

}  // namespace ondrel::test
