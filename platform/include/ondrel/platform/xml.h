// Contract: the document object model and the writer of XML text, in the part that the model calls.
//
// The interfaces are those of the Windows XML services, with their ownership (an out parameter receives an owned
// reference or text) and statuses. A document and everything obtained from it is used by one thread at a time.
//
//   CLSID_DOMDocument, IXMLDOMDocument
//     loadXML            S_OK and VARIANT_TRUE; S_FALSE and VARIANT_FALSE for text that is not well-formed. No external
//                        entity is opened and entity expansion is bounded: text that tries is refused the same way.
//     createElement, createAttribute, createProcessingInstruction
//                        a node of the document that stands nowhere yet
//     get_documentElement  S_FALSE and null when there is none
//   IXMLDOMNode
//     get_nodeName       the qualified name
//     get_nodeValue      an attribute's text as VT_BSTR; S_FALSE and VT_NULL for an element
//     get_attributes     S_FALSE and null for a node that is no element
//     appendChild        attaches as the last child; the out parameter may be null
//     selectNodes        the descendants that a relative path of names ("Name" or "Name/Name") leads to, in document
//                        order; selectSingleNode the first of them, S_FALSE and null when there is none
//   IXMLDOMElement
//     getElementsByTagName  all descendants of that name, in document order
//   IXMLDOMAttribute
//     put_value          VT_BSTR or VT_I8; a number is kept as its decimal digits
//   IXMLDOMNamedNodeMap
//     getNamedItem       S_FALSE and null when there is none; setNamedItem adds, or replaces in place
//   IXMLDOMNodeList
//     nextNode           S_FALSE and null at the end. A list is made to be walked once.
//
//   CLSID_SAXXMLReader60, ISAXXMLReader
//     parse              reports a document (VT_DISPATCH) to the content handler
//   CLSID_MXXMLWriter60, IMXWriter (and ISAXContentHandler)
//     writes what is reported to it, as indented UTF-8 text, to its output (VT_UNKNOWN, an IStream). Text that no XML
//     document can carry (control characters, lone surrogates, U+FFFE, U+FFFF) ends the writing with a failing status;
//     tabs, line feeds and carriage returns in attributes are written as character references and so survive.
//   GetContentHandler    the content handler of a writer, to be given to a reader
#pragma once

#include <ondrel/platform/com.h>
#include <ondrel/platform/os/xml.h>
