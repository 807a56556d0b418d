// The walk through an image's sections that remembers where it is.
#include "image_inspector.h"

#include <map>
#include <optional>
#include <set>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "failure.h"
#include "printable.h"

namespace ondrel::command {
namespace {

constexpr int kInspectionBuffer = 64 * 1024;
constexpr const char* kBuildAnew = "; compile it anew";

class ImageInspector {
 public:
  explicit ImageInspector(CFile& file) : m_archive(&file, CArchive::load, kInspectionBuffer) {}

  /// The first fault; an image that ends early raises the archive's exception, and Place() says where.
  std::optional<ImageFault> Inspect();
  const std::string& Place() const { return m_place; }

 private:
  std::optional<ImageFault> InspectHead(ULONGLONG& topNodes);
  std::optional<ImageFault> InspectNodes(ULONGLONG topNodes);
  std::optional<ImageFault> InspectDialogs();
  std::optional<ImageFault> InspectIconFiles();
  std::optional<ImageFault> InspectCodeFiles();

  ULONGLONG ReadCount(const char* place);
  CMMCObjectParams ReadRecord(const std::string& kind, ULONGLONG ordinal);
  std::optional<ImageFault> TakeObject(__int64 cookie, const std::string& label);

  CVellum m_archive;
  std::string m_place;
  std::map<__int64, std::string> m_objects;  ///< Cookies of nodes and dialogs, and whose they are.
  std::set<__int64> m_codeFiles;
};

ImageFault Taken(const std::string& label, const std::string& what) {
  return {label + " has " + what + kBuildAnew, StatusText(HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS))};
}

std::optional<ImageFault> ImageInspector::Inspect() {
  ULONGLONG topNodes = 0;
  if (auto fault = InspectHead(topNodes)) return fault;
  if (auto fault = InspectNodes(topNodes)) return fault;
  if (auto fault = InspectDialogs()) return fault;
  if (auto fault = InspectIconFiles()) return fault;
  for (int section = 0; section < 2; ++section) {  // files from disk, then files from memory
    if (auto fault = InspectCodeFiles()) return fault;
  }
  return std::nullopt;
}

std::optional<ImageFault> ImageInspector::InspectHead(ULONGLONG& topNodes) {
  const std::string badSchema = CauseText(CArchiveException::badSchema);
  m_place = "its head";
  DWORD setVersion = 0;
  DWORD recordVersion = 0;
  m_archive >> setVersion >> recordVersion;
  if (setVersion != CMMCObjectSet::m_nCurrentVersion) {
    return ImageFault{"it is neither a project file nor an object image of version 1: it begins with version " +
                          std::to_string(setVersion) + "; name another file",
                      badSchema};
  }
  if (recordVersion != CMMCObjectParams::n_nCurrentVersion) {
    return ImageFault{"its records have version " + std::to_string(recordVersion) + ", only 1 is known" + kBuildAnew,
                      badSchema};
  }
  m_archive >> topNodes;
  if (topNodes <= 1) return std::nullopt;
  return ImageFault{
      "it claims " + std::to_string(topNodes) + " top-level nodes, an image holds one at most" + kBuildAnew, badSchema};
}

std::optional<ImageFault> ImageInspector::InspectNodes(ULONGLONG topNodes) {
  std::vector<ULONGLONG> open{topNodes};  // for each level, the nodes that are still to come
  for (ULONGLONG ordinal = 1; !open.empty();) {
    if (open.back() == 0) {
      open.pop_back();
      continue;
    }
    --open.back();
    const CMMCObjectParams record = ReadRecord("node", ordinal++);
    if (auto fault = TakeObject(record.GetCookie(), "node " + std::to_string(record.GetCookie()))) return fault;
    open.push_back(ReadCount("the number of a node's children"));
  }
  return std::nullopt;
}

std::optional<ImageFault> ImageInspector::InspectDialogs() {
  std::set<CString> names;
  const ULONGLONG count = ReadCount("the number of dialogs");
  for (ULONGLONG ordinal = 1; ordinal <= count; ++ordinal) {
    const CMMCObjectParams record = ReadRecord("dialog", ordinal);
    const std::string label = "dialog " + std::to_string(record.GetCookie());
    if (auto fault = TakeObject(record.GetCookie(), label)) return fault;
    if (!names.insert(record.GetName()).second) {
      return Taken(label, "the name " + Quoted(record.GetName()) + " of another dialog");
    }
  }
  return std::nullopt;
}

std::optional<ImageFault> ImageInspector::InspectIconFiles() {
  std::set<__int64> iconFiles;
  const ULONGLONG count = ReadCount("the number of icon files");
  for (ULONGLONG ordinal = 1; ordinal <= count; ++ordinal) {
    m_place = "icon file " + std::to_string(ordinal) + " of " + std::to_string(count);
    __int64 cookie = 0;
    m_archive >> cookie;
    CMMCObjectIcon icon;
    icon.Deserialize(m_archive);
    if (!iconFiles.insert(cookie).second) {
      return Taken("icon file " + std::to_string(cookie), "the cookie of another icon file");
    }
  }
  return std::nullopt;
}

std::optional<ImageFault> ImageInspector::InspectCodeFiles() {
  const ULONGLONG count = ReadCount("the number of code files");
  std::vector<char> contents;
  for (ULONGLONG ordinal = 1; ordinal <= count; ++ordinal) {
    m_place = "code file " + std::to_string(ordinal) + " of " + std::to_string(count);
    __int64 cookie = 0;
    m_archive >> cookie;
    m_archive.Read(contents);
    if (!m_codeFiles.insert(cookie).second) {
      return Taken("code file " + std::to_string(cookie), "the cookie of another code file");
    }
  }
  return std::nullopt;
}

ULONGLONG ImageInspector::ReadCount(const char* place) {
  m_place = place;
  ULONGLONG count = 0;
  m_archive >> count;
  return count;
}

CMMCObjectParams ImageInspector::ReadRecord(const std::string& kind, ULONGLONG ordinal) {
  m_place = "the record of its " + kind + " no. " + std::to_string(ordinal);
  CMMCObjectParams record;
  try {
    record.Deserialize(m_archive);
  } catch (const CArchiveException&) {
    // What was read is kept: the cookie comes first.
    if (record.GetCookie() != 0) m_place += ", cookie " + std::to_string(record.GetCookie());
    throw;
  }
  return record;
}

std::optional<ImageFault> ImageInspector::TakeObject(__int64 cookie, const std::string& label) {
  const auto [taken, isNew] = m_objects.try_emplace(cookie, label);
  if (isNew) return std::nullopt;
  const bool fromNode = taken->second.starts_with("node");
  return Taken(label, std::string("the cookie of another ") + (fromNode ? "node" : "dialog"));
}

}  // namespace

ImageFault InspectImage(CFile& file) {
  file.Seek(0, CFile::begin);
  const ULONGLONG length = file.GetLength();
  ImageInspector inspector(file);
  try {
    return inspector.Inspect().value_or(ImageFault{});
  } catch (const CArchiveException& raised) {
    return {"it ends early, after " + Counted(length, "byte", "bytes") + ", in " + inspector.Place() + kBuildAnew,
            CauseText(raised.m_cause)};
  }
}

}  // namespace ondrel::command
