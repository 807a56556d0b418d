// Projects whose icon files lie where only Windows could reach them, or are what Windows does not have.
#include <gtest/gtest.h>

#include "bad_project.h"
#include "support/posix/process.h"

namespace ondrel::test {
namespace {

const BadProject kIconsElsewhere[] = {
    {"IconOnADrive", Files({R"(<Icon Cookie="2" Path="C:\icons\a.ico"/>)"}),
     "3: icon file 2, \"C:\\icons\\a.ico\": the drive C: cannot be reached from this system; ", kPathNotFound},
    {"IconInTheNetwork", Files({R"(<Icon Cookie="2" Path="\\server\share\a.ico"/>)"}),
     "3: icon file 2, \"\\\\server\\share\\a.ico\": the network path cannot be reached from this system; ",
     kPathNotFound},
    {"IconIsAPipe", Files({R"(<Icon Cookie="2" Name="pipe"/>)"}), "3: icon file 2, \"pipe\": it is no regular file; ",
     kAccessDenied},
};

class IconsElsewhere : public testing::TestWithParam<BadProject> {};

TEST_P(IconsElsewhere, AreExplainedAndLeaveTheOldImage) {
  const BadProjectFolder folder(GetParam().text);
  MakeNamedPipe(folder / "pipe");
  folder.ExpectExplained(GetParam().complaint, GetParam().status);
  folder.ExpectRaised(GetParam().status);
}

INSTANTIATE_TEST_SUITE_P(Command, IconsElsewhere, testing::ValuesIn(kIconsElsewhere),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace ondrel::test
