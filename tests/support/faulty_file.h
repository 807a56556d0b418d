// A file in memory whose reads and writes fail or fall short when a test says so.
#pragma once

#include <algorithm>
#include <limits>

#include <ondrel/platform/framework/file.h>

namespace ondrel::test {

class FaultyFile : public CMemFile {
 public:
  FaultyFile() { SetFilePath(_T("faulty.bin")); }
  FaultyFile(const void* bytes, UINT count) : CMemFile(bytes, count) { SetFilePath(_T("faulty.bin")); }

  /// The number of the read or write that fails, from 1; 0 for none. A failed one moves nothing.
  void FailRead(int number) { m_failingRead = number; }
  void FailWrite(int number, int cause = CFileException::diskFull) {
    m_failingWrite = number;
    m_writeFault = cause;
  }
  /// The number of the read that gives half of what it was asked for, but at least a byte.
  void ShortenRead(int number) { m_shortRead = number; }
  /// The number of the first read that gives nothing, as at the end of the file.
  void EndAtRead(int number) { m_firstEmptyRead = number; }
  /// The most bytes that one read gives.
  void ShortenReads(UINT limit) { m_readLimit = limit; }

  int Reads() const { return m_reads; }
  int Writes() const { return m_writes; }
  /// The most bytes that one read asked for.
  UINT LargestRead() const { return m_largestRead; }

  UINT Read(void* buffer, UINT count) override {
    if (++m_reads == m_failingRead) Fail(CFileException::hardIO, ERROR_READ_FAULT);
    m_largestRead = std::max(m_largestRead, count);
    if (m_firstEmptyRead != 0 && m_reads >= m_firstEmptyRead) return 0;
    if (m_reads == m_shortRead && count > 1) count /= 2;
    return CMemFile::Read(buffer, std::min(count, m_readLimit));
  }
  void Write(const void* buffer, UINT count) override {
    if (++m_writes == m_failingWrite)
      Fail(m_writeFault, m_writeFault == CFileException::diskFull ? ERROR_DISK_FULL : ERROR_WRITE_FAULT);
    CMemFile::Write(buffer, count);
  }

 private:
  [[noreturn]] void Fail(int cause, DWORD osError) const {
    AfxThrowFileException(cause, static_cast<LONG>(osError), m_strFileName);
  }

  int m_failingRead = 0;
  int m_failingWrite = 0;
  int m_writeFault = CFileException::diskFull;
  int m_shortRead = 0;
  int m_firstEmptyRead = 0;
  int m_reads = 0;
  int m_writes = 0;
  UINT m_largestRead = 0;
  UINT m_readLimit = std::numeric_limits<UINT>::max();
};

}  // namespace ondrel::test
