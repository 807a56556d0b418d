// The scripts for shells and the manual, as the programs that read them take them. Those programs are Linux's.
#include <fstream>
#include <regex>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// A folder with two files and a folder, and the script of a shell.
class ShellFolder : public ProjectFolder {
 public:
  explicit ShellFolder(const std::string& shell) : m_shell(shell) {
    Write("console.xml", "");
    Write("console.img", "");
    Write("out/x", "");
    const CommandResult script = Run({"completion", shell});
    ExpectSuccess(script);
    Write("_ondrel", script.output);
  }

  std::vector<std::string> RunScript(const std::string& script) const {
    Write("run", script);
    CommandLine line = Command({m_shell, "run"});
    line.program = "/usr/bin/env";
    const CommandResult result = RunCommand(line);
    EXPECT_EQ(result.exitCode, 0) << result.output;
    EXPECT_EQ(result.errors, "");
    return LinesOf(result.output);
  }

 private:
  std::string m_shell;
};

/// What bash offers behind these words, the last of which is being typed.
std::vector<std::string> BashOffers(const std::string& words) {
  return ShellFolder("bash").RunScript("source ./_ondrel\nCOMP_WORDS=(ondrel " + words +
                                       ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n"
                                       "_ondrel\n[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\\n' \"${COMPREPLY[@]}\"\n");
}

TEST(BashCompletion, OffersCommandsOptionsFilesAndWords) {
  EXPECT_THAT(BashOffers("''"), IsSupersetOf({"compile", "show", "completion"}));
  EXPECT_THAT(BashOffers("sho"), ElementsAre("show"));
  EXPECT_THAT(BashOffers("compile --raw"), ElementsAre("--raw-text"));
  EXPECT_THAT(BashOffers("compile console.x"), ElementsAre("console.xml"));
  EXPECT_THAT(BashOffers("compile -o console.i"), ElementsAre("console.img"));
  EXPECT_THAT(BashOffers("compile --output = console.i"), ElementsAre("console.img"));
  EXPECT_THAT(BashOffers("completion z"), ElementsAre("zsh"));
  EXPECT_THAT(BashOffers("man -d ''"), ElementsAre("out"));
  EXPECT_THAT(BashOffers("strips --key ''"), ElementsAre());
  EXPECT_THAT(BashOffers("add ''"), ElementsAre("node", "dialog", "icon", "code"));
  EXPECT_THAT(BashOffers("add node --par"), ElementsAre("--parent"));
  EXPECT_THAT(BashOffers("add node --type h"), ElementsAre("html"));
}

/// What fish offers for a line; behind each a tab and what it is.
std::vector<std::string> FishOffers(const std::string& line) {
  std::vector<std::string> offers =
      ShellFolder("fish").RunScript("source ./_ondrel\ncomplete -C 'ondrel " + line + "'\n");
  for (std::string& offer : offers) offer.erase(std::min(offer.find('\t'), offer.size()));
  return offers;
}

TEST(FishCompletion, OffersCommandsOptionsFilesAndWords) {
  EXPECT_THAT(FishOffers(""), IsSupersetOf({"compile", "show", "completion"}));
  EXPECT_THAT(FishOffers("sho"), ElementsAre("show"));
  EXPECT_THAT(FishOffers("compile --raw"), ElementsAre("--raw-text"));
  EXPECT_THAT(FishOffers("compile console.x"), ElementsAre("console.xml"));
  EXPECT_THAT(FishOffers("compile -o console.i"), ElementsAre("console.img"));
  EXPECT_THAT(FishOffers("completion z"), ElementsAre("zsh"));
  EXPECT_THAT(FishOffers("add no"), ElementsAre("node"));
  EXPECT_THAT(FishOffers("add node --par"), ElementsAre("--parent"));
  EXPECT_THAT(FishOffers("add node --type h"), ElementsAre("html"));
}

