// From a project file to an object image, and what is wrong when there is none.
#include "compile.h"

#include <algorithm>
#include <list>
#include <map>
#include <vector>

#include <ondrel/platform/program.h>

#include "definition_file.h"
#include "output.h"
#include "output_place.h"
#include "printable.h"
#include "tree_drawing.h"

namespace ondrel::command {
namespace {

constexpr int kWritingSize = 64 * 1024;

/// Raises Failure for the first code file that cannot go into an image, with the line that names it.
void RequireCodeFiles(const Definition& definition) {
  std::map<__int64, const ProjectFile*> icons;
  for (const ProjectFile& icon : definition.Project().IconFiles()) icons.emplace(*icon.cookie, &icon);
  for (const ProjectFile& file : definition.Project().CodeFiles()) {
    const auto label = [&] {
      return "code file " + std::to_string(*file.cookie) + ", " + Quoted(file.spelling) + ": ";
    };
    if (const auto icon = icons.find(*file.cookie); icon != icons.end()) {
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

/// The set looks for a path among the icon files first, and would store the icon's bytes for a code file of its cookie.
/// Whatever else is wrong with code files comes up when the image is written.
void RequireOwnCookies(Definition& definition) {
  const std::list<__int64> icons = definition.set.GetIconFiles();
  if (icons.empty()) return;
  const std::list<__int64> listed = definition.set.GetCodeFiles();
  std::vector<__int64> codeFiles(listed.begin(), listed.end());
  std::sort(codeFiles.begin(), codeFiles.end());
  const bool isShared = std::any_of(icons.begin(), icons.end(), [&](__int64 cookie) {
    return std::binary_search(codeFiles.begin(), codeFiles.end(), cookie);
  });
  if (isShared) RequireCodeFiles(definition);
}

/// An image holds one top-level node at most.
Failure ExplainTopNodes(Definition& definition, const CArchiveException& raised) {
  const auto topNodes = definition.set.GetChildNodes(CMMCObjectSet::RootNode);
  if (topNodes.size() < 2) return {definition.At(0), raised.what(), CauseText(raised.m_cause)};
  const __int64 second = *std::next(topNodes.begin());
  return {definition.At(definition.Project().LineOfObject(second)),
          "node " + std::to_string(second) + " is a second top-level node, an image holds one; put it below node " +
              std::to_string(topNodes.front()),
          CauseText(raised.m_cause)};
}

/// Lets the system fetch the code files from the disk side by side; they are small, and read one after the other the
/// disk would be waited for at each. A few of them tell whether it has to be: where it has not, the rest is left alone.
void BeginReadingCodeFiles(CMMCObjectSet& set) {
  constexpr std::size_t kSamples = 4;
  constexpr ULONGLONG kMostBytes = ULONGLONG{256} << 20;  // far more than code takes, and no burden for the memory
  const std::list<__int64> cookies = set.GetCodeFiles();  // in the order in which they are stored
  const auto pathOf = [&set](__int64 cookie) {
    CString path;
    set.GetFilePath(cookie, path);
    return path;
  };
  const std::size_t step = cookies.size() / kSamples + 1;
  std::size_t index = 0;
  const bool isLeft = std::any_of(cookies.begin(), cookies.end(), [&](__int64 cookie) {
    return index++ % step == 0 && platform::IsLeftToDisk(pathOf(cookie));
  });
  if (!isLeft) return;
  ULONGLONG bytes = 0;
  for (auto cookie = cookies.begin(); cookie != cookies.end() && bytes < kMostBytes; ++cookie) {
    bytes += platform::BeginReading(pathOf(*cookie));
  }
}

/// The number of bytes written.
ULONGLONG StoreImage(Definition& definition, const CString& target) {
  BeginReadingCodeFiles(definition.set);
  platform::ReplacementFile file(target);
  // A failed write must not be followed by another one from the destructor.
  CVellum archive(&file, CArchive::store | CArchive::bNoFlushOnDelete, kWritingSize);
  definition.set.SerializeObjects(archive, 0, 0);
  archive.Close();
  const ULONGLONG bytes = file.GetLength();
  file.Commit();
  return bytes;
}

/// The number of bytes written. Whatever fails, the old image stands as it was. To open each code file once more before
/// the image is begun would take a tenth of the time, so it is only then that what is wrong with them is looked for.
ULONGLONG WriteImage(Definition& definition, const std::string& image) {
  const CString target = platform::PathFromUtf8(image);
  try {
    return StoreImage(definition, target);
  } catch (const CArchiveException& raised) {
    RequireCodeFiles(definition);
    throw ExplainTopNodes(definition, raised);
  } catch (const CFileException& fault) {
    RequireCodeFiles(definition);
    const bool isImage = fault.m_strFileName == target;
    const std::string file = isImage ? image : platform::PathToUtf8(definition.DisplayPath(fault.m_strFileName));
    throw Failure({file}, ExplainFileFault(fault.m_strFileName, StatusOf(fault)), StatusText(StatusOf(fault)));
  } catch (const std::exception&) {
    RequireCodeFiles(definition);
    throw CurrentFailure({image});
  }
}

}  // namespace

void Compile(const std::string& project, const std::string& image) {
  const auto definition = ReadProject(project);
  RequirePlace(image, "the image", *definition);
  RequireOwnCookies(*definition);
  const ULONGLONG bytes = WriteImage(*definition, image);
  WriteOutput(PrintablePath(image) + ": " + SummaryText(definition->set) + ", " + Counted(bytes, "byte", "bytes") +
              '\n');
}

}  // namespace ondrel::command
