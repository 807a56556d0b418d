// Archives over sources that fail: what using one comes to, and what becomes of it afterwards.
#pragma once

#include <ostream>

#include <ondrel/platform/vellum.h>

#include "faults/outcome.h"

namespace ondrel::test {

/// How a caller may take leave of an archive, whatever has happened. None of them may end the process.
enum class Ending { destroy, abort, close };
inline constexpr Ending kEndings[] = {Ending::destroy, Ending::abort, Ending::close};

inline void PrintTo(Ending ending, std::ostream* out) {
  constexpr const char* kNames[] = {"destroyed", "aborted", "closed"};
  *out << kNames[static_cast<int>(ending)];
}

struct ArchiveRun {
  Outcome used;
  Outcome ended;
};

/// Uses an archive over a file, and ends it.
template <class Use>
ArchiveRun RunArchive(CFile& file, UINT mode, int bufferSize, Ending ending, const Use& use) {
  ArchiveRun run;
  CVellum archive(&file, mode, bufferSize);
  run.used = OutcomeOf([&] { use(archive); });
  if (ending == Ending::abort) run.ended = OutcomeOf([&] { archive.Abort(); });
  if (ending == Ending::close) {
    run.ended = OutcomeOf([&] { archive.Close(); });
    archive.Close();  // has let go of its file, whatever it raised
  }
  return run;
}

/// The buffer of an archive that nobody has chosen one for, and one so small that the file is called often.
inline constexpr int kUsualBuffer = 4096;
inline constexpr int kSmallBuffer = 16;
inline constexpr int kBuffers[] = {kSmallBuffer, kUsualBuffer};

}  // namespace ondrel::test
