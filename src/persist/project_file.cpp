// The project file: the definition as one XML document that names icon files and code files by path.

#include <ondrel/MMCObjectSet.h>

#include <algorithm>
#include <array>
#include <limits>

#include "persist/dom.h"
#include "statuses.h"

using ondrel::FindText;
using ondrel::GetAttributes;
using ondrel::kCookieAttribute;
using ondrel::kInvalidData;
using ondrel::kNameAttribute;
using ondrel::kNotFound;
using ondrel::ReadCookie;
using ondrel::ReadText;
using ondrel::WriteCookie;
using ondrel::WriteText;
using ondrel::platform::CreateDocument;
using ondrel::platform::GetContentHandler;
using ondrel::platform::LoadNarrowDocument;

namespace {

constexpr BstrLiteral kXml(_T("xml"));
constexpr BstrLiteral kXmlData(_T("version='1.0' encoding='utf-8'"));
constexpr BstrLiteral kEncoding(_T("utf-8"));
constexpr BstrLiteral kProjectElement(_T("Project"));
constexpr BstrLiteral kNodeGroupElement(_T("NodeGroup"));
constexpr BstrLiteral kDialogGroupElement(_T("DialogGroup"));
constexpr BstrLiteral kFileGroupElement(_T("FileGroup"));
constexpr BstrLiteral kIconElement(_T("Icon"));
constexpr BstrLiteral kFileElement(_T("File"));
constexpr BstrLiteral kDialogElement(_T("Dialog"));
constexpr BstrLiteral kPathAttribute(_T("Path"));

CComPtr<IXMLDOMDocument> MakeDocument() {
  CComPtr<IXMLDOMDocument> document;
  AtlThrowIfFailed(CreateDocument(&document));
  return document;
}

/// The folder of the archive's file name with its closing backslash; empty when the name has no backslash, so that
/// every path begins with it.
CString ProjectDirectory(const CVellum& archive) {
  return archive.m_strFileName.Left(archive.m_strFileName.ReverseFind(_T('\\')) + 1);
}

HRESULT AppendElement(IXMLDOMNode* parent, IXMLDOMElement* element) { return parent->appendChild(element, nullptr); }

/// Writes one icon file or code file: its cookie, and its path relative to the project's directory where it lies there.
HRESULT WriteFileElement(IXMLDOMDocument* document, IXMLDOMElement* group, BSTR elementName, const CString& path,
                         __int64 cookie, const CString& directory) {
  CComPtr<IXMLDOMElement> element;
  CComPtr<IXMLDOMNamedNodeMap> attributes;
  HRESULT status = document->createElement(elementName, &element);
  if (SUCCEEDED(status)) status = GetAttributes(element, attributes);
  if (SUCCEEDED(status)) status = WriteCookie(document, attributes, kCookieAttribute, cookie);
  if (SUCCEEDED(status)) {
    const bool inside = path.View().starts_with(directory.View());
    const CString text = inside ? path.Mid(directory.GetLength()) : path;
    status = inside ? WriteText(document, attributes, kNameAttribute, text)
                    : WriteText(document, attributes, kPathAttribute, text);
  }
  if (SUCCEEDED(status)) status = AppendElement(group, element);
  return status;
}

/// Reads one icon file or code file. A "Name" is relative to the directory that the project is loaded from now.
HRESULT ReadFileElement(IXMLDOMNode* element, const CString& directory, CString& path, __int64& cookie) {
  CComPtr<IXMLDOMNamedNodeMap> attributes;
  HRESULT status = GetAttributes(element, attributes);
  if (FAILED(status)) return status;
  CString text;
  status = FindText(attributes, kNameAttribute, text);
  const bool relative = status == S_OK;
  if (status == S_FALSE) status = ReadText(attributes, kPathAttribute, text);
  if (SUCCEEDED(status)) status = ReadCookie(attributes, kCookieAttribute, cookie);
  if (SUCCEEDED(status)) path = relative ? directory + text : text;
  return status;
}

/// Calls `read` for each node of a list, until one fails. 0, or the failing status.
template <class Read>
HRESULT ForEachNode(IXMLDOMNodeList* nodes, const Read& read) {
  for (;;) {
    CComPtr<IXMLDOMNode> node;
    HRESULT status = nodes->nextNode(&node);
    if (status == S_FALSE) return S_OK;
    if (SUCCEEDED(status)) status = read(node);
    if (FAILED(status)) return status;
  }
}

/// Calls `read` for each child of `parent` of a name, until one fails. 0, or the failing status.
template <class Read>
HRESULT ForEachChild(IXMLDOMNode* parent, BSTR name, const Read& read) {
  CComPtr<IXMLDOMNodeList> children;
  const HRESULT status = parent->selectNodes(name, &children);
  return FAILED(status) ? status : ForEachNode(children, read);
}

/// Writes a document to a memory stream as indented UTF-8 text.
CComPtr<IStream> WriteDocument(IXMLDOMDocument* document) {
  CComPtr<IStream> stream;
  AtlThrowIfFailed(CreateStreamOnHGlobal(nullptr, TRUE, &stream));
  CComPtr<IMXWriter> writer;
  AtlThrowIfFailed(writer.CoCreateInstance(CLSID_MXXMLWriter60, nullptr, CLSCTX_ALL));
  CComPtr<ISAXContentHandler> handler;
  AtlThrowIfFailed(GetContentHandler(writer, &handler));
  AtlThrowIfFailed(writer->put_omitXMLDeclaration(VARIANT_FALSE));
  AtlThrowIfFailed(writer->put_standalone(VARIANT_TRUE));
  AtlThrowIfFailed(writer->put_indent(VARIANT_TRUE));
  AtlThrowIfFailed(writer->put_encoding(kEncoding));
  AtlThrowIfFailed(writer->put_output(CComVariant(static_cast<IUnknown*>(stream))));
  CComPtr<ISAXXMLReader> reader;
  AtlThrowIfFailed(reader.CoCreateInstance(CLSID_SAXXMLReader60, nullptr, CLSCTX_ALL));
  AtlThrowIfFailed(reader->putContentHandler(handler));
  AtlThrowIfFailed(reader->parse(CComVariant(static_cast<IDispatch*>(document))));
  return stream;
}

/// Writes what a memory stream holds up to its position to the archive, without a length before it.
void StoreStream(IStream* stream, CVellum& archive) {
  /// Holds the bytes of a memory block.
  struct BlockLock {
    explicit BlockLock(HGLOBAL locked) : block(locked), bytes(GlobalLock(locked)) {
      if (bytes == nullptr) AtlThrow(HRESULT_FROM_WIN32(GetLastError()));
    }
    ~BlockLock() { GlobalUnlock(block); }
    HGLOBAL block;
    const void* bytes;
  };

  ULARGE_INTEGER position = {};
  AtlThrowIfFailed(stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_CUR, &position));
  // Text of 2 GiB and more reads as a negative count here and is refused.
  const auto length = static_cast<LONG>(static_cast<DWORD>(position.QuadPart));
  if (length < 0) AtlThrow(E_INVALIDARG);
  HGLOBAL block = nullptr;
  AtlThrowIfFailed(GetHGlobalFromStream(stream, &block));
  const BlockLock text(block);
  archive.Write(text.bytes, static_cast<UINT>(length));
}

