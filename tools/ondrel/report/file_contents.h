// The contents of code files, as far as a report shows them.
#pragma once

#include <string>

#include "definition_file.h"

namespace ondrel::command {

/// What a report shows of one file at most, and of all files together, in bytes of the files.
inline constexpr std::size_t kMostShownOfFile = std::size_t{256} * 1024;
inline constexpr std::size_t kMostShown = std::size_t{16} * 1024 * 1024;

struct FileContents {
  enum class State {
    text,        ///< `text` is what the first `shownBytes` bytes say.
    binary,      ///< No text that people could read.
    leftOut,     ///< Other files have taken all the room.
    unreadable,  ///< `reason` says why, and what to do.
  };

  State state = State::unreadable;
  std::string text;           ///< UTF-8.
  const char* encoding = "";  ///< What the bytes were read as: "UTF-8".
  std::size_t shownBytes = 0;
  std::string reason;
};

/// Reads the code files of a definition one after the other, as long as there is room for what they hold.
class ContentsReader {
 public:
  explicit ContentsReader(Definition& definition) : m_definition(definition) {}

  /// Text is UTF-16 behind its mark, UTF-8 where the bytes are, and otherwise of code page 1252; bytes with control
  /// characters that no text has are none.
  FileContents Read(__int64 cookie);

 private:
  Definition& m_definition;
  std::size_t m_room = kMostShown;
};

}  // namespace ondrel::command
