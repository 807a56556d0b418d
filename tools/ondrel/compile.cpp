// From a project file to an object image, with everything that can be checked before the first byte is written.
#include "compile.h"

#include <limits>
#include <map>

#include <ondrel/platform/program.h>

#include "definition_file.h"
#include "output.h"
#include "output_place.h"
#include "printable.h"
#include "tree_drawing.h"

namespace ondrel::command {
namespace {

constexpr int kWritingSize = 64 * 1024;
constexpr ULONGLONG kLargestCodeFile =
    std::numeric_limits<std::uint32_t>::max();  // its length takes 32 bits in an image

/// Looks at every code file before the image is begun, while the line that names it is at hand.
void RequireCodeFiles(const Definition& definition) {
  std::map<__int64, const ProjectFile*> icons;
  for (const ProjectFile& icon : definition.project->IconFiles()) icons.emplace(*icon.cookie, &icon);
  for (const ProjectFile& file : definition.project->CodeFiles()) {
    const auto label = [&] {
      return "code file " + std::to_string(*file.cookie) + ", " + Quoted(file.spelling) + ": ";
    };
    if (const auto icon = icons.find(*file.cookie); icon != icons.end()) {
      // The set looks for a path among the icon files first, and would store the icon's bytes for the code file.
      throw Failure(definition.At(file.line),
                    label() + "its cookie is also that of the icon file in line " + std::to_string(icon->second->line) +
                        "; give it another",
                    StatusText(HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS)));
    }
    CFile source;
    std::unique_ptr<CFileException> fault;
    if (!source.Open(*file.path, CFile::modeRead | CFile::shareDenyWrite, &fault)) {
      const HRESULT status = StatusOf(*fault);
      throw Failure(definition.At(file.line), label() + ExplainFileFault(*file.path, status), StatusText(status));
    }
    if (source.GetLength() > kLargestCodeFile) {
      throw Failure(definition.At(file.line), label() + "it has 4 GiB or more; an image holds smaller files only",
                    StatusText(E_INVALIDARG));
    }
  }
}

/// An image holds one top-level node at most.
Failure ExplainTopNodes(Definition& definition, const CArchiveException& raised) {
  const auto topNodes = definition.set.GetChildNodes(CMMCObjectSet::RootNode);
  if (topNodes.size() < 2) return {definition.At(0), raised.what(), CauseText(raised.m_cause)};
  const __int64 second = *std::next(topNodes.begin());
  return {definition.At(definition.project->LineOfObject(second)),
          "node " + std::to_string(second) + " is a second top-level node, an image holds one; put it below node " +
              std::to_string(topNodes.front()),
          CauseText(raised.m_cause)};
}

/// The number of bytes written.
ULONGLONG WriteImage(Definition& definition, const std::string& image) {
  const CString target = platform::PathFromUtf8(image);
  try {
    platform::ReplacementFile file(target);
    // A failed write must not be followed by another one from the destructor.
    CVellum archive(&file, CArchive::store | CArchive::bNoFlushOnDelete, kWritingSize);
    definition.set.SerializeObjects(archive, 0, 0);
    archive.Close();
    const ULONGLONG bytes = file.GetLength();
    file.Commit();
    return bytes;
  } catch (const CArchiveException& raised) {
    throw ExplainTopNodes(definition, raised);
  } catch (const CFileException& fault) {
    const bool isImage = fault.m_strFileName == target;
    const std::string file = isImage ? image : platform::PathToUtf8(definition.DisplayPath(fault.m_strFileName));
    throw Failure({file}, ExplainFileFault(fault.m_strFileName, StatusOf(fault)), StatusText(StatusOf(fault)));
  } catch (const std::exception&) {
    throw CurrentFailure({image});
  }
}

}  // namespace

void Compile(const std::string& project, const std::string& image) {
  const auto definition = ReadProject(project);
  RequirePlace(image, "the image", SourcesOf(*definition));
  RequireCodeFiles(*definition);
  const ULONGLONG bytes = WriteImage(*definition, image);
  WriteOutput(PrintablePath(image) + ": " + SummaryText(definition->set) + ", " + Counted(bytes, "byte", "bytes") +
              '\n');
}

}  // namespace ondrel::command
