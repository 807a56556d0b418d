// The rules of a set, told a second time, as plainly as they can be written, to check the set against: maps, lists and
// plain structs, and no code of the set's own.
#pragma once

#include <list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/model/plain_disk.h"
#include "support/model/plain_record.h"

namespace ondrel::test {

/// What a set raises where the rules say so: the exception and what it carries, as "CArchiveException 7".
struct PlainRefusal {
  std::string text;
};

/// What a code file's transform does.
struct PlainTransform {
  enum class Kind { none, marks, raises, empties };
  Kind kind = Kind::marks;
  int mark = 0;  ///< Of a transform that marks: appended with the variables that it was given.
};

/// The factories that a project is loaded with.
enum class PlainFactory { marks, givesNone, isEmpty };

/// The end of the paths whose contents the writer hook writes, and what it writes.
inline constexpr std::u16string_view kHookedEnding = u"hooked.js";
inline constexpr std::string_view kHookedContents = "written by the hook";
/// The transform that the marking factory gives for a path.
inline PlainTransform PlainTransformFor(const PlainText& path) {
  return {PlainTransform::Kind::marks, static_cast<int>(path.size())};
}
/// What a marking transform makes of a file's bytes.
std::string MarkedBytes(std::string_view bytes, int mark, const std::map<PlainText, __int64>& variables);

/// What a project file says.
struct PlainProject {
  struct Node {
    PlainRecord record;
    std::vector<Node> children;
  };
  struct File {
    __int64 cookie;
    bool isBelowFolder;  ///< Whether the path is told from the project's folder on.
    PlainText path;
  };
  std::optional<Node> top;
  std::vector<PlainRecord> dialogs;
  std::vector<File> icons;
  std::vector<File> codeFiles;

  /// Whether loading it would never end.
  bool HasScriptWithoutFile() const;
};

/// What a set should hold and answer. Nothing here is made to be quick.
class PlainSet {
 public:
  // Nodes and dialogs
  __int64 AddNewNode(__int64 parent, const PlainText& name, int type);
  HRESULT AddNode(__int64 parent, __int64 cookie, const PlainRecord& record);
  HRESULT RemoveNode(__int64 cookie);
  HRESULT MoveNodeDown(__int64 cookie);
  __int64 AddNewDialog(const PlainText& name);
  HRESULT AddDialog(__int64 cookie, const PlainRecord& record);
  HRESULT RemoveDialog(__int64 cookie);
  /// The record to look at or to change in place; null when there is none.
  PlainRecord* GetParams(__int64 cookie);
  void SetParams(__int64 cookie, const PlainRecord& record);
  std::list<__int64> GetChildNodes(__int64 parent) const;
  std::list<__int64> GetDialogs() const;
  __int64 GetDialog(const PlainText& name) const;
  /// The cookies of all nodes and dialogs.
  std::list<__int64> GetObjects() const;

  // Files. New file cookies are drawn from the random number that the system gives.
  __int64 DrawFileCookie(unsigned random) const;
  HRESULT AddCodeFile(const PlainText& path, PlainTransform transform, unsigned random, __int64& cookie);
  HRESULT AddIconFile(const PlainText& path, const PlainDisk& disk, unsigned random, __int64& cookie);
  HRESULT InsertCodeFile(const PlainText& path, __int64 cookie, PlainTransform transform);
  HRESULT InsertCodeFile(__int64 cookie, const std::string& contents);
  HRESULT InsertIconFile(const PlainText& path, __int64 cookie, const PlainDisk& disk);
  HRESULT InsertIconFile(__int64 cookie, const HandIcon& icon);
  std::list<__int64> GetCodeFiles() const;
  std::list<__int64> GetIconFiles() const;
  /// Null for a cookie that names no such file.
  const std::string* GetCodeFileContents(__int64 cookie) const;
  const PlainText* GetFilePath(__int64 cookie) const;
  const HandIcon* GetIconFile(__int64 cookie) const;
  const int* GetIconFileImage(__int64 cookie) const;
  const std::map<__int64, int>& ImageIndices() const { return m_images; }
  /// Notes the indices of an image list that holds `count` images; the count afterwards.
  int AppendToImageList(int count);
  /// Notes the indices of the strips; the large or the small one.
  HandBitmap MakeStrips(bool large, unsigned key);

  // Records of one file, as they are stored and loaded.
  std::string StoreCodeFile(__int64 cookie, PlainTransform transform, const std::map<PlainText, __int64>& variables,
                            const PlainDisk& disk) const;
  std::string StoreIconFile(__int64 cookie) const;

  // The persistent forms. They raise PlainRefusal where the set raises an exception.
  std::string StoreImage(const PlainDisk& disk, bool setModified, bool clearModified);
  void LoadImage(std::string_view bytes, bool setModified, bool clearModified);
  PlainProject SaveProject(const PlainText& fileName);
  void LoadProject(const PlainProject& project, const PlainText& fileName, PlainFactory factory, const PlainDisk& disk);

  bool IsModified() const { return m_modified; }
  void SetModifiedFlag(bool modified) { m_modified = modified; }
  void Initialise();

  /// The text that DescribeObjects gives for a set that holds the same (see sets.h).
  std::string DescribeObjects() const;
  /// The text that Observed gives for it (see set_forms.h).
  std::string Observed() const;

 private:
  struct Node {
    __int64 parent;
    PlainRecord record;
  };
  struct CodeFile {
    __int64 cookie;
    PlainTransform transform;
  };
  struct Icon {
    HandIcon images;
    bool hasHandles;  ///< Read from the disk, not from an image.
  };

  bool IsTaken(__int64 cookie) const { return m_nodes.contains(cookie) || m_dialogs.contains(cookie); }
  /// None when the largest cookie is the largest number.
  std::optional<__int64> NextCookie() const;
  /// Nodes in the order of the tree: by parent, then by cookie.
  std::map<std::pair<__int64, __int64>, PlainRecord> InTreeOrder() const;
  /// Null when no file of that kind on the disk has the cookie.
  const PlainText* IconPathOf(__int64 cookie) const;
  const PlainText* CodePathOf(__int64 cookie) const;
  std::map<PlainText, __int64> FolderVariables() const;
  std::string StoreNode(__int64 cookie) const;
  PlainProject::Node SaveNode(__int64 cookie) const;
  void LoadNode(__int64 parent, const PlainProject::Node& node);

  std::map<__int64, Node> m_nodes;  ///< By the cookie they were added under.
  std::map<__int64, PlainRecord> m_dialogs;
  std::map<PlainText, __int64> m_dialogNames;
  std::map<PlainText, __int64> m_iconPaths;
  std::map<__int64, Icon> m_icons;
  std::map<__int64, int> m_images;
  std::map<PlainText, CodeFile> m_codePaths;
  std::map<__int64, std::string> m_codeContents;
  bool m_modified = false;
};

}  // namespace ondrel::test
