// Contract: the document object model and the writer of XML text, in the part that the model calls.
//
// The interfaces are those of the Windows XML services, with their ownership (an out parameter receives an owned
// reference or text) and statuses. A document and everything obtained from it is used by one thread at a time.
//
//   CLSID_DOMDocument, IXMLDOMDocument
//     loadXML            S_OK and VARIANT_TRUE; S_FALSE and VARIANT_FALSE for text that is not well-formed or uses a
//                        prefix that is not declared, and then the document stays as it was. A declared encoding is
//                        ignored; a U+FEFF and blanks before the declaration are allowed. No external entity is opened
//                        and entity expansion is bounded: text that tries, or only declares one, is refused the same
//                        way. Off Windows the document has the elements and attributes only, no text, comments or
//                        instructions, and nodes of contents that were replaced cannot be put into it any more.
//     createElement, createAttribute, createProcessingInstruction
//                        a node of the document that stands nowhere yet; E_FAIL for a name that is no XML name or has
//                        a colon
//     get_documentElement  S_FALSE and null when there is none
//   IXMLDOMNode
//     get_nodeName       the qualified name; "#document" for the document
//     get_nodeValue      an attribute's text as VT_BSTR; S_FALSE and VT_NULL for an element
//     get_attributes     S_FALSE and null for a node that is no element
//     appendChild        attaches as the last child, taking the node from where it stood; the out parameter may be
//                        null. E_FAIL for an attribute, a second document element, a node above the new parent;
//                        E_INVALIDARG for a node of another document
//     selectNodes        the descendants that a relative path of names ("Name" or "Name/Name") leads to, in document
//                        order; selectSingleNode the first of them, S_FALSE and null when there is none. E_FAIL for
//                        another expression
//   IXMLDOMElement
//     getElementsByTagName  all descendants of that name, in document order
//   IXMLDOMAttribute
//     put_value          VT_BSTR or VT_I8; a number is kept as its decimal digits
//   IXMLDOMNamedNodeMap
//     getNamedItem       S_FALSE and null when there is none
//     setNamedItem       adds, or replaces in place; the out parameter may be null. E_FAIL for a node that is no
//                        attribute or belongs to another element, E_INVALIDARG for one of another document
//   IXMLDOMNodeList
//     nextNode           S_FALSE and null at the end. A list is made to be walked once.
//   A null out parameter, or null in place of a path, is E_INVALIDARG; memory that runs short is E_OUTOFMEMORY. A node,
//   list or attribute map that is held keeps alive what it needs of its document.
//
//   CLSID_SAXXMLReader60, ISAXXMLReader
//     parse              reports a document (VT_DISPATCH) to the content handler and stops at the handler's first
//                        failing status, which it returns; E_INVALIDARG for another input. The document's own "xml"
//                        instruction is not reported. The attributes that a handler gets are valid during the call.
//   CLSID_MXXMLWriter60, IMXWriter (and ISAXContentHandler)
//     writes what is reported to it, as indented UTF-8 text without a byte-order mark, to its output (VT_UNKNOWN, an
//     IStream). Lines end in CR LF; off Windows a line has one tab for each level up to 64. Text that no XML document
//     can carry (control characters, lone surrogates, U+FFFE, U+FFFF) ends the writing with a failing status, off
//     Windows 0xC00CE508; tabs, line feeds and carriage returns in attributes are written as character references and
//     so survive. A failing output's status is returned; a short write is STG_E_MEDIUMFULL.
//   CreateDocument       a new CLSID_DOMDocument that opens no external entity, whatever the system's own would do
//   GetContentHandler    the content handler of a writer, to be given to a reader
#pragma once

#include <ondrel/platform/com.h>
#include <ondrel/platform/os/xml.h>

namespace ondrel::platform {

ONDREL_SYSTEM_API HRESULT CreateDocument(IXMLDOMDocument** document);
ONDREL_SYSTEM_API HRESULT GetContentHandler(IMXWriter* writer, ISAXContentHandler** handler);

}  // namespace ondrel::platform
