// Contract: the document object model and the writer of XML text, in the part that the model calls.
//
// The interfaces are those of the Windows XML services, with their ownership (an out parameter receives an owned
// reference or text) and statuses. A document and everything obtained from it is used by one thread at a time.
//
//   CLSID_DOMDocument, IXMLDOMDocument
//     loadXML            S_OK and VARIANT_TRUE; S_FALSE and VARIANT_FALSE for text that is not well-formed or uses a
//                        prefix that is not declared. Text of strangers is loaded with LoadDocument. Off Windows the
//                        flag may be left out and the document stays as it was when it refuses; it has the elements and
//                        attributes only, no text, comments or instructions, and nodes of contents that were replaced
//                        cannot be put into it any more.
//     createElement, createAttribute, createProcessingInstruction
//                        a node of the document that stands nowhere yet; E_FAIL without a name, a failure for a name
//                        that is no XML name, off Windows E_FAIL and for a colon, too
//     get_documentElement  S_FALSE and null when there is none
//   IXMLDOMNode
//     get_nodeName       the qualified name; "#document" for the document
//     get_nodeValue      an attribute's text as VT_BSTR; S_FALSE and VT_NULL for an element
//     get_attributes     S_FALSE and null for a node that is no element
//     appendChild        attaches as the last child, taking the node from where it stood; the out parameter may be
//                        null. E_FAIL for an attribute, a second document element, a node above the new parent; a
//                        failure for a document. Off Windows E_INVALIDARG for a document or a node of another one
//     selectNodes        the descendants that a relative path of names ("Name" or "Name/Name") leads to, in document
//                        order; selectSingleNode the first of them, S_FALSE and null when there is none. Off Windows
//                        E_FAIL for another expression, and the same object for the same node every time
//   IXMLDOMElement
//     getElementsByTagName  all descendants of that name, in document order
//   IXMLDOMAttribute
//     put_value          VT_BSTR or VT_I8; a number is kept as its decimal digits. Units that are no XML text are kept,
//                        or the text ends at a zero unit; the writer refuses what it cannot write
//   IXMLDOMNamedNodeMap
//     getNamedItem       S_FALSE and null when there is none
//     setNamedItem       adds, or replaces, off Windows in place; the out parameter may be null. E_FAIL for a node that
//                        is no attribute or belongs to another element, a failure for a document. Off Windows
//                        E_INVALIDARG for a document or an attribute of another one
//   IXMLDOMNodeList
//     nextNode           S_FALSE and null at the end. A list is made to be walked once.
//   A null out parameter, or null in place of a path, is E_INVALIDARG; memory that runs short is E_OUTOFMEMORY. A node,
//   list or attribute map that is held keeps alive what it needs of its document.
//
//   CLSID_SAXXMLReader60, ISAXXMLReader
//     parse              reports a document (VT_DISPATCH) to the content handler and stops at the handler's first
//                        failing status, which it returns; off Windows E_INVALIDARG for another input, and a document
//                        may be empty. The document's own "xml" instruction is not reported. The attributes that a
//                        handler gets are valid during the call.
//   CLSID_MXXMLWriter60, IMXWriter (and ISAXContentHandler)
//     writes what is reported to it, as indented UTF-8 text without a byte-order mark, to its output (VT_UNKNOWN, an
//     IStream). Lines end in CR LF, off Windows the last one too; a line has one tab for each level, off Windows up to
//     64. Without a declaration or an indentation the first line end is the writer's own choice. Text that no XML
//     document can carry (control characters, lone surrogates, U+FFFE, U+FFFF) ends the writing with a failing status,
//     off Windows 0xC00CE508; tabs, line feeds and carriage returns in attributes are written as character references
//     and so survive. A failing output's status is returned; off Windows a short write is STG_E_MEDIUMFULL.
//   CreateDocument       a new CLSID_DOMDocument that opens no external entity, whatever the system's own would do
//   LoadDocument         loadXML for the text of strangers, with the same rules on every system: no external entity is
//                        opened and entity expansion is bounded; text that tries, or only declares one, is refused like
//                        text that is not well-formed, and so is text with a zero unit. A declared encoding is ignored;
//                        a U+FEFF and blanks before the declaration are allowed. A document that refuses for these
//                        reasons stays as it was. How deep elements and entities may nest is the system's own
//   LoadNarrowDocument   LoadDocument for a text in the narrow code page (CP_THREAD_ACP), which comes piece by piece
//                        and need not be held as a whole where the system can do without. It may be refused before it
//                        was read to its end. Raises what `read` raises, but for a lack of memory
//   FindDigits, FindAscii  the short way to an attribute's value: S_OK, and the value, when the element has it, it is a
//                        number of decimal digits alone, or ASCII text, and the system can tell without the steps
//                        between; S_FALSE says nothing about the attribute
//   AddNumber, AddText   the short way to a new attribute: S_OK when the element has it now; S_FALSE when nothing was
//                        done. Every system may always answer S_FALSE to these four, and Windows does. Memory that runs
//                        short is E_OUTOFMEMORY
//   GetContentHandler    the content handler of a writer, to be given to a reader
#pragma once

#include <ondrel/platform/com.h>
#include <ondrel/platform/narrow_text_reader.h>
#include <ondrel/platform/os/xml.h>

namespace ondrel::platform {

ONDREL_SYSTEM_API HRESULT CreateDocument(IXMLDOMDocument** document);
ONDREL_SYSTEM_API HRESULT LoadDocument(IXMLDOMDocument* document, BSTR text, VARIANT_BOOL* loaded);
ONDREL_SYSTEM_API HRESULT LoadNarrowDocument(IXMLDOMDocument* document, const NarrowTextReader& read,
                                             VARIANT_BOOL* loaded);
ONDREL_SYSTEM_API HRESULT FindDigits(IXMLDOMNamedNodeMap* attributes, BSTR name, LONGLONG& number);
ONDREL_SYSTEM_API HRESULT FindAscii(IXMLDOMNamedNodeMap* attributes, BSTR name, CString& text);
ONDREL_SYSTEM_API HRESULT AddNumber(IXMLDOMNamedNodeMap* attributes, BSTR name, LONGLONG number);
ONDREL_SYSTEM_API HRESULT AddText(IXMLDOMNamedNodeMap* attributes, BSTR name, const CString& text);
ONDREL_SYSTEM_API HRESULT GetContentHandler(IMXWriter* writer, ISAXContentHandler** handler);

}  // namespace ondrel::platform
