// Paths of Windows: wide text, whatever its units, with a drive or a share at the root; and the program's arguments,
// which it gets as one line.
#include <gtest/gtest.h>

#include "support/print_text.h"
#include "support/windows/import_patch.h"

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

TEST(WindowsPathText, LoneSurrogatesAreEncodedLikeAnyCharacterAndComeBack) {
  const struct {
    CString text;
    std::string bytes;
  } rows[] = {
      {Units({0xD800}), "\xED\xA0\x80"},
      {Units({'a', 0xDBFF, 'z'}), "a\xED\xAF\xBFz"},
      {Units({0xDC80}), "\xED\xB2\x80"},
      {Units({0xDFFF, 0xD83D, 0xDE00}), "\xED\xBF\xBF\xF0\x9F\x98\x80"},
      {Units({0xDE00, 0xD83D}), "\xED\xB8\x80\xED\xA0\xBD"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(PathToUtf8(row.text), row.bytes);
    EXPECT_EQ(PathFromUtf8(row.bytes), row.text);
  }
}

TEST(WindowsPathText, EveryUnitComesBack) {
  for (unsigned unit = 1; unit < 0x10000; ++unit) {
    for (const CString& text : {Units({unit}), Units({'a', unit, 'z'}), Units({0xD83D, unit}), Units({unit, 0xDE00})}) {
      ASSERT_EQ(PathFromUtf8(PathToUtf8(text)), text) << std::hex << unit;
    }
  }
}

TEST(WindowsPathText, BytesThatAreNoUtf8BecomeReplacements) {
  EXPECT_EQ(PathFromUtf8("a\x80z"), Units({'a', 0xFFFD, 'z'}));
  EXPECT_EQ(PathFromUtf8("\xC3"), Units({0xFFFD}));
}

TEST(WindowsFullPath, OfAFullPathLosesItsDots) {
  EXPECT_EQ(FullPath(_T("C:/a/../b/./c")), _T("C:\\b\\c"));
  EXPECT_EQ(FullPath(_T("C:\\..\\..\\a")), _T("C:\\a"));
  EXPECT_EQ(FullPath(_T("C:/")), _T("C:\\"));
  EXPECT_EQ(FullPath(_T("C:\\a\\..")), _T("C:\\"));
  EXPECT_EQ(FullPath(_T("//server/share/a/../b")), _T("\\\\server\\share\\b"));
}

TEST(WindowsFullPath, WithoutADriveIsOfTheWorkingOne) {
  const CString drive = FullPath(_T(".")).Left(2);
  EXPECT_EQ(FullPath(_T("/a/../b")), drive + _T("\\b"));
  EXPECT_EQ(FullPath(drive + _T("a.js")), FullPath(_T("a.js")));
}

TEST(WindowsFullPath, MayBeLongerThanMostCallsTake) {
  const CString name('n', 200);
  const CString path = _T("C:\\") + name + _T("\\") + name + _T("\\") + name;
  EXPECT_EQ(FullPath(path), path);
}

// What a line of arguments stands for; the program's own line would be the test runner's.
LPWSTR WINAPI OtherLine() {
  static WCHAR line[] =
      _T("\"C:\\Program Files\\ondrel.exe\" compile \"two words\" \u00E9\U0001F600.xml \xD83D a\\\"b \"\"");
  return line;
}

TEST(WindowsProgramArguments, AreThoseOfTheLineWithoutTheProgramsOwnName) {
  const ImportPatch patch("GetCommandLineW", OtherLine);
  char name[] = "program";
  char* arguments[] = {name, nullptr};
  EXPECT_EQ(
      platform::ProgramArguments(1, arguments),
      (std::vector<std::string>{"compile", "two words", "\xC3\xA9\xF0\x9F\x98\x80.xml", "\xED\xA0\xBD", "a\"b", ""}));
}

}  // namespace
}  // namespace ondrel::test