/// Reads the text of the file under the archive into a document. By the narrow code page, although saving writes UTF-8:
/// definitions of this form have always been read so, and text outside ASCII survives as character references alone.
void ReadDocument(CVellum& archive, IXMLDOMDocument* document) {
  ULONGLONG left = archive.GetFile()->GetLength();
  if (left > static_cast<ULONGLONG>(std::numeric_limits<int>::max())) AfxThrowMemoryException();
  // The file's length is a claim: the text ends where there are no more bytes.
  const auto read = [&](char* buffer, std::size_t size) {
    const auto wanted = static_cast<UINT>(std::min<ULONGLONG>(size, left));
    const UINT count = archive.Read(buffer, wanted);
    left = count < wanted ? 0 : left - count;
    return std::size_t{count};
  };
  VARIANT_BOOL loaded = VARIANT_FALSE;
  const HRESULT status = LoadNarrowDocument(document, read, &loaded);
  // A file that cannot be read to its end is told before a text that is no project.
  std::array<char, 4096> unread;
  while (left > 0) read(unread.data(), unread.size());
  AtlThrowIfFailed(status);
  if (status == S_FALSE || loaded == VARIANT_FALSE) AtlThrow(kInvalidData);
}

}  // namespace

void CMMCObjectSet::SerializeProjectFile(CVellum& archive, TransformFactory factory) {
  if (archive.IsStoring()) {
    StoreProject(archive);
  } else {
    LoadProject(archive, factory);
  }
  SetModifiedFlag(FALSE);
}