/// What zsh makes of a line when the tabulator is pressed behind it. It completes in a terminal only, so it gets one.
std::string ZshLine(const std::string& line) {
  const ShellFolder folder("zsh");
  folder.Write("keys", line + "\t\x18");
  const auto said = folder.RunScript(R"zsh(zmodload zsh/zpty
zpty terminal zsh -f -i
zpty -w terminal 'PROMPT= fpath=($PWD $fpath); autoload -Uz compinit; compinit -u -D'
zpty -w terminal 'zstyle ":completion:*" insert-tab false; tell() { print -r -- "$BUFFER|" > told; BUFFER= }'
zpty -w terminal 'zle -N tell; bindkey "^X" tell; : > ready'
for ((wait = 0; wait < 1000; ++wait)); do [[ -e ready ]] && break; sleep 0.01; done
zpty -w -n terminal "$(< keys)"
for ((wait = 0; wait < 1000; ++wait)); do [[ -s told ]] && break; sleep 0.01; done
cat told
zpty -d terminal
)zsh");
  return said.empty() ? "nothing" : said.front();
}

TEST(ZshCompletion, CompletesCommandsOptionsFilesAndWords) {
  EXPECT_EQ(ZshLine("ondrel sho"), "ondrel show |");
  EXPECT_EQ(ZshLine("ondrel compile --raw"), "ondrel compile --raw-text |");
  EXPECT_EQ(ZshLine("ondrel compile console.x"), "ondrel compile console.xml |");
  EXPECT_EQ(ZshLine("ondrel compile -o console.i"), "ondrel compile -o console.img |");
  EXPECT_EQ(ZshLine("ondrel compile --output=console.i"), "ondrel compile --output=console.img |");
  EXPECT_EQ(ZshLine("ondrel completion z"), "ondrel completion zsh |");
  EXPECT_EQ(ZshLine("ondrel man -d o"), "ondrel man -d out/|");
  EXPECT_EQ(ZshLine("ondrel add no"), "ondrel add node |");
  EXPECT_EQ(ZshLine("ondrel add node --par"), "ondrel add node --parent |");
  EXPECT_EQ(ZshLine("ondrel add node --type h"), "ondrel add node --type html |");
}

/// The names of the commands in a help's lists.
std::set<std::string> CommandsOf(const std::string& help) {
  std::set<std::string> names;
  const std::regex line("  ([a-z][a-z-]*) +[A-Z].*");
  std::smatch match;
  for (const std::string& text : LinesOf(help)) {
    if (std::regex_match(text, match, line)) names.insert(match[1]);
  }
  return names;
}

TEST(Manual, HasAPageForEachCommandWithEveryOptionOfItsHelp) {
  const ProjectFolder folder;
  const std::string help = folder.Run({"--help"}).output;
  const auto commands = CommandsOf(help);
  EXPECT_THAT(commands, IsSupersetOf({"compile", "show", "icon", "strips", "man", "completion"}));
  const std::regex option("--[a-z][a-z-]*");
  for (const std::string& name : commands) {
    const CommandResult page = folder.Run({"man", name});
    ExpectSuccess(page);
    const std::string plain = std::regex_replace(page.output, std::regex(R"(\\-)"), "-");
    EXPECT_THAT(plain, HasSubstr("ondrel-" + name));
    const std::string text = folder.Run({name, "--help"}).output;
    for (std::sregex_iterator found(text.begin(), text.end(), option), end; found != end; ++found) {
      EXPECT_THAT(plain, HasSubstr(found->str())) << name;
    }
  }
}

TEST(Manual, PagesAreWrittenIntoAFolderAndFormatWithoutAComplaint) {
  const ProjectFolder folder;
  folder.Write("man/old", "");
  ExpectSuccess(folder.Run({"man", "-d", "man"}));
  std::size_t pages = 0;
  for (const auto& page : std::filesystem::directory_iterator(folder / "man")) {
    if (page.path().extension() != ".1") continue;
    ++pages;
    CommandLine formatter = folder.Command({"groff", "-man", "-Tutf8", "-P-cbou", "-ww", Utf8(page.path())});
    formatter.program = "/usr/bin/env";
    const CommandResult result = RunCommand(formatter);
    ExpectSuccess(result);
    EXPECT_THAT(result.output, HasSubstr("EXIT STATUS")) << page.path();
  }
  EXPECT_EQ(pages, CommandsOf(folder.Run({"--help"}).output).size() + 1);  // and that of ondrel itself
}

}  // namespace
}  // namespace ondrel::test
