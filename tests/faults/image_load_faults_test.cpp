// Every read under the archive fails in turn while an image is loaded, from files, streams and handles: the set holds
// what was read so far.

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <ondrel/MMCArchiveFile.h>

#include "faults/archive_runs.h"
#include "faults/definition.h"
#include "faults/fault_count.h"
#include "faults/held.h"
#include "faults/image_steps.h"
#include "support/faulty_file.h"
#include "support/kernel_handles.h"
#include "support/model/lock_watch.h"
#include "support/scripted_stream.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

constexpr Outcome kEndOfFile = RaisesArchive(CArchiveException::endOfFile);

class ImageLoadFaults : public testing::Test {
 protected:
  /// Loads from a file, and tells what that came to. The archive's end must come to a success, or to
  /// `toleratedEnd`.
  Outcome Load(ImageLoads& loads, CFile& file, int bufferSize, Ending ending, const Outcome& toleratedEnd = kSuccess) {
    const std::unique_ptr<CMMCObjectSet> set = ImageSteps::MakeOldSet();
    const ArchiveRun run = RunArchive(file, CArchive::load, bufferSize, ending,
                                      [&](CVellum& archive) { set->SerializeObjects(archive, 0, 0); });
    EXPECT_TRUE(m_watch.IsFree(*set)) << "the lock is held";
    EXPECT_TRUE(run.ended == kSuccess || run.ended == toleratedEnd) << testing::PrintToString(run.ended);
    loads.ExpectStep(*set, run.used);
    return run.used;
  }

  /// Calls `load(number, bufferSize, ending, loads)` for every number until it says that there was no such read.
  void Sweep(const char* name, const std::function<bool(int, int, Ending, ImageLoads&)>& load) {
    for (const Ending ending : kEndings) {
      for (const int bufferSize : kBuffers) {
        ImageLoads loads(m_steps);
        for (int number = 1;; ++number) {
          SCOPED_TRACE(std::string(name) + " at read " + std::to_string(number) + ", buffer of " +
                       std::to_string(bufferSize) + " bytes, archive " + testing::PrintToString(ending));
          const Held held = CountHeld();
          const bool reached = load(number, bufferSize, ending, loads);
          EXPECT_EQ(CountHeld(), held);
          if (HasFailure()) return;
          if (!reached) break;
          ++m_faults;
        }
      }
    }
  }

  const Definition m_definition;
  const ImageSteps m_steps{*m_definition.Make()};
  LockWatch m_watch;
  long m_faults = 0;
};

TEST_F(ImageLoadFaults, OfAFileLeaveWhatWasRead) {
  struct Fault {
    const char* name;
    void (FaultyFile::*arm)(int number);
    Outcome expected;
  };
  const Fault faults[] = {{"a failure", &FaultyFile::FailRead, RaisesFile(CFileException::hardIO)},
                          {"the end", &FaultyFile::EndAtRead, kEndOfFile},
                          {"a short count", &FaultyFile::ShortenRead, kSuccess}};
  const std::string& image = m_steps.Image();
  for (const Fault& fault : faults) {
    Sweep(fault.name, [&](int number, int bufferSize, Ending ending, ImageLoads& loads) {
      FaultyFile file(image.data(), static_cast<UINT>(image.size()));
      (file.*fault.arm)(number);
      const Outcome outcome = Load(loads, file, bufferSize, ending);
      const bool reached = file.Reads() >= number;
      EXPECT_EQ(outcome, reached ? fault.expected : kSuccess);
      return reached;
    });
  }
  ReportFaults("image load from files", m_faults);
}

