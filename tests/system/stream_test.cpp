// Memory streams and the blocks below them.
#include <gtest/gtest.h>

#include <vector>

#include "system/documents.h"

namespace ondrel::test {
namespace {

CComPtr<IStream> NewStream() {
  CComPtr<IStream> stream;
  EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
  return stream;
}

HRESULT SeekTo(IStream* stream, LONGLONG move, DWORD origin, ULONGLONG& position) {
  LARGE_INTEGER by;
  by.QuadPart = move;
  ULARGE_INTEGER reached;
  reached.QuadPart = position;
  const HRESULT status = stream->Seek(by, origin, &reached);
  position = reached.QuadPart;
  return status;
}

void Put(IStream* stream, std::string_view bytes) {
  ULONG written = 0;
  ASSERT_EQ(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written), S_OK);
  ASSERT_EQ(written, bytes.size());
}

TEST(MemoryStream, ReadsBackWhatWasWritten) {
  const CComPtr<IStream> stream = NewStream();
  Put(stream, "hello world");
  ULONGLONG position = 0;
  ASSERT_EQ(SeekTo(stream, 6, STREAM_SEEK_SET, position), S_OK);
  char bytes[16] = {};
  ULONG read = 99;
  EXPECT_EQ(stream->Read(bytes, sizeof bytes, &read), S_OK) << "a short read is no failure";
  EXPECT_EQ(read, 5U);
  EXPECT_STREQ(bytes, "world");
  EXPECT_EQ(stream->Read(bytes, sizeof bytes, &read), S_OK);
  EXPECT_EQ(read, 0U);
  EXPECT_EQ(stream->Read(bytes, sizeof bytes, nullptr), S_OK) << "the count is optional";
}

TEST(MemoryStream, SeeksFromAllOrigins) {
  const CComPtr<IStream> stream = NewStream();
  Put(stream, "0123456789");
  ULONGLONG position = 0;
  EXPECT_EQ(SeekTo(stream, 0, STREAM_SEEK_CUR, position), S_OK);
  EXPECT_EQ(position, 10U);
  EXPECT_EQ(SeekTo(stream, -3, STREAM_SEEK_CUR, position), S_OK);
  EXPECT_EQ(position, 7U);
  EXPECT_EQ(SeekTo(stream, -10, STREAM_SEEK_END, position), S_OK);
  EXPECT_EQ(position, 0U);
  EXPECT_EQ(SeekTo(stream, 4, STREAM_SEEK_SET, position), S_OK);
  EXPECT_EQ(position, 4U);
  LARGE_INTEGER nowhere;
  nowhere.QuadPart = 0;
  EXPECT_EQ(stream->Seek(nowhere, STREAM_SEEK_SET, nullptr), S_OK) << "the position is optional";
}

TEST(MemoryStream, SeekingBeforeTheStartOrFromNowhereFailsAndMovesNothing) {
  const CComPtr<IStream> stream = NewStream();
  Put(stream, "0123");
  ULONGLONG position = 77;
  constexpr LONGLONG kFurthestBack = -9223372036854775807LL - 1;
  EXPECT_EQ(Hex(SeekTo(stream, -5, STREAM_SEEK_CUR, position)), Hex(STG_E_INVALIDFUNCTION));
  EXPECT_EQ(Hex(SeekTo(stream, -1, STREAM_SEEK_SET, position)), Hex(STG_E_INVALIDFUNCTION));
  EXPECT_EQ(Hex(SeekTo(stream, -5, STREAM_SEEK_END, position)), Hex(STG_E_INVALIDFUNCTION));
  EXPECT_EQ(Hex(SeekTo(stream, kFurthestBack, STREAM_SEEK_CUR, position)), Hex(STG_E_INVALIDFUNCTION));
  EXPECT_EQ(Hex(SeekTo(stream, 9223372036854775807LL, STREAM_SEEK_CUR, position)), Hex(STG_E_INVALIDFUNCTION));
  EXPECT_EQ(Hex(SeekTo(stream, 0, 3, position)), Hex(STG_E_INVALIDFUNCTION));
  EXPECT_EQ(position, 77U);
  EXPECT_EQ(SeekTo(stream, 0, STREAM_SEEK_CUR, position), S_OK);
  EXPECT_EQ(position, 4U);
}

TEST(MemoryStream, WritingBehindTheEndFillsTheGapWithZeros) {
  const CComPtr<IStream> stream = NewStream();
  Put(stream, "ab");
  ULONGLONG position = 0;
  ASSERT_EQ(SeekTo(stream, 5, STREAM_SEEK_SET, position), S_OK);
  Put(stream, "c");
  EXPECT_EQ(BytesOf(stream), std::string("ab\0\0\0c", 6));
}

TEST(MemoryStream, WritingOverTheMiddleKeepsTheRest) {
  const CComPtr<IStream> stream = NewStream();
  Put(stream, "abcdef");
  ULONGLONG position = 0;
  ASSERT_EQ(SeekTo(stream, 2, STREAM_SEEK_SET, position), S_OK);
  Put(stream, "XY");
  EXPECT_EQ(BytesOf(stream), "abXYef");
}

TEST(MemoryStream, SizeCanBeSet) {
  const CComPtr<IStream> stream = NewStream();
  Put(stream, "abc");
  ULARGE_INTEGER size;
  size.QuadPart = 5;
  EXPECT_EQ(stream->SetSize(size), S_OK);
  EXPECT_EQ(BytesOf(stream), std::string("abc\0\0", 5));
  size.QuadPart = 1;
  EXPECT_EQ(stream->SetSize(size), S_OK);
  EXPECT_EQ(BytesOf(stream), "a");
  size.QuadPart = 3;
  EXPECT_EQ(stream->SetSize(size), S_OK);
  EXPECT_EQ(BytesOf(stream), std::string("a\0\0", 3)) << "what was cut off does not come back";
}

TEST(MemoryStream, NullBuffersAreRefused) {
  const CComPtr<IStream> stream = NewStream();
  ULONG count = 9;
  EXPECT_EQ(Hex(stream->Read(nullptr, 1, &count)), Hex(STG_E_INVALIDPOINTER));
  EXPECT_EQ(count, 0U);
  EXPECT_EQ(Hex(stream->Write(nullptr, 1, &count)), Hex(STG_E_INVALIDPOINTER));
  EXPECT_EQ(Hex(stream->Write(nullptr, 0, &count)), Hex(S_OK));
  EXPECT_EQ(Hex(CreateStreamOnHGlobal(nullptr, TRUE, nullptr)), Hex(E_INVALIDARG));
}

TEST(MemoryStream, MoreThanFourGibibytesAreOutOfMemoryAndChangeNothing) {
  const CComPtr<IStream> stream = NewStream();
  Put(stream, "abc");
  ULONGLONG position = 0;
  ASSERT_EQ(SeekTo(stream, 0xFFFFFFFF, STREAM_SEEK_SET, position), S_OK);
  ULONG written = 9;
  EXPECT_EQ(Hex(stream->Write("x", 1, &written)), Hex(E_OUTOFMEMORY));
  EXPECT_EQ(written, 0U);
  ASSERT_EQ(SeekTo(stream, 9223372036854775807LL, STREAM_SEEK_SET, position), S_OK);
  EXPECT_EQ(Hex(stream->Write("x", 1, nullptr)), Hex(E_OUTOFMEMORY));
  ULARGE_INTEGER size;
  size.QuadPart = 0x100000000ULL;
  EXPECT_EQ(Hex(stream->SetSize(size)), Hex(E_OUTOFMEMORY));
  EXPECT_EQ(BytesOf(stream), "abc");
}

TEST(MemoryStream, ManySmallWritesGrowItSteadily) {
  const CComPtr<IStream> stream = NewStream();
  std::string expected;
  for (int number = 0; number < 100'000; ++number) {
    const std::string piece = std::to_string(number);
    Put(stream, piece);
    expected += piece;
  }
  EXPECT_EQ(BytesOf(stream), expected);
}

TEST(MemoryStream, LeavesItsBlockWhenItDoesNotOwnIt) {
  CComPtr<IStream> stream;
  ASSERT_EQ(CreateStreamOnHGlobal(nullptr, FALSE, &stream), S_OK);
  Put(stream, "kept");
  HGLOBAL block = nullptr;
  ASSERT_EQ(GetHGlobalFromStream(stream, &block), S_OK);
  stream.Release();
  CComPtr<IStream> second;
  ASSERT_EQ(CreateStreamOnHGlobal(block, FALSE, &second), S_OK);
  EXPECT_EQ(BytesOf(second), "kept");
  second.Release();
  EXPECT_EQ(GlobalFree(block), nullptr);
}

TEST(MemoryStream, IsAStreamAndNothingElse) {
  const CComPtr<IStream> stream = NewStream();
  CComPtr<ISequentialStream> sequential;
  EXPECT_EQ(stream.QueryInterface(&sequential), S_OK);
  CComPtr<IUnknown> unknown;
  EXPECT_EQ(stream.QueryInterface(&unknown), S_OK);
  CComPtr<IDispatch> dispatch;
  EXPECT_EQ(Hex(stream.QueryInterface(&dispatch)), Hex(E_NOINTERFACE));
  EXPECT_EQ(static_cast<IDispatch*>(dispatch), nullptr);
}

TEST(GlobalBlock, UnlocksAsOftenAsItWasLocked) {
  const CComPtr<IStream> stream = NewStream();
  HGLOBAL block = nullptr;
  ASSERT_EQ(GetHGlobalFromStream(stream, &block), S_OK);
  EXPECT_NE(GlobalLock(block), nullptr) << "an empty block has an address";
  EXPECT_NE(GlobalLock(block), nullptr);
  EXPECT_NE(GlobalUnlock(block), FALSE) << "still locked once";
  SetLastError(ERROR_GEN_FAILURE);
  EXPECT_EQ(GlobalUnlock(block), FALSE);
  EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
  EXPECT_EQ(GlobalUnlock(block), FALSE);
  EXPECT_EQ(GetLastError(), ERROR_NOT_LOCKED);
}

TEST(GlobalBlock, NullIsNoBlock) {
  EXPECT_EQ(GlobalLock(nullptr), nullptr);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
  EXPECT_EQ(GlobalUnlock(nullptr), FALSE);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
  HGLOBAL block = nullptr;
  EXPECT_EQ(Hex(GetHGlobalFromStream(nullptr, &block)), Hex(E_INVALIDARG));
}

}  // namespace
}  // namespace ondrel::test
