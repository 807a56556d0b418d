// From a definition to an image, and what is wrong when there is none.
#include "compile/image_file.h"

#include <algorithm>
#include <list>

#include "compile/code_file_faults.h"
#include "failure.h"

namespace ondrel::command {
namespace {

constexpr int kWritingSize = 64 * 1024;

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
void BeginReadingCodeFiles(Definition& definition) {
  constexpr std::size_t kSamples = 4;
  constexpr ULONGLONG kMostBytes = ULONGLONG{256} << 20;  // far more than code takes, and no burden for the memory
  const std::list<__int64> cookies = definition.set.GetCodeFiles();  // in the order in which they are stored
  const auto placeOf = [&definition](__int64 cookie) {
    CString path;
    definition.set.GetFilePath(cookie, path);
    return definition.PlaceOf(path);
  };
  const std::size_t step = cookies.size() / kSamples + 1;
  std::size_t index = 0;
  const bool isLeft = std::any_of(cookies.begin(), cookies.end(), [&](__int64 cookie) {
    return index++ % step == 0 && platform::IsLeftToDisk(placeOf(cookie));
  });
  if (!isLeft) return;
  ULONGLONG bytes = 0;
  for (auto cookie = cookies.begin(); cookie != cookies.end() && bytes < kMostBytes; ++cookie) {
    bytes += platform::BeginReading(placeOf(*cookie));
  }
}

ULONGLONG StoreImage(Definition& definition, const std::string& image, const platform::ReplacementFile* companion) {
  BeginReadingCodeFiles(definition);
  platform::ReplacementFile file(platform::PathFromUtf8(image));
  if (companion != nullptr && file.SharesPlaceWith(*companion)) {
    throw Failure({image}, "the image would overwrite the dependency file; give it another name",
                  StatusText(E_INVALIDARG));
  }
  // A failed write must not be followed by another one from the destructor.
  CVellum archive(&file, CArchive::store | CArchive::bNoFlushOnDelete, kWritingSize);
  definition.set.SerializeObjects(archive, 0, 0);
  archive.Close();
  const ULONGLONG bytes = file.GetLength();
  file.Commit();
  return bytes;
}

}  // namespace

// To open each code file once more before the image is begun would take a tenth of the time, so it is only after a
// failure that what is wrong with them is looked for.
ULONGLONG WriteImage(Definition& definition, const std::string& image, const platform::ReplacementFile* companion) {
  try {
    return StoreImage(definition, image, companion);
  } catch (const Failure&) {
    throw;  // a filter's, which knows its file
  } catch (const CArchiveException& raised) {
    RequireCodeFiles(definition);
    throw ExplainTopNodes(definition, raised);
  } catch (const CFileException& fault) {
    RequireCodeFiles(definition);
    const bool isImage = fault.m_strFileName == platform::PathFromUtf8(image);
    const std::string file = isImage ? image : platform::PathToUtf8(definition.DisplayPath(fault.m_strFileName));
    throw Failure({file}, ExplainFileFault(fault.m_strFileName, StatusOf(fault)), StatusText(StatusOf(fault)));
  } catch (const std::exception&) {
    RequireCodeFiles(definition);
    throw CurrentFailure({image});
  }
}

}  // namespace ondrel::command
