// What the file over a host's source does beside moving bytes: mostly nothing.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/MMCArchiveFile.h>

#include "support/kernel_handles.h"
#include "support/print_text.h"
#include "support/scripted_stream.h"
#include "support/temporary_folder.h"
#include "support/virtual_slots.h"

namespace ondrel::test {
namespace {

/// The file in each of its two modes, as the base that archives know.
class ArchiveFileOperations : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override {
    if (GetParam()) {
      m_file = std::make_unique<CMMCArchiveFile>(&m_stream);
    } else {
      m_handle = OpenToRead(m_folder.Write("source.bin", "abc"));
      m_file = std::make_unique<CMMCArchiveFile>(m_handle.Get());
    }
  }

  const TemporaryFolder m_folder;
  ScriptedStream m_stream{"abc"};
  KernelHandle m_handle;
  std::unique_ptr<CFile> m_file;
};

INSTANTIATE_TEST_SUITE_P(OverBoth, ArchiveFileOperations, testing::Bool(),
                         [](const auto& mode) { return mode.param ? "Stream" : "Handle"; });

TEST_P(ArchiveFileOperations, AllButReadingAndWritingAreNotSupported) {
  const std::pair<const char*, std::function<void()>> operations[] = {
      {"GetPosition", [&] { m_file->GetPosition(); }},
      {"Duplicate", [&] { m_file->Duplicate(); }},
      {"Seek", [&] { m_file->Seek(0, CFile::begin); }},
      {"Seek by nothing", [&] { m_file->Seek(0, CFile::current); }},
      {"SetLength", [&] { m_file->SetLength(0); }},
      {"GetLength", [&] { m_file->GetLength(); }},
      {"LockRange", [&] { m_file->LockRange(0, 1); }},
      {"UnlockRange", [&] { m_file->UnlockRange(0, 1); }},
      {"Abort", [&] { m_file->Abort(); }},
      {"Flush", [&] { m_file->Flush(); }},
      {"Close", [&] { m_file->Close(); }},
  };
  for (const auto& [name, call] : operations) EXPECT_THROW(call(), CNotSupportedException) << name;
  char bytes[4] = {};
  EXPECT_EQ(m_file->Read(bytes, 3), 3U) << "the source is as it was";
  EXPECT_STREQ(bytes, "abc");
}

TEST_P(ArchiveFileOperations, NoCommandFindsABuffer) {
  int mark = 0;
  for (const UINT command : {0U, 1U, 2U, 3U, 4U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    void* start = &mark;
    void* limit = &mark;
    EXPECT_EQ(m_file->GetBufferPtr(command, 16, &start, &limit), 0U) << "command " << command;
    EXPECT_EQ(start, &mark) << "command " << command;
    EXPECT_EQ(limit, &mark) << "command " << command;
    EXPECT_EQ(m_file->GetBufferPtr(command), 0U) << "command " << command;
  }
}

TEST_P(ArchiveFileOperations, TheNameIsTheOneThatItIsGiven) {
  EXPECT_EQ(m_file->GetFilePath(), CString());
  EXPECT_EQ(m_file->GetFileName(), CString());
  EXPECT_EQ(m_file->GetFileTitle(), CString());
  m_file->SetFilePath(_T("C:\\sets\\monitor.min.bin"));
  EXPECT_EQ(m_file->GetFilePath(), _T("C:\\sets\\monitor.min.bin"));
  EXPECT_EQ(m_file->GetFileName(), _T("monitor.min.bin"));
  EXPECT_EQ(m_file->GetFileTitle(), _T("monitor.min"));
  EXPECT_THROW(m_file->SetFilePath(nullptr), CInvalidArgException);
  EXPECT_EQ(m_file->GetFilePath(), _T("C:\\sets\\monitor.min.bin"));
}

TEST_P(ArchiveFileOperations, AnArchiveTakesTheName) {
  m_file->SetFilePath(_T("C:\\sets\\monitor.bin"));
  CArchive archive(m_file.get(), CArchive::load);
  EXPECT_EQ(archive.m_strFileName, _T("C:\\sets\\monitor.bin"));
  EXPECT_THROW(archive << DWORD{1}, CArchiveException);
}

TEST_P(ArchiveFileOperations, OpeningIsTheFrameworksAndLeavesTheSourceInPlace) {
  const CString other = Wide(m_folder.Write("other.bin", "xyz"));
  EXPECT_TRUE(m_file->Open(other, CFile::modeRead));
  EXPECT_EQ(m_file->GetFilePath(), other);
  EXPECT_TRUE(m_file->Open(other, CFile::modeRead, static_cast<CAtlTransactionManager*>(nullptr)));
  char bytes[4] = {};
  EXPECT_EQ(m_file->Read(bytes, 3), 3U);
  EXPECT_STREQ(bytes, "abc");
  std::unique_ptr<CFileException> error;
  EXPECT_FALSE(m_file->Open(Wide(m_folder / "none.bin"), CFile::modeRead, &error));
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->m_cause, CFileException::fileNotFound);
}

TEST_P(ArchiveFileOperations, AStoringArchiveThatIsLeftOpenHandsItsBytesOver) {
  KernelHandle handle = OpenToWrite(m_folder / "stored.bin");
  ScriptedStream stream;
  const auto file =
      GetParam() ? std::make_unique<CMMCArchiveFile>(&stream) : std::make_unique<CMMCArchiveFile>(handle.Get());
  { CArchive(file.get(), CArchive::store) << DWORD{0x64636261}; }
  EXPECT_EQ(GetParam() ? stream.Bytes() : ReadBytes(m_folder / "stored.bin"), "abcd");
}

TEST(ArchiveFileSlots, HaveTheOrderOfTheFramework) {
  using File = CMMCArchiveFile;
  using Error = std::unique_ptr<CFileException>*;
  const std::ptrdiff_t slots[] = {
      SlotOf(&File::GetPosition),
      SlotOf(&File::GetFileName),
      SlotOf(&File::GetFileTitle),
      SlotOf(&File::GetFilePath),
      SlotOf(&File::SetFilePath),
      SlotOf(static_cast<BOOL (File::*)(LPCTSTR, UINT, Error)>(&File::Open)),
      SlotOf(static_cast<BOOL (File::*)(LPCTSTR, UINT, CAtlTransactionManager*, Error)>(&File::Open)),
      SlotOf(&File::Duplicate),
      SlotOf(&File::Seek),
      SlotOf(&File::SetLength),
      SlotOf(&File::GetLength),
      SlotOf(&File::Read),
      SlotOf(&File::Write),
      SlotOf(&File::LockRange),
      SlotOf(&File::UnlockRange),
      SlotOf(&File::Abort),
      SlotOf(&File::Flush),
      SlotOf(&File::Close),
      SlotOf(&File::GetBufferPtr),
  };
  std::ptrdiff_t expected = kDestructorSlots;
  for (const std::ptrdiff_t slot : slots) EXPECT_EQ(slot, expected++);
}

}  // namespace
}  // namespace ondrel::test
