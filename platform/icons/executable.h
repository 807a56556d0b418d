// The headers of a program or library, and where in its file lies what has an address in memory.
//
// A file starts with a header of 64 bytes that begins with "MZ" and states, at 0x3C, where the real headers are. They
// are the signature "PE\0\0", the file header (20 bytes, among them the count of sections and the length of the next),
// the optional header (PE32 or PE32+, which differ in the width of some fields) and the section table. The optional
// header ends with the data directories, of which the third one is that of the resources. All addresses in the file
// are relative to where the program is loaded; a section states which addresses it has and where its bytes lie.
#pragma once

#include <vector>

#include "icons/little_endian.h"
#include "icons/source_file.h"

namespace ondrel::platform {

/// The bytes in front that tell an executable from others.
inline constexpr std::size_t kExecutableMarkBytes = 2;

/// Whether a file that starts so is a program, of whatever kind.
bool IsExecutable(Bytes start);

/// A run of bytes in a file.
struct FileRun {
  ULONGLONG offset = 0;
  ULONGLONG length = 0;
};

class Executable {
 public:
  /// The file is used as long as this lives.
  explicit Executable(const SourceFile& file) : m_file(file) {}

  /// Requires a file that IsExecutable. The icon's status is ERROR_RESOURCE_DATA_NOT_FOUND for a program of another
  /// kind, and ERROR_INVALID_DATA for headers that are cut short or cannot be. Raises std::bad_alloc.
  IconStatus ReadHeaders();

  /// The address of the resources. 0: there are none.
  DWORD Resources() const { return m_resources; }

  /// What the file has from an address on: the bytes up to the end of their section, or none.
  FileRun Find(DWORD address) const;

 private:
  struct Section {
    DWORD address;
    DWORD extent;  ///< Bytes in memory.
    DWORD offset;  ///< Of the bytes in the file.
    DWORD length;  ///< Bytes in the file. What it lacks of the extent is zero in memory.
  };

  IconStatus ReadOptionalHeader(ULONGLONG offset, WORD length);
  IconStatus ReadSections(ULONGLONG offset, WORD count);

  const SourceFile& m_file;
  DWORD m_resources = 0;
  std::vector<Section> m_sections;  ///< In the order of their addresses.
};

}  // namespace ondrel::platform
