// Memory streams and the blocks below them.
#include <gtest/gtest.h>

#include "system/documents.h"
#include "system/memory_streams.h"

namespace ondrel::test {
namespace {

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
  ULONGLONG position = 0;
  EXPECT_TRUE(FAILED(SeekTo(stream, -5, STREAM_SEEK_CUR, position)));
  EXPECT_TRUE(FAILED(SeekTo(stream, -1, STREAM_SEEK_SET, position)));
  EXPECT_TRUE(FAILED(SeekTo(stream, -5, STREAM_SEEK_END, position)));
  EXPECT_TRUE(FAILED(SeekTo(stream, 0, 3, position)));
  EXPECT_EQ(SeekTo(stream, 0, STREAM_SEEK_CUR, position), S_OK);
  EXPECT_EQ(position, 4U);
}

TEST(MemoryStream, WritingBehindTheEndLeavesAGap) {
  const CComPtr<IStream> stream = NewStream();
  Put(stream, "ab");
  ULONGLONG position = 0;
  ASSERT_EQ(SeekTo(stream, 5, STREAM_SEEK_SET, position), S_OK);
  Put(stream, "c");
  const std::string bytes = BytesOf(stream);
  EXPECT_EQ(bytes.size(), 6U);
  EXPECT_EQ(bytes.substr(0, 2), "ab");
  EXPECT_EQ(bytes.substr(5), "c");
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
  EXPECT_EQ(BytesOf(stream).size(), 5U);
  EXPECT_EQ(BytesOf(stream).substr(0, 3), "abc");
  size.QuadPart = 1;
  EXPECT_EQ(stream->SetSize(size), S_OK);
  EXPECT_EQ(BytesOf(stream), "a");
}

TEST(MemoryStream, NeedsAPlaceForItself) {
  EXPECT_EQ(Hex(CreateStreamOnHGlobal(nullptr, TRUE, nullptr)), Hex(E_INVALIDARG));
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
  Put(stream, "x");
  HGLOBAL block = nullptr;
  ASSERT_EQ(GetHGlobalFromStream(stream, &block), S_OK);
  EXPECT_NE(GlobalLock(block), nullptr);
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
  EXPECT_EQ(GlobalUnlock(nullptr), FALSE);
  HGLOBAL block = nullptr;
  EXPECT_EQ(Hex(GetHGlobalFromStream(nullptr, &block)), Hex(E_INVALIDARG));
}

}  // namespace
}  // namespace ondrel::test
