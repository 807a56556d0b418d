// An object image through every source that a host may hold: what one adapter stores, a fresh one loads.

#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <ondrel/MMCArchiveFile.h>
#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/counted_stream.h"
#include "support/kernel_handles.h"
#include "support/model/hand_bytes.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/scripted_stream.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

constexpr std::size_t kMoreThanAPipeHolds = 300'000;

std::vector<char> LargeFile() {
  std::vector<char> bytes(kMoreThanAPipeHolds);
  for (std::size_t index = 0; index < bytes.size(); ++index) bytes[index] = static_cast<char>(index * 7 + index / 256);
  return bytes;
}

/// A stream over a file on disk.
class FileStream final : public CountedStream {
 public:
  FileStream(const std::filesystem::path& path, std::ios::openmode mode) : m_file(path, mode | std::ios::binary) {}

  HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* read) override {
    m_file.read(static_cast<char*>(buffer), count);
    *read = static_cast<ULONG>(m_file.gcount());
    if (m_file.bad()) return E_FAIL;
    return *read == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG count, ULONG* written) override {
    m_file.write(static_cast<const char*>(buffer), count);
    if (!m_file.flush()) return E_FAIL;
    *written = count;
    return S_OK;
  }

 private:
  std::fstream m_file;
};

/// A set with objects and files of every kind, and its image as an archive over memory has it.
class ArchiveFileImage : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(m_set.AddNode(CMMCObjectSet::RootNode, 12, MakeRecord(FullRecord(CMMCObjectParams::eHTML))), S_OK);
    ASSERT_EQ(m_set.AddNode(12, 5, MakeRecord({.cookie = 5, .name = _T("\u20AC")})), S_OK);
    ASSERT_EQ(m_set.AddDialog(13, MakeRecord({.cookie = 13, .name = _T("About"), .icon = 0x11})), S_OK);
    LoadingArchive icon(Cookie(0x11) + TinyIconBytes());
    m_set.DeserializeIconFile(*icon);
    const CString code = Wide(m_folder.Write("a.js", "var a = 1;"));
    ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, code, 0x21, Unchanged), S_OK);
    ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, 0x22, LargeFile()), S_OK);
    m_image = SavedImage(m_set);
    ASSERT_GT(m_image.size(), kMoreThanAPipeHolds);
    CMMCObjectSet expected(LeaveToSet);
    LoadImage(expected, m_image);
    m_expected = Observed(expected);
  }

  void Store(CMMCArchiveFile& file) {
    CVellum archive(&file, CArchive::store);
    m_set.SerializeObjects(archive, 0, 0);
    archive.Close();
  }

  /// Loads a set; a message when it is not the one that was stored.
  testing::AssertionResult LoadsTheSame(CMMCArchiveFile& file) const {
    CMMCObjectSet set(LeaveToSet);
    CVellum archive(&file, CArchive::load);
    set.SerializeObjects(archive, 0, 0);
    const std::string loaded = Observed(set);
    if (loaded == m_expected) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "loaded:\n" << loaded << "stored:\n" << m_expected;
  }

  const TemporaryFolder m_folder;
  CMMCObjectSet m_set{LeaveToSet};
  std::string m_image;
  std::string m_expected;
};

TEST_F(ArchiveFileImage, PassesThroughAMemoryStream) {
  CComPtr<IStream> stream;
  ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
  {
    CMMCArchiveFile file(stream);
    Store(file);
  }
  HGLOBAL block = nullptr;
  ASSERT_EQ(GetHGlobalFromStream(stream, &block), S_OK);
  const auto* const bytes = static_cast<const char*>(GlobalLock(block));
  EXPECT_TRUE(std::equal(m_image.begin(), m_image.end(), bytes)) << "other bytes than an archive over memory stores";
  GlobalUnlock(block);

  const LARGE_INTEGER start{};
  ASSERT_EQ(stream->Seek(start, STREAM_SEEK_SET, nullptr), S_OK);
  CMMCArchiveFile file(stream);
  EXPECT_TRUE(LoadsTheSame(file));
}