void CMMCObjectSet::StoreProject(CVellum& archive) {
  const CComPtr<IXMLDOMDocument> document = MakeDocument();
  const CString directory = ProjectDirectory(archive);
  const auto createElement = [&](BSTR name) {
    CComPtr<IXMLDOMElement> element;
    AtlThrowIfFailed(document->createElement(name, &element));
    return element;
  };

  CComPtr<IXMLDOMProcessingInstruction> declaration;
  AtlThrowIfFailed(document->createProcessingInstruction(kXml, kXmlData, &declaration));
  AtlThrowIfFailed(document->appendChild(declaration, nullptr));
  const CComPtr<IXMLDOMElement> project = createElement(kProjectElement);

  // One top-level node is saved, the first: the form has always held a single tree.
  const CComPtr<IXMLDOMElement> nodeGroup = createElement(kNodeGroupElement);
  const std::list<__int64> topNodes = GetChildNodes(RootNode);
  if (!topNodes.empty()) AtlThrowIfFailed(SerializeNode(topNodes.front(), document, nodeGroup));
  AtlThrowIfFailed(AppendElement(project, nodeGroup));

  const CComPtr<IXMLDOMElement> dialogGroup = createElement(kDialogGroupElement);
  for (const __int64 cookie : GetDialogs()) {
    CMMCObjectParams* params = nullptr;
    if (!GetParams(cookie, params)) AtlThrow(kNotFound);
    const CComPtr<IXMLDOMElement> dialog = createElement(kDialogElement);
    AtlThrowIfFailed(params->Serialize(document, dialog));
    AtlThrowIfFailed(AppendElement(dialogGroup, dialog));
  }
  AtlThrowIfFailed(AppendElement(project, dialogGroup));

  const CComPtr<IXMLDOMElement> fileGroup = createElement(kFileGroupElement);
  for (const auto& [path, cookie] : m_tables.iconPaths) {
    AtlThrowIfFailed(WriteFileElement(document, fileGroup, kIconElement, path, cookie, directory));
  }
  for (const auto& [path, file] : m_tables.codePaths) {
    AtlThrowIfFailed(WriteFileElement(document, fileGroup, kFileElement, path, file.first, directory));
  }
  AtlThrowIfFailed(AppendElement(project, fileGroup));
  AtlThrowIfFailed(AppendElement(document, project));

  StoreStream(WriteDocument(document), archive);
}

void CMMCObjectSet::LoadProject(CVellum& archive, const TransformFactory& factory) {
  const CComPtr<IXMLDOMDocument> document = MakeDocument();
  const CString directory = ProjectDirectory(archive);
  ReadDocument(archive, document);

  Tables former;
  bool formerlyModified = false;
  bool formerlyChanged = false;
  {
    CSingleLock lock(&m_lock, TRUE);
    formerlyModified = IsModified();
    formerlyChanged = m_cookiesChanged;
    std::swap(former, m_tables);
    Initialise();
  }
  try {
    AtlThrowIfFailed(ReadProject(document, directory, factory));
  } catch (...) {
    CSingleLock lock(&m_lock, TRUE);
    std::swap(former, m_tables);
    ++m_edition;
    SetModifiedFlag(formerlyModified ? TRUE : FALSE);
    if (formerlyChanged) m_cookiesChanged = true;
    throw;
  }
}

HRESULT CMMCObjectSet::ReadProject(IXMLDOMDocument* document, const CString& directory,
                                   const TransformFactory& factory) {
  CComPtr<IXMLDOMElement> root;
  HRESULT status = document->get_documentElement(&root);
  if (status != S_OK) return FAILED(status) ? status : kInvalidData;
  CComBSTR rootName;
  status = root->get_nodeName(&rootName);
  if (FAILED(status)) return status;
  if (VarBstrCmp(rootName, kProjectElement, LOCALE_USER_DEFAULT, 0) != VARCMP_EQ) return kInvalidData;

  CComPtr<IXMLDOMNodeList> groups;
  status = root->getElementsByTagName(kNodeGroupElement, &groups);
  if (SUCCEEDED(status)) status = DeserializeNodes(RootNode, groups);
  if (SUCCEEDED(status)) status = root->getElementsByTagName(kDialogGroupElement, &groups);
  if (FAILED(status)) return status;
  status = ForEachNode(groups, [&](IXMLDOMNode* group) {
    return ForEachChild(group, kDialogElement, [&](IXMLDOMNode* dialog) {
      CMMCObjectParams params;
      const HRESULT read = params.Deserialize(dialog);
      const __int64 cookie = params.GetCookie();
      return FAILED(read) ? read : AddDialog(cookie, std::move(params));
    });
  });
  if (SUCCEEDED(status)) status = root->getElementsByTagName(kFileGroupElement, &groups);
  if (FAILED(status)) return status;

  // Of several groups of files only the first has ever been read, and definitions exist that have more.
  CComPtr<IXMLDOMNode> fileGroup;
  status = groups->nextNode(&fileGroup);
  if (status != S_OK) return FAILED(status) ? status : S_OK;
  CString path;
  __int64 cookie = 0;
  status = ForEachChild(fileGroup, kIconElement, [&](IXMLDOMNode* icon) {
    const HRESULT read = ReadFileElement(icon, directory, path, cookie);
    return FAILED(read) ? read : InsertIconFile(path, cookie);
  });
  if (FAILED(status)) return status;
  return ForEachChild(fileGroup, kFileElement, [&](IXMLDOMNode* file) {
    const HRESULT read = ReadFileElement(file, directory, path, cookie);
    if (FAILED(read)) return read;
    Transform transform = factory(path);
    CSingleLock lock(&m_lock, TRUE);
    return InsertCodeFile(path, cookie, std::move(transform));
  });
}
