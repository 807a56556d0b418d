// The file over a stream: what it asks the stream for, and what it makes of the answers.

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCArchiveFile.h>

#include "model/read_up_to.h"
#include "support/raised_status.h"
#include "support/scripted_stream.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

/// A stream that answers QueryInterface as it is told to, and keeps count of it.
class AskedStream final : public CountedStream {
 public:
  AskedStream(HRESULT status, IStream* given) : m_status(status), m_given(given) {}

  int Asked() const { return m_asked; }
  bool AskedForStream() const { return m_askedForStream; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    constexpr IID kStream{0x0000000C, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
    ++m_asked;
    m_askedForStream = id == kStream;
    *object = m_given;
    if (m_given != nullptr) m_given->AddRef();
    return m_status;
  }
  HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG*) override { return E_UNEXPECTED; }
  HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return E_UNEXPECTED; }

 private:
  const HRESULT m_status;
  IStream* const m_given;
  int m_asked = 0;
  bool m_askedForStream = false;
};

TEST(ArchiveFileStream, IsReadInOrder) {
  ScriptedStream stream("abcdefg");
  CMMCArchiveFile file(&stream);
  EXPECT_EQ(ReadUpTo(file, 3), "abc");
  EXPECT_EQ(stream.LastCount(), 3U);
  EXPECT_EQ(ReadUpTo(file, 4), "defg");
  EXPECT_EQ(stream.Reads(), 2);
}

TEST(ArchiveFileStream, IsWrittenInOrder) {
  ScriptedStream stream;
  CMMCArchiveFile file(&stream);
  file.Write("abc", 3);
  EXPECT_EQ(stream.LastCount(), 3U);
  file.Write(std::string("d\0e", 3).data(), 3);
  EXPECT_EQ(stream.Bytes(), std::string("abcd\0e", 6));
  EXPECT_EQ(stream.Writes(), 2);
}

TEST(ArchiveFileStream, ReadingPastItsEndGivesFewerBytesAndThenNone) {
  ScriptedStream stream("abc");
  CMMCArchiveFile file(&stream);
  EXPECT_EQ(ReadUpTo(file, 10), "abc");
  EXPECT_EQ(ReadUpTo(file, 10), "");
  EXPECT_EQ(ReadUpTo(file, 0), "");
}

TEST(ArchiveFileStream, ASuccessThatIsNotZeroIsNoFailure) {
  ScriptedStream stream("abc");
  stream.Answer(S_FALSE);
  CMMCArchiveFile file(&stream);
  EXPECT_EQ(ReadUpTo(file, 10), "abc");
  EXPECT_EQ(ReadUpTo(file, 10), "");
  EXPECT_NO_THROW(file.Write("d", 1));
  EXPECT_EQ(stream.Bytes(), "abcd");
}

TEST(ArchiveFileStream, OneReadIsOneCallHoweverLittleItGives) {
  ScriptedStream stream("abc");
  stream.Shorten(1);
  CMMCArchiveFile file(&stream);
  EXPECT_EQ(ReadUpTo(file, 3), "a");
  EXPECT_EQ(stream.Reads(), 1);
  EXPECT_EQ(ReadUpTo(file, 3), "b");
}

TEST(ArchiveFileStream, AShortWritePassesSilently) {
  ScriptedStream stream;
  stream.Shorten(2);
  CMMCArchiveFile file(&stream);
  EXPECT_NO_THROW(file.Write("abcd", 4));
  EXPECT_EQ(stream.Bytes(), "ab");
  EXPECT_EQ(stream.Writes(), 1);
  stream.Shorten(0);
  EXPECT_NO_THROW(file.Write("e", 1));
  EXPECT_EQ(stream.Bytes(), "ab");
}

TEST(ArchiveFileStream, FailingReadsAndWritesRaiseTheirStatus) {
  for (const HRESULT status : {kChosenFailure, STG_E_MEDIUMFULL, E_FAIL, E_OUTOFMEMORY}) {
    ScriptedStream stream("abc");
    stream.Answer(status);
    CMMCArchiveFile file(&stream);
    char byte = '.';
    const auto reading = Raised<COleException>([&] { file.Read(&byte, 1); });
    ASSERT_TRUE(reading) << std::hex << status;
    EXPECT_EQ(reading->m_sc, status);
    const auto writing = Raised<COleException>([&] { file.Write(&byte, 1); });
    ASSERT_TRUE(writing) << std::hex << status;
    EXPECT_EQ(writing->m_sc, status);
    EXPECT_EQ(byte, '.');
    EXPECT_EQ(stream.Reads(), 1) << "nothing is tried again";
    EXPECT_EQ(stream.Writes(), 1) << "nothing is tried again";
  }
}

