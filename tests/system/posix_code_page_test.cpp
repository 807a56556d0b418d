// Text between UTF-16 and UTF-8 by this system's own conversion: how many replacements a broken sequence gives. Windows
// has changed that over time.
#include <gtest/gtest.h>

#include <string>

#include <ondrel/platform/com.h>

namespace ondrel::test {
namespace {

std::basic_string<WCHAR> Widened(const std::string& bytes) {
  std::basic_string<WCHAR> text(bytes.size(), 0);
  const int length = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), text.data(),
                                         static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

TEST(PosixCodePage, EveryByteOfASequenceThatCannotBeIsReplaced) {
  EXPECT_EQ(Widened("\xED\xA0\x80"), _T("\uFFFD\uFFFD\uFFFD")) << "a surrogate";
  EXPECT_EQ(Widened("\xF4\x90\x80\x80"), _T("\uFFFD\uFFFD\uFFFD\uFFFD")) << "beyond the last character";
}

}  // namespace
}  // namespace ondrel::test
