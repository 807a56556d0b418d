// The file over a handle of the system: files and pipes, their ends and their failures.

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCArchiveFile.h>
#include <ondrel/platform/framework.h>

#include "model/read_up_to.h"
#include "support/kernel_handles.h"
#include "support/model/no_last_error.h"
#include "support/raised_status.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

/// A handle that was open, and is not any more.
HANDLE ClosedHandle(const TemporaryFolder& folder) {
  KernelHandle handle = OpenToWrite(folder / "closed.bin");
  const HANDLE closed = handle.Get();
  handle.Close();
  return closed;
}

TEST(ArchiveFileHandle, ReadsAFileInOrderToItsEnd) {
  const TemporaryFolder folder;
  const KernelHandle handle = OpenToRead(folder.Write("a.bin", "abcdefg"));
  CMMCArchiveFile file(handle.Get());
  EXPECT_EQ(ReadUpTo(file, 3), "abc");
  EXPECT_EQ(ReadUpTo(file, 10), "defg");
  EXPECT_EQ(ReadUpTo(file, 10), "");
  EXPECT_EQ(ReadUpTo(file, 0), "");
}

TEST(ArchiveFileHandle, WritesAFileInOrder) {
  const TemporaryFolder folder;
  const KernelHandle handle = OpenToWrite(folder / "a.bin");
  CMMCArchiveFile file(handle.Get());
  file.Write("abc", 3);
  file.Write(std::string("d\0e", 3).data(), 3);
  file.Write("", 0);
  EXPECT_EQ(ReadBytes(folder / "a.bin"), std::string("abcd\0e", 6)) << "nothing is kept back";
}

TEST(ArchiveFileHandle, GoesOnWhereTheHandleStands) {
  const TemporaryFolder folder;
  const KernelHandle handle = OpenToRead(folder.Write("a.bin", "abcdefg"));
  {
    CMMCArchiveFile first(handle.Get());
    EXPECT_EQ(ReadUpTo(first, 3), "abc");
  }
  CMMCArchiveFile second(handle.Get());
  EXPECT_EQ(ReadUpTo(second, 3), "def");
}

TEST(ArchiveFileHandle, ReadsFromAPipeWhatIsThere) {
  const KernelPipe pipe;
  CMMCArchiveFile writing(pipe.writing.Get());
  CMMCArchiveFile reading(pipe.reading.Get());
  writing.Write("abc", 3);
  EXPECT_EQ(ReadUpTo(reading, 10), "abc") << "a short read, and not the wait for more";
}

TEST(ArchiveFileHandle, TheEndOfAPipeIsAsTheSystemTellsIt) {
  KernelPipe pipe;
  CMMCArchiveFile reading(pipe.reading.Get());
  {
    CMMCArchiveFile writing(pipe.writing.Get());
    writing.Write("abc", 3);
  }
  pipe.writing.Close();
  EXPECT_EQ(ReadUpTo(reading, 10), "abc");
  std::string left = "not read";
  EXPECT_EQ(RaisedStatus([&] { left = ReadUpTo(reading, 10); }), kEndOfPipe);
  EXPECT_EQ(left, kEndOfPipe == "nothing" ? "" : "not read");
}

TEST(ArchiveFileHandle, APipeThatNobodyReadsRaisesItsStatus) {
  KernelPipe pipe;
  CMMCArchiveFile file(pipe.writing.Get());
  pipe.reading.Close();
  EXPECT_EQ(RaisedStatus([&] { file.Write("abc", 3); }), "0x800700E8") << "and the process goes on";
  EXPECT_EQ(RaisedStatus([&] { file.Write("abc", 3); }), "0x800700E8");
}

TEST(ArchiveFileHandle, AHandleOfTheOtherDirectionRaisesAccessDenied) {
  const TemporaryFolder folder;
  folder.Write("a.bin", "abc");
  char byte = '.';
  {
    const KernelHandle handle = OpenToRead(folder / "a.bin");
    CMMCArchiveFile file(handle.Get());
    EXPECT_EQ(RaisedStatus([&] { file.Write("x", 1); }), "0x80070005");
  }
  EXPECT_EQ(ReadBytes(folder / "a.bin"), "abc");
  const KernelHandle handle = OpenToWrite(folder / "a.bin");
  CMMCArchiveFile file(handle.Get());
  EXPECT_EQ(RaisedStatus([&] { file.Read(&byte, 1); }), "0x80070005");
  EXPECT_EQ(byte, '.');
}

TEST(ArchiveFileHandle, AHandleThatIsNotOpenRaisesInvalidHandle) {
  const TemporaryFolder folder;
  CMMCArchiveFile file(ClosedHandle(folder));
  char byte = '.';
  EXPECT_EQ(RaisedStatus([&] { file.Read(&byte, 1); }), "0x80070006");
  EXPECT_EQ(RaisedStatus([&] { file.Write(&byte, 1); }), "0x80070006");
}

TEST(ArchiveFileHandle, AFailureWithoutAReasonRaisesNothing) {
  const TemporaryFolder folder;
  CMMCArchiveFile file(ClosedHandle(folder));
  char byte = '.';
  const NoLastError silence;
  EXPECT_EQ(file.Read(&byte, 1), 0U);
  EXPECT_EQ(byte, '.');
  EXPECT_NO_THROW(file.Write(&byte, 1));
}

TEST(ArchiveFileHandle, TheHandleThatAFailedOpeningGivesIsNone) {
  CMMCArchiveFile file(INVALID_HANDLE_VALUE);
  char byte = '.';
  EXPECT_EQ(RaisedStatus([&] { file.Read(&byte, 1); }), "0x80004001");
  EXPECT_EQ(RaisedStatus([&] { file.Write(&byte, 1); }), "0x80004001");
}

TEST(ArchiveFileHandle, TheHandleIsLeftOpen) {
  const TemporaryFolder folder;
  const KernelHandle handle = OpenToWrite(folder / "a.bin");
  {
    CMMCArchiveFile file(handle.Get());
    CArchive archive(&file, CArchive::store);
    archive << DWORD{0x64636261};
    archive.Close();
    EXPECT_TRUE(IsOpen(handle.Get()));
  }
  ASSERT_TRUE(IsOpen(handle.Get()));
  CMMCArchiveFile file(handle.Get());
  EXPECT_THROW(file.Close(), CNotSupportedException);
  EXPECT_THROW(file.Abort(), CNotSupportedException);
  ASSERT_TRUE(IsOpen(handle.Get()));
  file.Write("e", 1);
  EXPECT_EQ(ReadBytes(folder / "a.bin"), "abcde");
}

}  // namespace
}  // namespace ondrel::test
