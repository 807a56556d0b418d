// Projects whose icon files give no icon, on Windows: its reader has statuses of its own for some, and none for others,
// which the command then explains by what it sees itself.
#include <gtest/gtest.h>

#include "bad_project.h"
#include "support/windows/missing_drive.h"

namespace ondrel::test {
namespace {

/// The status that the command tells: the library's, or that of a file without an icon when the library has none.
DWORD ToldStatus(const BadProjectFolder& folder) {
  const HRESULT raised = folder.LoadStatus();
  return FAILED(raised) ? static_cast<DWORD>(raised) : kNoIcon;
}

TEST(BadIcon, InAMissingFolder) {
  const BadProjectFolder folder(Files({R"(<Icon Cookie="2" Name="gone\a.ico"/>)"}));
  folder.ExpectExplained("3: icon file 2, \"gone\\a.ico\": its folder is not there; ", kNoSuchFile);
  folder.ExpectRaised(kNoSuchFile);
}

TEST(BadIcon, OnADriveThatIsNotThere) {
  const std::string drive(1, MissingDrive());
  const BadProjectFolder folder(Files({"<Icon Cookie=\"2\" Path=\"" + drive + ":\\icons\\a.ico\"/>"}));
  folder.ExpectExplained(
      "3: icon file 2, \"" + drive + ":\\icons\\a.ico\": the drive " + drive + ": cannot be reached from this system; ",
      ToldStatus(folder));
}

TEST(BadIcon, ThatIsText) {
  const BadProjectFolder folder(Files({R"(<Icon Cookie="2" Name="text.ico"/>)"}));
  folder.ExpectExplained("3: icon file 2, \"text.ico\": it holds no icon; ", ToldStatus(folder));
}

TEST(BadIcon, ThatIsEmpty) {
  const BadProjectFolder folder(Files({R"(<Icon Cookie="2" Name="empty.ico"/>)"}));
  folder.ExpectExplained("3: icon file 2, \"empty.ico\": it holds no icon; ", ToldStatus(folder));
}

}  // namespace
}  // namespace ondrel::test
