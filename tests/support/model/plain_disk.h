// The files that random edits name, on the disk and as the model sees them: good icons, damaged ones, missing ones.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/model/hand_icons.h"
#include "support/model/plain_record.h"
#include "support/temporary_folder.h"

namespace ondrel::test {

/// A folder of its own with the folders p and q in it. Paths in it separate with `\`, but for one that is meant to
/// differ.
class PlainDisk {
 public:
  /// What becomes of an icon file that is read: the status, and on success the icon.
  struct IconFile {
    HRESULT status;
    HandIcon icon;
  };
  /// What the one file is that changes.
  enum class Changing { good, damaged, missing };

  PlainDisk();

  /// Writes, or removes, the file that changes.
  void Change(Changing what);

  IconFile IconAt(const PlainText& path) const;
  /// The bytes of a file; null when there is none.
  const std::string* BytesAt(const PlainText& path) const;

  /// Paths that icon files, code files and project files may have; not all of them are there.
  const std::vector<PlainText>& IconPaths() const { return m_iconPaths; }
  const std::vector<PlainText>& CodePaths() const { return m_codePaths; }
  const std::vector<PlainText>& ProjectPaths() const { return m_projectPaths; }

 private:
  PlainText PathOf(const std::string& name) const;
  void WriteFile(const std::string& name, const std::string& bytes);

  TemporaryFolder m_folder;
  std::map<PlainText, std::string> m_files;
  std::map<PlainText, IconFile> m_icons;
  std::vector<PlainText> m_iconPaths;
  std::vector<PlainText> m_codePaths;
  std::vector<PlainText> m_projectPaths;
};

}  // namespace ondrel::test
