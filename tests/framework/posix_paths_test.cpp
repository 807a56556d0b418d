// Paths of a system where they are plain bytes, in UTF-8 or not, and begin at one root for everything.
#include <gtest/gtest.h>

#include "support/print_text.h"

#include <ondrel/platform/program.h>

namespace ondrel::test {
namespace {

using platform::FullPath;
using platform::PathFromUtf8;
using platform::PathToUtf8;

CString Units(std::initializer_list<unsigned> units) {
  CString text;
  for (const unsigned unit : units) text += static_cast<WCHAR>(unit);
  return text;
}

TEST(PosixPathText, BytesThatAreNoUtf8BecomeLoneSurrogatesAndBack) {
  const struct {
    std::string bytes;
    CString text;
  } rows[] = {
      {"\xFF", Units({0xDCFF})},
      {"a\x80z", Units({'a', 0xDC80, 'z'})},
      {"\xC3", Units({0xDCC3})},                                      // a sequence cut short
      {"\xC3z", Units({0xDCC3, 'z'})},                                // and one broken off
      {"\xC0\xAF", Units({0xDCC0, 0xDCAF})},                          // a longer form than needed
      {"\xE0\x80\xAF", Units({0xDCE0, 0xDC80, 0xDCAF})},              // of three bytes
      {"\xF0\x80\x80\xAF", Units({0xDCF0, 0xDC80, 0xDC80, 0xDCAF})},  // of four
      {"\xED\xB2\x80", Units({0xDCED, 0xDCB2, 0xDC80})},              // a surrogate
      {"\xF4\x90\x80\x80", Units({0xDCF4, 0xDC90, 0xDC80, 0xDC80})},  // beyond the last character
      {"\xF0\x9F\x98\x80\x80", Units({0xD83D, 0xDE00, 0xDC80})},      // behind a pair
      {"\xF5\x80\x80\x80", Units({0xDCF5, 0xDC80, 0xDC80, 0xDC80})},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(PathFromUtf8(row.bytes), row.text);
    EXPECT_EQ(PathToUtf8(row.text), row.bytes);
  }
}

TEST(PosixPathText, EveryByteComesBack) {
  for (int first = 1; first < 256; ++first) {
    for (int second = 1; second < 256; ++second) {
      const std::string bytes = {static_cast<char>(first), static_cast<char>(second), 'z'};
      ASSERT_EQ(PathToUtf8(PathFromUtf8(bytes)), bytes) << "for the bytes " << first << " and " << second;
    }
  }
}

TEST(PosixPathText, OtherLoneSurrogatesBecomeReplacements) {
  EXPECT_EQ(PathToUtf8(Units({'a', 0xD800})), "a\xEF\xBF\xBD");
  EXPECT_EQ(PathToUtf8(Units({0xDC7F})), "\xEF\xBF\xBD");
  EXPECT_EQ(PathToUtf8(Units({0xDD00})), "\xEF\xBF\xBD");
}

TEST(PosixFullPath, OfAFullPathLosesItsDots) {
  EXPECT_EQ(FullPath(_T("/a/../b/./c")), _T("\\b\\c"));
  EXPECT_EQ(FullPath(_T("/../../a")), _T("\\a"));
  EXPECT_EQ(FullPath(_T("/")), _T("\\"));
  EXPECT_EQ(FullPath(_T("\\a\\..")), _T("\\"));
}

TEST(PosixProgramArguments, LeaveOutTheProgramsOwnName) {
  std::string name = "program";
  std::string first = "compile";
  std::string second = "\xFF.xml";
  char* arguments[] = {name.data(), first.data(), second.data(), nullptr};
  EXPECT_EQ(platform::ProgramArguments(3, arguments), (std::vector<std::string>{"compile", "\xFF.xml"}));
  EXPECT_TRUE(platform::ProgramArguments(1, arguments).empty());
  EXPECT_TRUE(platform::ProgramArguments(0, arguments + 3).empty());
}

}  // namespace
}  // namespace ondrel::test
