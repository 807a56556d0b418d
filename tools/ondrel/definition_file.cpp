// The load of either form, with a look at the file before it and an explanation after it.
#include "definition_file.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

#include <ondrel/platform/program.h>
#include <ondrel/platform/xml_references.h>

#include "byte_order_marks.h"
#include "image_inspector.h"
#include "nameless_script.h"
#include "printable.h"

namespace ondrel::command {
namespace {

constexpr UINT kReadingSize = 64 * 1024;
constexpr std::size_t kSampleSize = 4096;                               // enough to tell the forms apart
constexpr ULONGLONG kLargestProject = std::numeric_limits<int>::max();  // bytes; the library loads no longer text

constexpr std::string_view kBlanks = " \t\r\n";

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

void RequireProjectSize(const Definition& definition, ULONGLONG bytes) {
  if (bytes <= kLargestProject) return;
  throw Failure(definition.At(0), "it is too large for a project file; name another file", StatusText(E_OUTOFMEMORY));
}

void LoadProject(Definition& definition, const BeforeLoad& beforeLoad) {
  const CString path = platform::FullPath(platform::PathFromUtf8(definition.file));
  definition.folder = path.Left(path.ReverseFind('\\') + 1);
  CMMCObjectSet::TransformFactory factory = KeepEveryFile;
  if (beforeLoad != nullptr) {
    factory = beforeLoad(definition);
    RequireProjectSize(definition, definition.text.size());
  }
  RequireEnd(definition);
  // The bytes that were looked at are the bytes that are loaded, whatever happens to the file meanwhile.
  CMemFile memory(definition.text.data(), static_cast<UINT>(definition.text.size()));
  CVellum archive(&memory, CArchive::load);
  archive.m_strFileName = path;
  try {
    definition.set.SerializeProjectFile(archive, std::move(factory));
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

/// Has `load` load what was read. Why it does not load goes to `refusal`, where there is one.
template <class Load>
void LoadOrTell(std::optional<Failure>* refusal, Load load) {
  try {
    load();
  } catch (const Failure& failure) {
    if (refusal == nullptr) throw;
    *refusal = failure;
  }
}

/// How a definition is read.
struct Reading {
  TextReading text = TextReading::utf8;
  bool alsoImages = true;                     ///< Otherwise projects alone are wanted.
  BeforeLoad beforeLoad = nullptr;            ///< Of a project.
  std::optional<Failure>* refusal = nullptr;  ///< Takes why the definition does not load, which is raised otherwise.
};

void Load(Definition& definition, const Reading& reading) {
  CFile source;
  OpenForReading(source, definition.file);
  std::string bytes = ReadBytes(source, kSampleSize);
  if (bytes.empty()) {
    throw Failure(definition.At(0),
                  reading.alsoImages ? "the file is empty; name a project file or an object image"
                             : "the file is empty; name a project file",
                  StatusText(kInvalidData));
  }
  if (LooksLikeXml(bytes)) {
    RequireProjectSize(definition, source.GetLength());
    bytes += ReadBytes(source, std::string::npos);
    definition.SetText(std::move(bytes), reading.text);
    RequireProjectSize(definition, definition.text.size());  // references take more bytes than what they stand for
    LoadOrTell(reading.refusal, [&] { LoadProject(definition, reading.beforeLoad); });
  } else if (reading.alsoImages) {
    source.Seek(0, CFile::begin);
    LoadOrTell(reading.refusal, [&] { LoadObjectImage(definition, source); });
  } else {
    throw Failure(definition.At(0),
                  "it is no project file, which is XML text; name the file that an image is made from",
                  StatusText(kInvalidData));
  }
}

std::unique_ptr<Definition> Read(const std::string& file, const Reading& reading) {
  auto definition = std::make_unique<Definition>();
  definition->file = file;
  try {
    Load(*definition, reading);
  } catch (const std::exception&) {
    throw CurrentFailure({file});
  }
  return definition;
}

}  // namespace

Definition::Definition() : set(StoreCodeFile) {}

const ProjectInspector& Definition::Project() const {
  if (!m_project) m_project.emplace(Decode(text), folder);
  return *m_project;
}

const CString& Definition::PlaceOf(const CString& path) const {
  const auto place = codeFilePlaces.find(path);
  return place == codeFilePlaces.end() ? path : place->second;
}

CString Definition::DisplayPath(const CString& path) const {
  const bool inFolder = !folder.IsEmpty() && path.Find(folder) == 0;
  return inFolder ? path.Mid(folder.GetLength()) : path;
}

void Definition::SetText(std::string bytes, TextReading reading) {
  if (reading == TextReading::utf8) {
    if (auto referenced = platform::ReferenceValues(bytes)) {
      m_fileBytes = std::move(bytes);
      text = std::move(*referenced);
      return;
    }
  }
  text = std::move(bytes);
}

void Definition::ReplaceText(std::string bytes) {
  if (!m_fileBytes) m_fileBytes = std::move(text);
  text = std::move(bytes);
  m_project.reset();
}

std::unique_ptr<Definition> ReadProject(const std::string& file, TextReading reading, const BeforeLoad& beforeLoad) {
  return Read(file, {reading, false, beforeLoad});
}

std::unique_ptr<Definition> ReadProjectText(const std::string& file, std::string text) {
  auto definition = std::make_unique<Definition>();
  definition->file = file;
  try {
    definition->SetText(std::move(text), TextReading::narrow);
    RequireProjectSize(*definition, definition->text.size());
    LoadProject(*definition, nullptr);
  } catch (const std::exception&) {
    throw CurrentFailure({file});
  }
  return definition;
}

std::unique_ptr<Definition> ReadDefinition(const std::string& file, TextReading reading) {
  return Read(file, {reading});
}

InspectedDefinition InspectDefinition(const std::string& file, TextReading reading) {
  InspectedDefinition inspected;
  inspected.definition = Read(file, {reading, true, nullptr, &inspected.refusal});
  return inspected;
}

}  // namespace ondrel::command
