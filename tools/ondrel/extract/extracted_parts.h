// What becomes of the parts of an image: files in a folder, and records for a project.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/platform/program.h>

#include "extract/image_walk.h"

namespace ondrel::command {

/// Writes the code files and icons that a walk brings, and collects the records.
///
/// Every name is made here, of what records use a file for and of its cookie, so that nothing in an image says where
/// something is written. Code files stand in one folder under rising numbers: a compile puts them in the order of their
/// paths, and so in that of the image again.
class ExtractedParts : public ImageVisitor {
 public:
  struct Node {
    __int64 parent;
    CMMCObjectParams record;
  };

  /// `codeFiles`: how many there will be. They and the icons go into `folder`.
  ExtractedParts(platform::NewFolder& folder, std::size_t codeFiles, std::size_t icons);

  void OnNode(__int64 parent, CMMCObjectParams&& record) override;
  void OnDialog(CMMCObjectParams&& record) override;
  void OnIconFile(__int64 cookie, const CMMCObjectIcon& icon) override;
  void OnCodeFile(__int64 cookie, const std::vector<char>& contents, bool fromMemory) override;

  // Records as they came, but for text that XML does not hold: of that, escapes are left ("\x01").

  std::vector<Node>& Nodes() { return m_nodes; }
  std::vector<CMMCObjectParams>& Dialogs() { return m_dialogs; }
  /// The text of a project that names the files and holds nothing else.
  std::string FilesProject() const;

 private:
  enum class Use { style, query, script };

  void NoteUses(const CMMCObjectParams& record);
  void AddFile(const char* element, __int64 cookie, const std::string& name);

  platform::NewFolder& m_folder;
  std::size_t m_digits;  ///< Of the numbers of code files.
  std::size_t m_codeFiles = 0;
  std::map<__int64, Use> m_uses;
  std::vector<Node> m_nodes;
  std::vector<CMMCObjectParams> m_dialogs;
  std::string m_fileElements;
};

}  // namespace ondrel::command
