// The load of either form, with a look at the file before it and an explanation after it.
#include "definition_file.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

#include <ondrel/platform/program.h>

#include "image_inspector.h"
#include "nameless_script.h"
#include "printable.h"

namespace ondrel::command {
namespace {

constexpr UINT kReadingSize = 64 * 1024;
constexpr std::size_t kSampleSize = 4096;                               // enough to tell the forms apart
constexpr ULONGLONG kLargestProject = std::numeric_limits<int>::max();  // bytes; the library loads no longer text

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";
constexpr std::string_view kUtf16BigEndianMark = "\xFE\xFF";
constexpr std::string_view kBlanks = " \t\r\n";

/// Stores a code file as it is, a block at a time: nothing has to hold the whole of it. Raises CFileException.
bool StoreAsItIs(const WCHAR* path, CVellum& archive, CMMCObjectSet::Transform, CMMCObjectSet::Variables) {
  CFile file(path, CFile::modeRead | CFile::shareDenyWrite);
  const ULONGLONG length = file.GetLength();
  if (length > kLargestCodeFile) AfxThrowInvalidArgException();
  archive << static_cast<DWORD>(length);
  const auto blockSize = static_cast<UINT>(std::min<ULONGLONG>(length, kReadingSize));
  const std::unique_ptr<char[]> block(new char[blockSize]);
  for (ULONGLONG missing = length; missing > 0;) {
    const UINT read = file.Read(block.get(), static_cast<UINT>(std::min<ULONGLONG>(missing, blockSize)));
    // The file was cut while it was read; what is missing must not go into an image as something else.
    if (read == 0) AfxThrowFileException(CFileException::endOfFile, -1, path);
    archive.Write(block.get(), read);
    missing -= read;
  }
  return true;
}

std::vector<char> KeepBytes(std::vector<char> bytes, const CMMCObjectSet::Variables&) { return bytes; }

CMMCObjectSet::Transform KeepEveryFile(const WCHAR*) { return KeepBytes; }

void OpenForReading(CFile& file, const std::string& name) {
  const CString path = platform::PathFromUtf8(name);
  std::unique_ptr<CFileException> fault;
  if (file.Open(path, CFile::modeRead | CFile::shareDenyWrite, &fault)) return;
  const HRESULT status = StatusOf(*fault);
  throw Failure({name}, ExplainFileFault(path, status), StatusText(status));
}

/// Up to `limit` bytes from the file's position, fewer where it ends.
std::string ReadBytes(CFile& file, std::size_t limit) {
  std::string bytes;
  while (bytes.size() < limit) {
    const std::size_t start = bytes.size();
    const UINT wanted = static_cast<UINT>(std::min<std::size_t>(limit - start, kReadingSize));
    bytes.resize(start + wanted);
    const UINT read = file.Read(bytes.data() + start, wanted);
    bytes.resize(start + read);
    if (read < wanted) break;
  }
  return bytes;
}

/// Text that a person would take for XML: the first character is "<", behind any mark and blanks. Bytes of UTF-16
/// count, so that what is wrong with them can be said.
bool LooksLikeXml(std::string_view bytes) {
  for (const std::string_view mark : {kUtf8Mark, kUtf16Mark, kUtf16BigEndianMark}) {
    if (bytes.starts_with(mark)) return true;
  }
  const std::size_t first = bytes.find_first_not_of(kBlanks);
  return first == std::string_view::npos || bytes[first] == '<';
}

CString Decode(const std::string& bytes) {
  // The library reads a project through the narrow code page, whatever the declaration says.
  const int byteCount = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(CP_THREAD_ACP, 0, bytes.data(), byteCount, nullptr, 0);
  std::basic_string<WCHAR> text(static_cast<std::size_t>(length), WCHAR{});
  MultiByteToWideChar(CP_THREAD_ACP, 0, bytes.data(), byteCount, text.data(), length);
  return CString(std::move(text));
}

Failure ExplainXmlFault(const Definition& definition) {
  const platform::XmlFault& fault = *definition.Project().Fault();
  const std::string& bytes = definition.text;
  if (bytes.starts_with(kUtf8Mark)) {
    return {definition.At(1), "the text begins with a byte-order mark; save it as UTF-8 without one",
            StatusText(kInvalidData)};
  }
  if (bytes.starts_with(kUtf16Mark) || bytes.starts_with(kUtf16BigEndianMark)) {
    return {definition.At(1), "the text is UTF-16; save it as UTF-8 without a byte-order mark",
            StatusText(kInvalidData)};
  }
  return {definition.At(fault.line), "the XML cannot be read: " + Shortened(fault.reason) + "; correct it",
          StatusText(kInvalidData)};
}

/// The icon file whose reading the load failed in with `status`, or null. `before` is the finding, if any, that raises
/// the same status: only the icons that a load comes to first are tried.
const ProjectFile* FailingIcon(const ProjectInspector& project, HRESULT status, const Finding* before) {
  for (const ProjectFile& icon : project.IconFiles()) {
    if (before != nullptr && before->order < icon.order) return nullptr;
    if (!icon.cookie || !icon.path) continue;
    if (CMMCObjectIcon().Construct(*icon.path) == status) return &icon;
  }
  return nullptr;
}

std::string ExplainIcon(const ProjectFile& icon, HRESULT status) {
  return "icon file " + std::to_string(*icon.cookie) + ", " + Quoted(icon.spelling) + ": " +
         ExplainIconFault(*icon.path, status);
}

Failure ExplainProjectLoad(const Definition& definition, const COleException& raised) {
  const ProjectInspector& project = definition.Project();
  if (project.Fault()) return ExplainXmlFault(definition);
  const Finding* const finding = project.Findings().First(raised.m_sc);
  if (const ProjectFile* const icon = FailingIcon(project, raised.m_sc, finding); icon != nullptr) {
    return {definition.At(icon->line), ExplainIcon(*icon, raised.m_sc), StatusText(raised.m_sc)};
  }
  if (finding != nullptr) return {definition.At(finding->line), finding->explanation, StatusText(finding->status)};
  return {definition.At(0), std::string("the project does not load: ") + raised.what(), StatusText(raised.m_sc)};
}

/// Refuses a project that a load would not come back from.
void RequireEnd(const Definition& definition) {
  if (NamesFileOfEveryScript(definition.text)) return;
  const ProjectInspector& project = definition.Project();
  if (project.Fault()) throw ExplainXmlFault(definition);
  if (const Finding* const obstacle = project.Findings().Obstacle(); obstacle != nullptr) {
    throw Failure(definition.At(obstacle->line), obstacle->explanation, StatusText(obstacle->status));
  }
}

void LoadProject(Definition& definition) {
  const CString path = platform::FullPath(platform::PathFromUtf8(definition.file));
  definition.folder = path.Left(path.ReverseFind('\\') + 1);
  RequireEnd(definition);
  // The bytes that were looked at are the bytes that are loaded, whatever happens to the file meanwhile.
  CMemFile memory(definition.text.data(), static_cast<UINT>(definition.text.size()));
  CVellum archive(&memory, CArchive::load);
  archive.m_strFileName = path;
  try {
    definition.set.SerializeProjectFile(archive, KeepEveryFile);
  } catch (const COleException& raised) {
    throw ExplainProjectLoad(definition, raised);
  }
}

void LoadObjectImage(Definition& definition, CFile& file) {
  definition.form = DefinitionForm::image;
  const auto explained = [&](const std::string& status, const char* otherwise) {
    const ImageFault fault = InspectImage(file);
    return Failure(definition.At(0), fault.status == status ? fault.explanation : otherwise, status);
  };
  try {
    CVellum archive(&file, CArchive::load, kReadingSize);
    definition.set.SerializeObjects(archive, 0, 0);
  } catch (const CArchiveException& raised) {
    throw explained(CauseText(raised.m_cause), raised.what());
  } catch (const COleException& raised) {
    throw explained(StatusText(raised.m_sc), raised.what());
  }
}

void Load(Definition& definition, bool alsoImages) {
  CFile source;
  OpenForReading(source, definition.file);
  std::string bytes = ReadBytes(source, kSampleSize);
  if (bytes.empty()) {
    throw Failure(definition.At(0),
                  alsoImages ? "the file is empty; name a project file or an object image"
                             : "the file is empty; name a project file",
                  StatusText(kInvalidData));
  }
  if (LooksLikeXml(bytes)) {
    if (source.GetLength() > kLargestProject) {
      throw Failure(definition.At(0), "it is too large for a project file; name another file",
                    StatusText(E_OUTOFMEMORY));
    }
    bytes += ReadBytes(source, std::string::npos);
    definition.text = std::move(bytes);
    LoadProject(definition);
  } else if (alsoImages) {
    source.Seek(0, CFile::begin);
    LoadObjectImage(definition, source);
  } else {
    throw Failure(definition.At(0),
                  "it is no project file, which is XML text; name the file that an image is made from",
                  StatusText(kInvalidData));
  }
}

std::unique_ptr<Definition> Read(const std::string& file, bool alsoImages) {
  auto definition = std::make_unique<Definition>();
  definition->file = file;
  try {
    Load(*definition, alsoImages);
  } catch (const std::exception&) {
    throw CurrentFailure({file});
  }
  return definition;
}

}  // namespace

Definition::Definition() : set(StoreAsItIs) {}

const ProjectInspector& Definition::Project() const {
  if (!m_project) m_project.emplace(Decode(text), folder);
  return *m_project;
}

CString Definition::DisplayPath(const CString& path) const {
  const bool inFolder = !folder.IsEmpty() && path.Find(folder) == 0;
  return inFolder ? path.Mid(folder.GetLength()) : path;
}

std::unique_ptr<Definition> ReadProject(const std::string& file) { return Read(file, false); }

std::unique_ptr<Definition> ReadDefinition(const std::string& file) { return Read(file, true); }

}  // namespace ondrel::command
