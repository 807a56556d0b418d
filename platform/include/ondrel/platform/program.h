// Contract: what a command-line program needs of its system beyond the standard library.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <ondrel/platform/framework/file.h>

namespace ondrel::platform {

/// Sets the process up as the rest of the program expects it; call it first in main. A file that grows beyond the limit
/// of the process is then an error of the write (ERROR_DISK_FULL), not the end of the program.
void PrepareProgram();

/// The program's arguments, without its own name, in UTF-8. Where the system's arguments are plain bytes, bytes that
/// are no UTF-8 stay as they are.
std::vector<std::string> ProgramArguments(int argc, char** argv);

enum class StandardStream { output, errors };
/// Whether what the program prints there goes to a terminal. Where one has to be told that escape sequences mean
/// something, it is told, and given back as it was when the program ends.
bool IsTerminal(StandardStream stream);

/// Makes the components of com.h and xml.h usable on this thread while it lives. Raises COleException.
class ComponentScope {
 public:
  ComponentScope();
  ~ComponentScope();  // NOLINT(performance-trivially-destructible): some systems have something to undo
  ComponentScope(const ComponentScope&) = delete;
  ComponentScope& operator=(const ComponentScope&) = delete;
};

/// A path argument as wide text, and back, so that any file of the system can be named. Where names are plain bytes,
/// those that are no UTF-8 become the lone surrogates DC80 to DCFF and back; where names are wide text, lone surrogates
/// are encoded like any other character and bytes that are no UTF-8 become U+FFFD.
CString PathFromUtf8(const std::string& path);
std::string PathToUtf8(const CString& path);

/// A path as other programs of this system take it, in UTF-8: where they separate folders with "/" alone, so does it.
std::string PathForPrograms(const CString& path);

/// What is at a path, or where it leads as a link. A device or a pipe is something else; a place that cannot be looked
/// at counts as nothing.
enum class PlaceKind { nothing, file, folder, other };
PlaceKind KindOfPlace(const CString& path);

/// A file or folder that was there when it was looked for, to be told by whatever other name.
class FoundFile {
 public:
  explicit FoundFile(const CString& path);
  ~FoundFile();  // NOLINT(performance-trivially-destructible): some systems keep it open meanwhile
  FoundFile(const FoundFile&) = delete;
  FoundFile& operator=(const FoundFile&) = delete;

  bool IsThere() const { return m_open != kNothing; }
  /// Whether a path leads to it; false for every path when nothing was found.
  bool IsAt(const CString& path) const;

 private:
  static constexpr std::intptr_t kNothing = -1;

  std::intptr_t m_open = kNothing;  ///< The handle of those systems, anything but kNothing of the others.
  std::uint64_t m_volume = 0;
  std::uint64_t m_number = 0;  ///< On the volume.
};

/// Whether both paths lead to one file, which is there.
bool IsSameFile(const CString& path, const CString& other);

/// Whether the first byte of a file would have to be waited for, because the system does not keep it in memory. False
/// where the system does not tell, and for what is no file that can be read.
bool IsLeftToDisk(const CString& path);

/// Begins to bring a file's first bytes into the system's memory, of most files all, and does not wait for them. How
/// many, or 0. It only helps who reads them afterwards: nothing tells whether it did.
ULONGLONG BeginReading(const CString& path);

/// Whether this system could reach the place that a path names: false for a drive that it does not have, and for a
/// network path where there are none.
bool CanReach(const CString& path);

/// The path from the root of the system, on Windows of its drive or share, without "." and ".." parts, with `\` between
/// its parts and, where `path` ends in a separator, behind the last. An empty path, or one of a drive that the system
/// does not have, stays as it is. Raises CFileException when the working folder is gone.
CString FullPath(const CString& path);

/// A file that takes its place only when it is complete. It is written in the folder of `path`, without a name where
/// the system can do that and otherwise under a name of its own (".<name>.<16 digits>.tmp"); Commit puts it on the disk
/// and then in place of whatever was at `path`. Without Commit it is removed and `path` stays as it was. When the
/// process is ended meanwhile, `path` holds the old file or the whole new one; a file under a name of its own then
/// stays behind, in nobody's way, while one without a name goes with the process. Where `path` is a symbolic link, the
/// file that it leads to is replaced and the link stays. A file that is replaced hands its permissions on. A folder or
/// a device at `path` is refused (accessDenied) before anything is written. Failures raise CFileException with the name
/// `path`; after one, the file that was at `path` is as it was.
class ReplacementFile : public CFile {
 public:
  explicit ReplacementFile(const CString& path);
  ~ReplacementFile() override;

  void Write(const void* buffer, UINT count) override;
  /// Requires that the file is still open and that every write succeeded. A failure removes the file.
  void Commit();

  /// Whether both are to take one place, by whatever names and links: the second would replace the first.
  bool SharesPlaceWith(const ReplacementFile& other) const;

 private:
  void Discard() noexcept;

  CString m_target;
  CString m_temporary;        ///< Empty while the file has no name.
  std::intptr_t m_open = -1;  ///< The system's handle of the file, for as long as the file is open.
  ULONGLONG m_written = 0;    ///< Bytes so far, from the start of the file.
  ULONGLONG m_begun = 0;      ///< Of these, how many are on their way to the disk already.
  bool m_committed = false;
};

/// A folder that takes its place only when it is complete. It is made beside the place that `path` names, under a name
/// of its own (".<16 digits>.tmp"); Commit puts it there in one step, on Windows in two where an empty folder is
/// replaced. Without Commit it is removed, with all that was made by it, and the place stays as it was; a process that
/// is ended meanwhile leaves it behind under its own name. Failures raise CFileException: with the code ERROR_NOT_EMPTY
/// when the place is a folder that holds anything, with ERROR_FILE_EXISTS when it is anything else, a link too.
class NewFolder {
 public:
  explicit NewFolder(const CString& path);
  ~NewFolder();
  NewFolder(const NewFolder&) = delete;
  NewFolder& operator=(const NewFolder&) = delete;

  // Names are relative to the folder, with `\` between their parts.

  /// Where something of that name is, until Commit; from the root, with `\` between its parts.
  CString PathOf(const CString& name) const { return m_temporary + _T("\\") + name; }
  void MakeFolder(const CString& name);
  void WriteFile(const CString& name, std::string_view bytes);  ///< A file that is there is written anew.
  void Commit();

 private:
  struct Entry {
    CString name;
    bool isFolder = false;
  };

  CString m_place;
  CString m_temporary;
  std::vector<Entry> m_entries;  ///< In the order in which they were made.
  bool m_committed = false;
};

}  // namespace ondrel::platform
