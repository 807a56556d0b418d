// Memory streams for tests.
#pragma once

#include <string_view>

#include <gtest/gtest.h>

#include <ondrel/platform/com.h>

namespace ondrel::test {

inline CComPtr<IStream> NewStream() {
  CComPtr<IStream> stream;
  EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
  return stream;
}

/// `position` is where the stream says that it stands then.
inline HRESULT SeekTo(IStream* stream, LONGLONG move, DWORD origin, ULONGLONG& position) {
  LARGE_INTEGER by;
  by.QuadPart = move;
  ULARGE_INTEGER reached;
  reached.QuadPart = position;
  const HRESULT status = stream->Seek(by, origin, &reached);
  position = reached.QuadPart;
  return status;
}

inline void Put(IStream* stream, std::string_view bytes) {
  ULONG written = 0;
  ASSERT_EQ(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written), S_OK);
  ASSERT_EQ(written, bytes.size());
}

}  // namespace ondrel::test
