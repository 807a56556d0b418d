#include "support/model/set_forms.h"

#include <utility>

#include "support/archive_bytes.h"
#include "support/model/digest.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

std::string PathOf(const CMMCObjectSet& set, __int64 cookie) {
  CString path;
  return set.GetFilePath(cookie, path) ? "path " + ondrel::test::Describe(path) : "no path";
}

}  // namespace

bool LeaveToSet(const WCHAR*, CVellum&, CMMCObjectSet::Transform, CMMCObjectSet::Variables) { return false; }

std::vector<char> Unchanged(std::vector<char> bytes, CMMCObjectSet::Variables) { return bytes; }

CMMCObjectSet::Transform UnchangedFor(const WCHAR*) { return Unchanged; }

std::string SavedProject(CMMCObjectSet& set, LPCWSTR fileName) {
  return Stored([&](CVellum& archive) {
    archive.m_strFileName = fileName;
    set.SerializeProjectFile(archive, nullptr);
  });
}

void LoadProject(CMMCObjectSet& set, std::string_view bytes, LPCWSTR fileName,
                 CMMCObjectSet::TransformFactory factory) {
  LoadingArchive archive(bytes);
  archive->m_strFileName = fileName;
  set.SerializeProjectFile(*archive, std::move(factory));
}

std::string SavedImage(CMMCObjectSet& set, int setModified, int clearModified) {
  return Stored([&](CVellum& archive) { set.SerializeObjects(archive, setModified, clearModified); });
}

void LoadImage(CMMCObjectSet& set, std::string_view bytes, int setModified, int clearModified) {
  LoadingArchive archive(bytes);
  set.SerializeObjects(*archive, setModified, clearModified);
}

std::string Observed(CMMCObjectSet& set) {
  std::string text = set.IsModified() ? "modified\n" : "unmodified\n";
  text += DescribeObjects(set);
  for (const __int64 cookie : set.GetIconFiles()) {
    const CMMCObjectIcon* icon = nullptr;
    int image = 0;
    set.GetIconFile(cookie, &icon);
    text += "icon " + std::to_string(cookie) + ": " + PathOf(set, cookie) +
            (set.GetIconFileImage(cookie, image) ? " image " + std::to_string(image) : " no image") +
            (icon->GetIcon(32, 32) != nullptr ? " with handles" : " without handles") + " " +
            Digest(Stored([&](CVellum& archive) { icon->Serialize(archive); })) + "\n";
  }
  for (const __int64 cookie : set.GetCodeFiles()) {
    std::vector<char> contents;
    text += "code file " + std::to_string(cookie) + ": " + PathOf(set, cookie);
    if (set.GetCodeFileContents(cookie, contents)) text += " contents " + Digest({contents.data(), contents.size()});
    text += "\n";
  }
  const auto& tables = CMMCObjectSetProbe::Tables(set);
  for (const auto& [path, cookie] : tables.iconPaths) {
    text += "icon path " + Describe(path) + ": " + std::to_string(cookie) + "\n";
  }
  for (const auto& [path, file] : tables.codePaths) {
    text += "code path " + Describe(path) + ": " + std::to_string(file.first) +
            (file.second ? " with a transform\n" : " without a transform\n");
  }
  return text;
}

}  // namespace ondrel::test
