// Projects whose icon files give no icon.
#include <gtest/gtest.h>

#include "bad_project.h"

namespace ondrel::test {
namespace {

const BadProject kBadIcons[] = {
    {"IconInAMissingFolder", Files({R"(<Icon Cookie="2" Name="gone\a.ico"/>)"}),
     "3: icon file 2, \"gone\\a.ico\": its folder is not there; ", kPathNotFound},
    {"IconIsText", Files({R"(<Icon Cookie="2" Name="text.ico"/>)"}), "3: icon file 2, \"text.ico\": it holds no icon; ",
     kNoIcon},
    {"IconIsEmpty", Files({R"(<Icon Cookie="2" Name="empty.ico"/>)"}),
     "3: icon file 2, \"empty.ico\": it holds no icon; ", kNoIcon},
    {"IconIsCut", Files({R"(<Icon Cookie="2" Name="cut.ico"/>)"}), "3: icon file 2, \"cut.ico\": its icon is damaged; ",
     kInvalidData},
    {"ADamagedIconComesBeforeAFileWithoutCookie",
     Files({R"(<File Name="a.js"/>)", R"(<Icon Cookie="2" Name="cut.ico"/>)"}),
     "4: icon file 2, \"cut.ico\": ", kInvalidData},
    {"AnIconWithoutCookieComesBeforeADamagedIcon",
     Files({R"(<Icon Name="good.ico"/>)", R"(<Icon Cookie="2" Name="cut.ico"/>)"}), "3: icon file \"good.ico\" has no ",
     kInvalidData},
};

class BadIcons : public testing::TestWithParam<BadProject> {};

TEST_P(BadIcons, AreExplainedAndLeaveTheOldImage) {
  const BadProjectFolder folder(GetParam().text);
  folder.ExpectExplained(GetParam().complaint, GetParam().status);
  folder.ExpectRaised(GetParam().status);
}

INSTANTIATE_TEST_SUITE_P(Command, BadIcons, testing::ValuesIn(kBadIcons),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace ondrel::test
