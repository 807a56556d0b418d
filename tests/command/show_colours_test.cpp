// When `ondrel show` uses colours, and that they change nothing else.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class ShowColours : public testing::Test {
 protected:
  ShowColours() {
    folder.WriteProject(Lines({
        R"(<Project><NodeGroup><Node Cookie="1" Name="List node" Icon="7" Type="List"><MenuScript File="8"/><Nodes>)",
        R"(<Node Cookie="2" Name="HTML node" Icon="99" Type="HTML"><MenuScript File="98"/><StyleSheet/></Node>)",
        R"(<Node Cookie="3" Name="Odd node" Icon="0" Type="Tree"><MenuScript/></Node></Nodes></Node></NodeGroup>)",
        R"(<DialogGroup><Dialog Cookie="4" Name="" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)",
        R"(<Dialog Cookie="5" Name="Ask" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog></DialogGroup>)",
        R"(<FileGroup><Icon Cookie="7" Name="a.ico"/><File Cookie="8" Name="a.js"/><File Cookie="9" Name="gone"/>)",
        R"(</FileGroup></Project>)",
    }));
    folder.Write("a.ico", SmallIconFile());
    folder.Write("a.js", "");
  }

  std::string Show(std::vector<std::string> options) const {
    options.insert(options.begin(), {"show", kProjectName});
    const CommandResult result = folder.Run(options);
    ExpectSuccess(result);
    return result.output;
  }

  const ProjectFolder folder;
};

/// The text without what begins with an escape and ends with "m".
std::string WithoutColours(std::string text) {
  for (std::size_t start = text.find('\x1B'); start != std::string::npos; start = text.find('\x1B')) {
    text.erase(start, text.find('m', start) + 1 - start);
  }
  return text;
}

TEST_F(ShowColours, WithoutThemTheTextIsThePlainOne) {
  for (const std::vector<std::string>& part :
       {std::vector<std::string>{}, {"--node", "2"}, {"--record", "1"}, {"--record", "4"}}) {
    std::vector<std::string> coloured = part;
    coloured.insert(coloured.end(), {"--color", "always"});
    const std::string plain = Show(part);
    const std::string painted = Show(coloured);
    EXPECT_THAT(plain, Not(HasSubstr("\x1B")));
    EXPECT_THAT(painted, HasSubstr("\x1B["));
    EXPECT_EQ(WithoutColours(painted), plain);
  }
}

TEST_F(ShowColours, TellTypesCookiesAndWhatIsMissing) {
  const std::string text = Show({"--color", "always"});
  EXPECT_THAT(text, HasSubstr("\x1B[1mNodes\x1B[0m "));
  EXPECT_THAT(text, HasSubstr("\nList node    "));
  EXPECT_THAT(text, HasSubstr("\n├─ \x1B[32mHTML node\x1B[0m  HTML    \x1B[2m2\x1B[0m       "
                              "\x1B[31m99 (missing)\x1B[0m  menu \x1B[31m98 (missing)\x1B[0m\n"));
  EXPECT_THAT(text, HasSubstr("\n└─ \x1B[31mOdd node\x1B[0m   Oops!!  \x1B[2m3\x1B[0m\n"));
  EXPECT_THAT(text, HasSubstr("\n\x1B[35mAsk\x1B[0m      Dialog  \x1B[2m5\x1B[0m\n"));
  EXPECT_THAT(text, HasSubstr("\x1B[31munreadable\x1B[0m  gone\n"));
}

TEST_F(ShowColours, NeverReachAPipeByThemselves) {
  EXPECT_EQ(Show({"--color", "auto"}), Show({}));
  EXPECT_EQ(Show({"--color", "never"}), Show({}));
  EXPECT_THAT(Show({}), Not(HasSubstr("\x1B")));
}

TEST_F(ShowColours, NeverReachAFileByThemselves) {
  CommandLine commandLine = folder.Command({"show", kProjectName});
  commandLine.standardOutput = folder / "shown.txt";
  ExpectSuccess(RunCommand(commandLine));
  EXPECT_EQ(ReadBytes(folder / "shown.txt"), Show({}));
}

TEST_F(ShowColours, AskedForAreThereWhateverTheEnvironmentSays) {
  CommandLine commandLine = folder.Command({"show", kProjectName, "--color", "always"});
  commandLine.environment = {{"NO_COLOR", "1"}, {"TERM", "dumb"}};
  const CommandResult result = RunCommand(commandLine);
  ExpectSuccess(result);
  EXPECT_EQ(result.output, Show({"--color", "always"}));
}

TEST_F(ShowColours, AreNotInJson) {
  EXPECT_EQ(Show({"--json", "--color", "always"}), Show({"--json"}));
  EXPECT_EQ(Show({"--json", "--record", "1", "--color", "always"}), Show({"--json", "--record", "1"}));
}

TEST_F(ShowColours, OfAnyOtherChoiceAreWrongUsage) {
  const CommandResult result = folder.Run({"show", kProjectName, "--color", "blue\n"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "ondrel: --color: give auto, always or never\nTry 'ondrel show --help'.\n");
}

}  // namespace
}  // namespace ondrel::test