TEST(ArchiveFileStream, AFailureIsNotRemembered) {
  ScriptedStream stream("abc");
  CMMCArchiveFile file(&stream);
  stream.Answer(E_FAIL);
  char byte = 0;
  EXPECT_EQ(RaisedStatus([&] { file.Read(&byte, 1); }), "0x80004005");
  stream.Answer(S_OK);
  EXPECT_EQ(ReadUpTo(file, 3), "abc");
}

TEST(ArchiveFileStream, AStreamThatClaimsMoreThanItWasAskedForIsNotBelieved) {
  ScriptedStream stream("abcdef");
  stream.Exaggerate(1);
  CMMCArchiveFile file(&stream);
  char bytes[2] = {};
  EXPECT_EQ(RaisedStatus([&] { file.Read(bytes, sizeof bytes); }), "0x8000FFFF");
  EXPECT_NO_THROW(file.Write("g", 1)) << "what a write claims is not looked at";

  ScriptedStream endless("abcdef");
  endless.Exaggerate(0xFFFFFFF0U);
  CMMCArchiveFile hostile(&endless);
  CArchive archive(&hostile, CArchive::load, 16);
  DWORD value = 0;
  EXPECT_EQ(RaisedStatus([&] { archive >> value; }), "0x8000FFFF");
}

TEST(ArchiveFileStream, OneReferenceIsHeldAsLongAsTheFileLives) {
  ScriptedStream stream("abc");
  {
    CMMCArchiveFile file(&stream);
    EXPECT_EQ(stream.References(), 1U);
    ReadUpTo(file, 2);
    file.Write("d", 1);
    EXPECT_EQ(stream.References(), 1U);
    CMMCArchiveFile second(&stream);
    EXPECT_EQ(stream.References(), 2U);
  }
  EXPECT_EQ(stream.References(), 0U);
}

TEST(ArchiveFileStream, OutlivesTheHostsReference) {
  CComPtr<IStream> stream;
  ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
  ASSERT_EQ(stream->Write("abc", 3, nullptr), S_OK);
  ASSERT_EQ(stream->Seek({}, STREAM_SEEK_SET, nullptr), S_OK);
  CMMCArchiveFile file(stream);
  stream.Release();
  EXPECT_EQ(ReadUpTo(file, 3), "abc");
}

TEST(ArchiveFileStream, TheStreamIsTheOneThatQueryInterfaceGives) {
  ScriptedStream behind("abc");
  AskedStream front(S_OK, &behind);
  {
    CMMCArchiveFile file(&front);
    EXPECT_EQ(front.Asked(), 1);
    EXPECT_TRUE(front.AskedForStream());
    EXPECT_EQ(front.References(), 0U);
    EXPECT_EQ(behind.References(), 1U);
    EXPECT_EQ(ReadUpTo(file, 3), "abc");
  }
  EXPECT_EQ(behind.References(), 0U);
}

TEST(ArchiveFileStream, AStreamThatRefusesQueryInterfaceRaisesItsStatus) {
  for (const HRESULT status : {E_NOINTERFACE, kChosenFailure, E_OUTOFMEMORY}) {
    AskedStream stream(status, nullptr);
    const auto raised = Raised<COleException>([&] { CMMCArchiveFile file(&stream); });
    ASSERT_TRUE(raised) << std::hex << status;
    EXPECT_EQ(raised->m_sc, status);
    EXPECT_EQ(stream.Asked(), 1);
    EXPECT_EQ(stream.References(), 0U);
  }
}

TEST(ArchiveFileStream, WithoutAStreamNothingIsImplemented) {
  CMMCArchiveFile file(static_cast<IStream*>(nullptr));
  char byte = '.';
  EXPECT_EQ(RaisedStatus([&] { file.Read(&byte, 1); }), "0x80004001");
  EXPECT_EQ(RaisedStatus([&] { file.Read(&byte, 0); }), "0x80004001");
  EXPECT_EQ(RaisedStatus([&] { file.Write(&byte, 1); }), "0x80004001");
  EXPECT_EQ(byte, '.');
}

TEST(ArchiveFileStream, QueryInterfaceThatSucceedsWithoutAStreamGivesNone) {
  AskedStream stream(S_OK, nullptr);
  CMMCArchiveFile file(&stream);
  char byte = 0;
  EXPECT_EQ(RaisedStatus([&] { file.Read(&byte, 1); }), "0x80004001");
  EXPECT_EQ(RaisedStatus([&] { file.Write(&byte, 1); }), "0x80004001");
}

}  // namespace
}  // namespace ondrel::test