TEST_F(ArchiveFileImage, PassesThroughAStreamOverAFile) {
  const std::filesystem::path path = m_folder / "image.bin";
  {
    FileStream stream(path, std::ios::out);
    CMMCArchiveFile file(&stream);
    Store(file);
  }
  EXPECT_TRUE(ReadBytes(path) == m_image) << "other bytes than an archive over memory stores";
  FileStream stream(path, std::ios::in);
  CMMCArchiveFile file(&stream);
  EXPECT_TRUE(LoadsTheSame(file));
}

TEST_F(ArchiveFileImage, PassesThroughTheHandleOfAFile) {
  const std::filesystem::path path = m_folder / "image.bin";
  {
    const KernelHandle handle = OpenToWrite(path);
    CMMCArchiveFile file(handle.Get());
    Store(file);
  }
  EXPECT_TRUE(ReadBytes(path) == m_image) << "other bytes than an archive over memory stores";
  const KernelHandle handle = OpenToRead(path);
  CMMCArchiveFile file(handle.Get());
  EXPECT_TRUE(LoadsTheSame(file));
}

TEST_F(ArchiveFileImage, PassesThroughAPipeThatHoldsOnlyAPartOfIt) {
  KernelPipe pipe;
  std::exception_ptr fault;
  std::thread writer([&] {
    try {
      CMMCArchiveFile file(pipe.writing.Get());
      Store(file);
    } catch (...) {
      fault = std::current_exception();
    }
    pipe.writing.Close();  // whatever happened, the reader comes to an end
  });
  testing::AssertionResult loaded = testing::AssertionFailure();
  try {
    CMMCArchiveFile file(pipe.reading.Get());
    loaded = LoadsTheSame(file);
  } catch (const std::exception& raised) {
    loaded << raised.what();
  }
  pipe.reading.Close();  // whatever happened, the writer comes to an end
  writer.join();
  EXPECT_TRUE(loaded);
  if (fault) std::rethrow_exception(fault);
}

TEST_F(ArchiveFileImage, ComesFromAStreamThatGivesOneByteAtATime) {
  ScriptedStream stream(m_image);
  stream.Shorten(1);
  CMMCArchiveFile file(&stream);
  EXPECT_TRUE(LoadsTheSame(file));
  EXPECT_EQ(stream.Reads(), static_cast<int>(m_image.size()));
}

TEST_F(ArchiveFileImage, ThatEndsEarlyRaisesEndOfFile) {
  ScriptedStream stream(m_image.substr(0, m_image.size() - 1));
  CMMCArchiveFile file(&stream);
  CMMCObjectSet set(LeaveToSet);
  CVellum archive(&file, CArchive::load);
  int cause = CArchiveException::none;
  try {
    set.SerializeObjects(archive, 0, 0);
  } catch (const CArchiveException& raised) {
    cause = raised.m_cause;
  }
  EXPECT_EQ(cause, CArchiveException::endOfFile);
}

TEST_F(ArchiveFileImage, ThatTheStreamRefusesRaisesItsStatusAndIsNotTriedAgain) {
  ScriptedStream stream;
  stream.Answer(STG_E_MEDIUMFULL);
  CMMCArchiveFile file(&stream);
  HRESULT status = S_OK;
  {
    CVellum archive(&file, CArchive::store);
    try {
      m_set.SerializeObjects(archive, 0, 0);
    } catch (const COleException& raised) {
      status = raised.m_sc;
    }
    archive.Abort();
  }
  EXPECT_EQ(status, STG_E_MEDIUMFULL);
  EXPECT_EQ(stream.Writes(), 1);
}

TEST_F(ArchiveFileImage, IsFollowedByWhatTheArchiveHasReadAheadAndCannotGiveBack) {
  ScriptedStream stream(m_image + "rest");
  CMMCArchiveFile file(&stream);
  CMMCObjectSet set(LeaveToSet);
  CVellum archive(&file, CArchive::load);
  set.SerializeObjects(archive, 0, 0);
  EXPECT_EQ(Observed(set), m_expected);
  EXPECT_THROW(archive.Close(), CNotSupportedException);
}

}  // namespace
}  // namespace ondrel::test
