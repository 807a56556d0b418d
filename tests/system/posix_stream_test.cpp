// Memory streams of this system's own: statuses, zeros where nothing was written, null buffers, sizes beyond 32 bits,
// blocks of nothing. Windows leaves those bytes open, takes only part of a distant position, and may crash on null.
#include <gtest/gtest.h>

#include "support/counted_stream.h"
#include "system/documents.h"
#include "system/memory_streams.h"

namespace ondrel::test {
namespace {

TEST(PosixMemoryStream, SeekingBeforeTheStartOrFromNowhereFailsAndMovesNothing) {
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

TEST(PosixMemoryStream, WritingBehindTheEndFillsTheGapWithZeros) {
  const CComPtr<IStream> stream = NewStream();
  Put(stream, "ab");
  ULONGLONG position = 0;
  ASSERT_EQ(SeekTo(stream, 5, STREAM_SEEK_SET, position), S_OK);
  Put(stream, "c");
  EXPECT_EQ(BytesOf(stream), std::string("ab\0\0\0c", 6));
}

TEST(PosixMemoryStream, SizeCanBeSet) {
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

TEST(PosixMemoryStream, NullBuffersAreRefused) {
  const CComPtr<IStream> stream = NewStream();
  ULONG count = 9;
  EXPECT_EQ(Hex(stream->Read(nullptr, 1, &count)), Hex(STG_E_INVALIDPOINTER));
  EXPECT_EQ(count, 0U);
  EXPECT_EQ(Hex(stream->Write(nullptr, 1, &count)), Hex(STG_E_INVALIDPOINTER));
  EXPECT_EQ(Hex(stream->Write(nullptr, 0, &count)), Hex(S_OK));
}

TEST(PosixMemoryStream, MoreThanFourGibibytesAreOutOfMemoryAndChangeNothing) {
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

TEST(PosixGlobalBlock, OfNothingHasAnAddress) {
  const CComPtr<IStream> stream = NewStream();
  HGLOBAL block = nullptr;
  ASSERT_EQ(GetHGlobalFromStream(stream, &block), S_OK);
  EXPECT_NE(GlobalLock(block), nullptr);
  EXPECT_EQ(GlobalUnlock(block), FALSE);
  EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
}

TEST(PosixGlobalBlock, NullIsAnInvalidHandle) {
  EXPECT_EQ(GlobalLock(nullptr), nullptr);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
  SetLastError(ERROR_SUCCESS);
  EXPECT_EQ(GlobalUnlock(nullptr), FALSE);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST(PosixGlobalBlock, OfAStreamOfSomeoneElsesIsRefused) {
  /// Neither reads nor writes: it is only asked who it is.
  class ForeignStream final : public CountedStream {
    HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return E_NOTIMPL; }
  };
  ForeignStream foreign;
  const CComPtr<IStream> own = NewStream();
  HGLOBAL block = nullptr;
  ASSERT_EQ(GetHGlobalFromStream(own, &block), S_OK);
  EXPECT_EQ(Hex(GetHGlobalFromStream(&foreign, &block)), Hex(E_INVALIDARG));
  EXPECT_EQ(block, nullptr);
  EXPECT_EQ(Hex(GetHGlobalFromStream(nullptr, &block)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(GetHGlobalFromStream(own, nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(foreign.References(), 0U);
}

}  // namespace
}  // namespace ondrel::test
