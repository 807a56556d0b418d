// A compile that is compared instead of kept, and a look at every part of an image beside that of its project.
#include "extract/image_comparison.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <tuple>

#include "extract/image_walk.h"
#include "printable.h"

namespace ondrel::command {
namespace {

constexpr int kComparisonBuffer = 64 * 1024;

/// Takes what is written for a copy of another file.
class ComparingFile : public CFile {
 public:
  explicit ComparingFile(CFile& original) : m_original(original) { m_original.Seek(0, CFile::begin); }

  void Write(const void* bytes, UINT count) override {
    const auto* written = static_cast<const char*>(bytes);
    while (count > 0 && !m_difference) {
      char block[kComparisonBuffer];
      const UINT wanted = std::min(count, static_cast<UINT>(sizeof block));
      const UINT read = m_original.Read(block, wanted);
      const char* const end = std::mismatch(block, block + read, written).first;
      m_position += static_cast<ULONGLONG>(end - block);
      if (end != block + wanted) m_difference = m_position;
      written += wanted;
      count -= wanted;
    }
  }
  void Flush() override {}
  void Close() override {}

  /// When all has been written.
  std::optional<ULONGLONG> Difference() const {
    if (m_difference || m_position == m_original.GetLength()) return m_difference;
    return m_position;
  }

 private:
  CFile& m_original;
  ULONGLONG m_position = 0;  ///< Behind the bytes that are the same.
  std::optional<ULONGLONG> m_difference;
};

std::string StoredIcon(const CMMCObjectIcon& icon) {
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  icon.Serialize(archive);
  archive.Close();
  return {reinterpret_cast<const char*>(file.GetBytes()), static_cast<std::size_t>(file.GetLength())};
}

std::string BothSizes(const CMMCObjectIcon& icon) {
  const tagBITMAP& large = icon.GetColourBitmap(true);
  const tagBITMAP& smallIcon = icon.GetColourBitmap(false);
  return SizeText(large.bmWidth, large.bmHeight) + " and " + SizeText(smallIcon.bmWidth, smallIcon.bmHeight);
}

std::string WhyMissing(const CMMCObjectParams& record, bool isDialog) {
  if (isDialog) return " has a name with characters that XML does not hold and is not in the project";
  return record.GetCookie() < 0 ? " has a negative cookie and is not in the project"
                                : " lies below a node with a negative cookie and is not in the project";
}

class DifferenceFinder : public ImageVisitor {
 public:
  explicit DifferenceFinder(Definition& project) : m_project(project) {
    const std::list<__int64> icons = project.set.GetIconFiles();
    m_icons.insert(icons.begin(), icons.end());
  }

  void OnNode(__int64, CMMCObjectParams&& record) override { CompareRecord(record, false); }
  void OnDialog(CMMCObjectParams&& record) override { CompareRecord(record, true); }
  void OnIconFile(__int64 cookie, const CMMCObjectIcon& icon) override;
  void OnCodeFile(__int64 cookie, const std::vector<char>&, bool fromMemory) override {
    if (m_icons.contains(cookie)) {
      Add("code file " + std::to_string(cookie) + " has the cookie of an icon file, which a compile refuses");
    }
    if (fromMemory && !std::exchange(m_hasMemoryFiles, true)) {
      Add("the image holds code files from memory, which a compile writes elsewhere");
    }
  }

  std::vector<std::string>& Reasons() { return m_reasons; }

 private:
  void Add(std::string reason) { m_reasons.push_back(std::move(reason)); }
  void CompareRecord(const CMMCObjectParams& record, bool isDialog);

  Definition& m_project;
  std::set<__int64> m_icons;
  bool m_hasMemoryFiles = false;
  std::vector<std::string> m_reasons;
};

void DifferenceFinder::CompareRecord(const CMMCObjectParams& record, bool isDialog) {
  const std::string label = (isDialog ? "dialog " : "node ") + std::to_string(record.GetCookie());
  CMMCObjectParams* found = nullptr;
  if (!m_project.set.GetParams(record.GetCookie(), found)) {
    Add(label + WhyMissing(record, isDialog));
    return;
  }
  const auto tagsOf = [](const CMMCObjectParams::QueryList& queries) {
    std::vector<CString> tags;
    for (const auto& [tag, file] : queries) tags.push_back(tag);
    return tags;
  };
  const auto childQueries = record.GetChildQueries();
  const auto foundQueries = found->GetChildQueries();
  if (record.GetNodeType() != found->GetNodeType()) {
    Add(label + " has the type " + std::to_string(record.GetNodeType()) + ", which a project does not hold");
  } else if (record.GetName() != found->GetName()) {
    Add(label + " has characters in its name that XML does not hold");
  } else if (childQueries.size() != foundQueries.size()) {
    Add(label + " is a Dialog with child queries, which a project does not hold");
  } else if (tagsOf(childQueries) != tagsOf(foundQueries) ||
             tagsOf(record.GetRenderQueries()) != tagsOf(found->GetRenderQueries())) {
    Add(label + " has characters in a tag that XML does not hold");
  }
}

void DifferenceFinder::OnIconFile(__int64 cookie, const CMMCObjectIcon& icon) {
  const CMMCObjectIcon* made = nullptr;
  if (!m_project.set.GetIconFile(cookie, &made) || StoredIcon(icon) == StoredIcon(*made)) return;
  const std::string sizes = BothSizes(icon);
  const std::string madeSizes = BothSizes(*made);
  Add("icon " + std::to_string(cookie) + " has images " +
      (sizes == madeSizes ? "of a form that no icon file gives" : "of " + sizes + ", an icon file gives " + madeSizes));
}

}  // namespace

std::optional<ULONGLONG> FirstDifference(Definition& project, CFile& image) {
  ComparingFile file(image);
  CVellum archive(&file, CArchive::store | CArchive::bNoFlushOnDelete, kComparisonBuffer);
  project.set.SerializeObjects(archive, 0, 0);
  archive.Close();
  return file.Difference();
}

std::vector<std::string> ReasonsForDifference(Definition& project, CFile& image) {
  DifferenceFinder finder(project);
  WalkImage(image, finder);
  return std::move(finder.Reasons());
}

}  // namespace ondrel::command
