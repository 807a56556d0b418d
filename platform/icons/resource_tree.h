// The resources of a program: a tree of directories in three levels, by type, by name and by language, and the data
// below them.
//
// A directory is a header of 16 bytes, which ends with two words, the counts of its entries with a text and of those
// with a number, and 8 bytes for each entry, those with a text first: what it is found under, and where it leads. The
// highest bit of the first number tells a text, that of the second a directory; without it the entry leads to a
// description of data, 16 bytes that begin with the address and the length. Places are offsets from the first
// directory, addresses those of the program.
//
// Only one entry is followed at a time, and never deeper than the three levels, so a damaged tree can lead anywhere but
// not into a loop.
#pragma once

#include <algorithm>
#include <array>

#include "icons/executable.h"

namespace ondrel::platform {

/// An entry with a number: one that stands behind those with a text.
struct ResourceEntry {
  WORD number;
  DWORD place;
};

struct ResourceDirectory {
  DWORD Count() const { return texts + numbers; }

  DWORD place;
  DWORD texts;  ///< How many of its entries have a text.
  DWORD numbers;
};

struct ResourceData {
  DWORD address;
  DWORD length;
};

/// Each operation is a damaged icon where what it reads is not in the file as a whole.
class ResourceTree {
 public:
  /// The file is used as long as this lives. The run starts with the first directory, and ends with the section: a tree
  /// lies in one.
  ResourceTree(const SourceFile& file, const FileRun& run) : m_file(file), m_run(run) {}

  IconStatus OpenTypes(ResourceDirectory& types) const { return OpenAt(0, types); }
  /// Opens the directory that an entry leads to. A place that is one of data is damage.
  IconStatus Open(DWORD place, ResourceDirectory& directory) const;
  /// The place that the first entry leads to, whether it has a text or a number. Requires an entry.
  IconStatus ReadFirst(const ResourceDirectory& directory, DWORD& place) const;
  /// Calls visit(const ResourceEntry&) for each entry with a number, in order, until it gives another status than
  /// success, which is the result then.
  template <class Visit>
  IconStatus VisitNumbers(const ResourceDirectory& directory, Visit visit) const;
  /// Reads where the data that an entry leads to are. A place that is one of a directory is damage.
  IconStatus ReadData(DWORD place, ResourceData& data) const;

 private:
  static constexpr std::size_t kHeaderBytes = 16;
  static constexpr std::size_t kEntryBytes = 8;
  static constexpr std::size_t kPlaceOffset = 4;

  IconStatus Read(ULONGLONG place, std::span<BYTE> bytes) const;
  IconStatus OpenAt(DWORD place, ResourceDirectory& directory) const;

  const SourceFile& m_file;
  const FileRun m_run;
};

template <class Visit>
IconStatus ResourceTree::VisitNumbers(const ResourceDirectory& directory, Visit visit) const {
  constexpr std::size_t kPieceBytes = 512 * kEntryBytes;
  std::array<BYTE, kPieceBytes> buffer = {};
  const ULONGLONG first = ULONGLONG{directory.place} + kHeaderBytes + directory.texts * kEntryBytes;
  const std::size_t length = directory.numbers * kEntryBytes;
  for (std::size_t start = 0; start < length; start += buffer.size()) {
    const std::span piece(buffer.data(), std::min(buffer.size(), length - start));
    if (const IconStatus status = Read(first + start, piece); !status.IsSuccess()) return status;
    for (std::size_t offset = 0; offset < piece.size(); offset += kEntryBytes) {
      // The upper half of a number says nothing.
      const ResourceEntry entry = {ReadWord(piece, offset), ReadDword(piece, offset + kPlaceOffset)};
      if (const IconStatus status = visit(entry); !status.IsSuccess()) return status;
    }
  }
  return kIconRead;
}

}  // namespace ondrel::platform
