// Path arguments as wide text and back, and the full form of a path.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/print_text.h"
#include "support/temporary_folder.h"

#include <ondrel/platform/program.h>

namespace ondrel::test {
namespace {

using platform::FullPath;
using platform::PathFromUtf8;
using platform::PathToUtf8;

TEST(PathText, Utf8BecomesUtf16AndBack) {
  const std::string path = "a/\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBF.js";
  EXPECT_EQ(PathFromUtf8(path), _T("a/\u00E9\u20AC\U0001F600\uFFFF.js"));
  EXPECT_EQ(PathToUtf8(PathFromUtf8(path)), path);
  EXPECT_EQ(PathFromUtf8(""), CString());
}

// Makes a folder the working one while a test runs.
class WorkingFolder {
 public:
  explicit WorkingFolder(const std::filesystem::path& path) : m_before(std::filesystem::current_path()) {
    std::filesystem::current_path(path);
  }
  ~WorkingFolder() { std::filesystem::current_path(m_before); }

 private:
  std::filesystem::path m_before;
};

CString Backslashed(const std::filesystem::path& path) {
  CString text = Wide(path);
  text.Replace('/', '\\');
  return text;
}

TEST(FullPath, OfARelativePathStartsAtTheWorkingFolder) {
  const TemporaryFolder folder;
  const WorkingFolder working(folder.Path());
  const CString root = Backslashed(std::filesystem::current_path());
  EXPECT_EQ(FullPath(_T("a.js")), root + _T("\\a.js"));
  EXPECT_EQ(FullPath(_T("sub\\a.js")), root + _T("\\sub\\a.js"));
  EXPECT_EQ(FullPath(_T(".\\sub/./x\\..//a.js")), root + _T("\\sub\\a.js"));
  EXPECT_EQ(FullPath(_T(".")), root);
  EXPECT_EQ(FullPath(_T("sub\\")), root + _T("\\sub\\"));
}

TEST(FullPath, OfWhatNamesNothingHereStaysAsItIs) {
  EXPECT_EQ(FullPath(CString()), CString());
  EXPECT_EQ(FullPath(_T("Q:\\x\\..\\a.js")), _T("Q:\\x\\..\\a.js"));
}

}  // namespace
}  // namespace ondrel::test