TEST_F(ImageLoadFaults, OfAStreamLeaveWhatWasRead) {
  constexpr ULONG kAll = std::numeric_limits<ULONG>::max();
  struct Fault {
    const char* name;
    std::function<void(ScriptedStream&)> begin;
    std::function<void(ScriptedStream&)> end;  ///< Before the read after it.
    Outcome expected;
  };
  const std::function<void(ScriptedStream&)> remain = [](ScriptedStream&) {};
  const Fault faults[] = {
      {"a failure", [&](auto& stream) { stream.Answer(kChosenFailure); }, remain, RaisesStatus(kChosenFailure)},
      {"a passing failure", [&](auto& stream) { stream.Answer(E_OUTOFMEMORY); },
       [](auto& stream) { stream.Answer(S_OK); }, RaisesStatus(E_OUTOFMEMORY)},
      {"the end", [](auto& stream) { stream.Shorten(0); }, remain, kEndOfFile},
      {"the end, told so",
       [](auto& stream) {
         stream.Shorten(0);
         stream.Answer(S_FALSE);
       },
       remain, kEndOfFile},
      {"a short count, told so",
       [](auto& stream) {
         stream.Shorten(1);
         stream.Answer(S_FALSE);
       },
       [](auto& stream) { stream.Shorten(kAll); }, kSuccess},
      {"a claim of more", [](auto& stream) { stream.Exaggerate(1U << 20); }, remain, RaisesStatus(E_UNEXPECTED)},
  };
  for (const Fault& fault : faults) {
    Sweep(fault.name, [&](int number, int bufferSize, Ending ending, ImageLoads& loads) {
      ScriptedStream stream(m_steps.Image());
      stream.Before(number, [&] { fault.begin(stream); });
      stream.Before(number + 1, [&] { fault.end(stream); });
      Outcome outcome;
      {
        CMMCArchiveFile file(&stream);
        // What was read ahead cannot be given back.
        outcome = Load(loads, file, bufferSize, ending, kNotSupported);
      }
      EXPECT_EQ(stream.References(), 0U);
      const bool reached = stream.Reads() >= number;
      EXPECT_EQ(outcome, reached ? fault.expected : kSuccess);
      return reached;
    });
  }
  ReportFaults("image load from streams", m_faults);
}

/// The lengths that a file of so many bytes is cut to: where the header stands each of them, then some of every kind of
/// place.
std::vector<std::size_t> Lengths(std::size_t whole) {
  constexpr std::size_t kEach = 32;
  constexpr std::size_t kStep = 409;
  std::vector<std::size_t> lengths;
  for (std::size_t length = 0; length < whole; length += length < kEach ? 1 : kStep) lengths.push_back(length);
  lengths.push_back(whole - 1);
  return lengths;
}

TEST_F(ImageLoadFaults, OfAFileOnDiskThatEndsEarlyLeaveWhatWasRead) {
  const TemporaryFolder folder;
  for (const int bufferSize : kBuffers) {
    ImageLoads loads(m_steps);
    for (const std::size_t length : Lengths(m_steps.Image().size())) {
      SCOPED_TRACE(std::to_string(length) + " bytes, buffer of " + std::to_string(bufferSize));
      const CString path = Wide(folder.Write("image.bin", m_steps.Image().substr(0, length)));
      const Held held = CountHeld();
      {
        CFile file(path, CFile::modeRead | CFile::shareDenyWrite);
        EXPECT_EQ(Load(loads, file, bufferSize, Ending::close), kEndOfFile);
      }
      EXPECT_EQ(CountHeld(), held);
      if (HasFailure()) return;
      ++m_faults;
    }
  }
  ReportFaults("image load from files on disk", m_faults);
}

TEST_F(ImageLoadFaults, OfAHandleThatEndsEarlyLeaveWhatWasRead) {
  const TemporaryFolder folder;
  for (const int bufferSize : kBuffers) {
    ImageLoads loads(m_steps);
    for (const std::size_t length : Lengths(m_steps.Image().size())) {
      SCOPED_TRACE(std::to_string(length) + " bytes, buffer of " + std::to_string(bufferSize));
      const std::filesystem::path path = folder.Write("image.bin", m_steps.Image().substr(0, length));
      const Held held = CountHeld();
      {
        const KernelHandle handle = OpenToRead(path);
        CMMCArchiveFile file(handle.Get());
        EXPECT_EQ(Load(loads, file, bufferSize, Ending::close, kNotSupported), kEndOfFile);
      }
      EXPECT_EQ(CountHeld(), held);
      if (HasFailure()) return;
      ++m_faults;
    }
  }
  ReportFaults("image load from handles", m_faults);
}

}  // namespace
}  // namespace ondrel::test
