// What `ondrel diff` tells, and what it answers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;

std::string LeafOf(std::string_view cookie, std::string_view name) {
  return "<Node Cookie=\"" + std::string(cookie) + "\" Name=\"" + std::string(name) +
         "\" Icon=\"0\" Type=\"List\"><MenuScript/></Node>";
}

/// A project with the top-level node 1, "Top", and those below it.
std::string TreeOf(const std::string& nodes) {
  return R"(<Project><NodeGroup><Node Cookie="1" Name="Top" Icon="0" Type="List"><MenuScript/><Nodes>)" + nodes +
         "</Nodes></Node></NodeGroup></Project>";
}

std::string DialogsOf(std::string_view dialogs) {
  return "<Project><DialogGroup>" + std::string(dialogs) + "</DialogGroup></Project>";
}

std::string FilesOf(std::string_view files) {
  return "<Project><FileGroup>" + std::string(files) + "</FileGroup></Project>";
}

/// Two projects, old.xml and new.xml.
class ProjectPair : public ProjectFolder {
 public:
  ProjectPair(std::string_view older, std::string_view newer) {
    Write("old.xml", older);
    Write("new.xml", newer);
  }

  CommandResult Diff() const { return Run({"diff", "old.xml", "new.xml"}); }
  /// The command prints these lines alone.
  void ExpectDifferences(std::initializer_list<std::string_view> lines) const {
    const CommandResult result = Diff();
    EXPECT_EQ(result.output, Lines(lines));
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitCode, 1);
  }
  void ExpectNone() const {
    const CommandResult result = Diff();
    ExpectSuccess(result);
    EXPECT_EQ(result.output, "nothing differs\n");
  }
};

const std::string kEverything = Lines({
    R"(<Project><NodeGroup><Node Cookie="4" Name="&lt;a" Icon="-7" Type="HTML">)",
    R"(<ChildQueries><Query Tag="Disks" File="9"/></ChildQueries><MenuScript File="8"/>)",
    R"(<Scripts><Script File="8"/></Scripts><StyleSheet File="9"/>)",
    R"(<RenderQueries><Query Tag="Sum" File="8"/></RenderQueries><Nodes>)",
    R"(<Node Cookie="0" Name="a" Icon="0" Type="Tree"><MenuScript/></Node>)",
    R"(<Node Cookie="2" Name="b" Icon="0" Type="List"><MenuScript/><StyleSheet File="9"/></Node>)",
    R"(<Node Cookie="3" Name="b" Icon="0" Type="Dialog"><ChildQueries><Query Tag="" File="9"/></ChildQueries>)",
    R"(<MenuScript/><StyleSheet/></Node>)",
    R"(</Nodes></Node></NodeGroup><DialogGroup>)",
    R"(<Dialog Cookie="-3" Name="Ask" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog></DialogGroup>)",
    R"(<FileGroup><Icon Cookie="-7" Name="a.ico"/><File Cookie="8" Name="a.js"/><File Cookie="9" Name="b.js"/>)",
    R"(</FileGroup></Project>)",
});

TEST(Diff, AProjectAndItsImageDoNotDiffer) {
  const ProjectFolder folder;
  folder.WriteProject(kEverything);
  folder.Write("a.ico", SmallIconFile());
  folder.Write("a.js", "run()");
  folder.Write("b.js", "");
  ExpectSuccess(folder.Compile());
  for (const auto& [older, newer] : {std::pair{kProjectName, kImageName},
                                     {kImageName, kProjectName},
                                     {kImageName, kImageName},
                                     {kProjectName, kProjectName}}) {
    const CommandResult result = folder.Run({"diff", older, newer});
    ExpectSuccess(result);
    EXPECT_EQ(result.output, "nothing differs\n") << older << ' ' << newer;
  }
}

TEST(Diff, NodesAreAddedAndRemoved) {
  ProjectPair(TreeOf(LeafOf("2", "a") + LeafOf("3", "b")), TreeOf(LeafOf("3", "b") + LeafOf("4", "c")))
      .ExpectDifferences({"- node 2 \"Top/a\"", "+ node 4 \"Top/c\"", "1 added, 1 removed, 0 moved, 0 changed"});
}

TEST(Diff, ARenamedNodeKeepsItsCookie) {
  ProjectPair(TreeOf(LeafOf("2", "a") + LeafOf("3", "b")), TreeOf(LeafOf("2", "z") + LeafOf("3", "b")))
      .ExpectDifferences({"~ node 2 \"Top/a\": name \"a\" -> \"z\"", "0 added, 0 removed, 0 moved, 1 changed"});
}

TEST(Diff, NodesOfOnePathBelongTogetherBeforeThoseOfOneCookie) {
  ProjectPair(TreeOf(LeafOf("2", "a") + LeafOf("3", "b")), TreeOf(LeafOf("3", "a") + LeafOf("5", "b")))
      .ExpectDifferences({"~ node 2 \"Top/a\": cookie 2 -> 3", "~ node 3 \"Top/b\": cookie 3 -> 5",
                          "0 added, 0 removed, 0 moved, 2 changed"});
}

TEST(Diff, NodesOfOneCookieAndNameBelongTogetherWhereverTheyStand) {
  ProjectPair(TreeOf(R"(<Node Cookie="2" Name="a" Icon="0" Type="List"><MenuScript/><Nodes>)" + LeafOf("7", "x") +
                     "</Nodes></Node>" + LeafOf("3", "b")),
              TreeOf(LeafOf("2", "a") + R"(<Node Cookie="3" Name="b" Icon="0" Type="List"><MenuScript/><Nodes>)" +
                     LeafOf("7", "x") + "</Nodes></Node>"))
      .ExpectDifferences(
          {"> node 7 \"Top/a/x\" moved from \"Top/a\" to \"Top/b\"", "0 added, 0 removed, 1 moved, 0 changed"});
}

TEST(Diff, ANodeThatCameToTheTopIsMoved) {
  const std::string inner = R"(<Node Cookie="1" Name="a" Icon="0" Type="List"><MenuScript/>)";
  ProjectPair("<Project><NodeGroup>" + inner + "<Nodes>" + LeafOf("2", "b") + "</Nodes></Node></NodeGroup></Project>",
              "<Project><NodeGroup>" + inner + "</Node>" + LeafOf("2", "b") + "</NodeGroup></Project>")
      .ExpectDifferences({"> node 2 \"a/b\" moved from \"a\" to the top", "0 added, 0 removed, 1 moved, 0 changed"});
}

TEST(Diff, OfSiblingsAsFewAsCanBeAreMoved) {
  // The order of siblings is that of their cookies; paths tell which is which.
  const std::string older =
      LeafOf("2", "a") + LeafOf("3", "b") + LeafOf("4", "c") + LeafOf("5", "d") + LeafOf("6", "e");
  const std::string newer =
      LeafOf("12", "e") + LeafOf("13", "a") + LeafOf("14", "b") + LeafOf("15", "c") + LeafOf("16", "d");
  const CommandResult result = ProjectPair(TreeOf(older), TreeOf(newer)).Diff();
  EXPECT_THAT(result.output, HasSubstr("> node 6 \"Top/e\" moved from place 5 to place 1 in \"Top\"\n"));
  EXPECT_THAT(result.output, HasSubstr("0 added, 0 removed, 1 moved, 5 changed\n"));
}

TEST(Diff, SiblingsThatExchangedTheirCookiesAreTold) {
  ProjectPair(TreeOf(LeafOf("2", "a") + LeafOf("3", "b")), TreeOf(LeafOf("2", "b") + LeafOf("3", "a")))
      .ExpectDifferences({"> node 2 \"Top/a\" moved from place 1 to place 2 in \"Top\"",
                          "~ node 2 \"Top/a\": cookie 2 -> 3", "~ node 3 \"Top/b\": cookie 3 -> 2",
                          "0 added, 0 removed, 1 moved, 2 changed"});
}

TEST(Diff, AnAddedSiblingMovesNoOther) {
  ProjectPair(TreeOf(LeafOf("3", "b") + LeafOf("4", "c")),
              TreeOf(LeafOf("2", "a") + LeafOf("3", "b") + LeafOf("4", "c")))
      .ExpectDifferences({"+ node 2 \"Top/a\"", "1 added, 0 removed, 0 moved, 0 changed"});
}

TEST(Diff, EveryValueOfARecordIsCompared) {
  ProjectPair(
      R"(<Project><NodeGroup><Node Cookie="1" Name="a" Icon="0" Type="HTML"><MenuScript/><StyleSheet File="5"/>)"
      R"(<RenderQueries><Query Tag="t" File="1"/></RenderQueries></Node></NodeGroup></Project>)",
      R"(<Project><NodeGroup><Node Cookie="1" Name="a" Icon="2" Type="Dialog"><ChildQueries>)"
      R"(<Query Tag="q" File="3"/><Query Tag="&quot;" File="4"/></ChildQueries><MenuScript File="6"/>)"
      R"(<Scripts><Script File="7"/><Script File="8"/></Scripts><StyleSheet/></Node></NodeGroup></Project>)")
      .ExpectDifferences(
          {"~ node 1 \"a\": icon 0 -> 2, type HTML -> Dialog, child queries [] -> [\"q\" 3, \"\"\" 4], "
           "menu script 0 -> 6, scripts [] -> [7, 8], style sheet 5 -> 0, render queries [\"t\" 1] -> []",
           "0 added, 0 removed, 0 moved, 1 changed"});
}

TEST(Diff, DialogsBelongTogetherByNameThenByCookie) {
  ProjectPair(DialogsOf(R"(<Dialog Cookie="1" Name="a" Icon="0" Type="HTML"><MenuScript/><StyleSheet/></Dialog>)"
                        R"(<Dialog Cookie="2" Name="b" Icon="0" Type="HTML"><MenuScript/><StyleSheet/></Dialog>)"
                        R"(<Dialog Cookie="3" Name="c" Icon="0" Type="HTML"><MenuScript/><StyleSheet/></Dialog>)"),
              DialogsOf(R"(<Dialog Cookie="2" Name="a" Icon="0" Type="HTML"><MenuScript/><StyleSheet/></Dialog>)"
                        R"(<Dialog Cookie="3" Name="d" Icon="0" Type="HTML"><MenuScript/><StyleSheet/></Dialog>)"
                        R"(<Dialog Cookie="9" Name="e" Icon="0" Type="HTML"><MenuScript/><StyleSheet/></Dialog>)"))
      .ExpectDifferences({"~ dialog 1 \"a\": cookie 1 -> 2", "- dialog 2 \"b\"",
                          "~ dialog 3 \"c\": name \"c\" -> \"d\"", "+ dialog 9 \"e\"",
                          "1 added, 1 removed, 0 moved, 2 changed"});
}

TEST(Diff, FilesBelongTogetherByCookie) {
  const ProjectPair folder(
      FilesOf(R"(<Icon Cookie="1" Name="a.ico"/><Icon Cookie="2" Name="a2.ico"/><Icon Cookie="3" Name="a3.ico"/>)"
              R"(<File Cookie="5" Name="a.js"/><File Cookie="6" Name="b.js"/><File Cookie="7" Name="c.js"/>)"),
      FilesOf(R"(<Icon Cookie="1" Name="b.ico"/><Icon Cookie="2" Name="b2.ico"/><Icon Cookie="4" Name="b4.ico"/>)"
              R"(<File Cookie="5" Name="a2.js"/><File Cookie="6" Name="x/b.js"/><File Cookie="8" Name="d.js"/>)"));
  for (const char* const name : {"a.ico", "a2.ico", "a3.ico", "b2.ico", "b4.ico"}) folder.Write(name, SmallIconFile());
  folder.Write("b.ico", ReadBytes(folder / "a.ico").replace(100, 4, "\x11\x22\x33\x44"));
  for (const char* const name : {"a.js", "b.js", "c.js", "d.js"}) folder.Write(name, "run()");
  folder.Write("a2.js", "run(1)");
  folder.Write("x/b.js", "ran()");
  folder.ExpectDifferences({
      "~ icon file 1 \"a.ico\": path \"a.ico\" -> \"b.ico\", images",
      "~ icon file 2 \"a2.ico\": path \"a2.ico\" -> \"b2.ico\"",
      "- icon file 3 \"a3.ico\"",
      "+ icon file 4 \"b4.ico\"",
      "~ code file 5 \"a.js\": path \"a.js\" -> \"a2.js\", contents of 5 bytes -> 6 bytes",
      "~ code file 6 \"b.js\": path \"b.js\" -> \"x/b.js\", contents of the same length",
      "- code file 7 \"c.js\"",
      "+ code file 8 \"d.js\"",
      "2 added, 2 removed, 0 moved, 4 changed",
  });
}

TEST(Diff, AnImageAndAChangedCodeFileDiffer) {
  const ProjectFolder folder;
  folder.WriteProject(FilesOf(R"(<File Cookie="5" Name="a.js"/>)"));
  folder.Write("a.js", std::string(200'000, 'x'));
  ExpectSuccess(folder.Compile());
  folder.Write("a.js", std::string(199'999, 'x') + 'y');
  const CommandResult result = folder.Run({"diff", kImageName, kProjectName});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "~ code file 5: contents of the same length\n0 added, 0 removed, 0 moved, 1 changed\n");
}

TEST(Diff, OneProjectInTwoFoldersDoesNotDiffer) {
  const ProjectFolder folder;
  for (const std::string inner : {"a/", "b/"}) {
    folder.Write(inner + "console.xml", FilesOf(R"(<File Cookie="5" Name="sub\a.js"/>)"));
    folder.Write(inner + "sub/a.js", "run()");
  }
  ExpectSuccess(folder.Run({"diff", "a/console.xml", "b/console.xml"}));
}

TEST(Diff, PrintsOneJsonObjectForPrograms) {
  const ProjectPair folder(TreeOf(LeafOf("2", "a")), TreeOf(LeafOf("2", "&#xF6;&#x9B;") + LeafOf("3", "b")));
  const CommandResult result = folder.Run({"diff", "--json", "old.xml", "new.xml"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "");
  const nlohmann::json expected = {
      {"differences",
       {{{"change", "changed"},
         {"object", "node"},
         {"cookie", "2"},
         {"name", "Top/a"},
         {"detail", "name \"a\" -> \"\xC3\xB6\\x9B\""}},
        {{"change", "added"}, {"object", "node"}, {"cookie", "3"}, {"name", "Top/b"}, {"detail", ""}}}},
      {"added", 1},
      {"removed", 0},
      {"moved", 0},
      {"changed", 1}};
  EXPECT_EQ(nlohmann::json::parse(result.output).dump(1), expected.dump(1));
  EXPECT_TRUE(std::all_of(result.output.begin(), result.output.end(), [](char byte) {
    return byte == '\n' || (byte >= ' ' && byte < 0x7F);
  })) << result.output;
}

TEST(Diff, NamesMoveNoTerminal) {
  ProjectPair(TreeOf(LeafOf("2", "a")), TreeOf(LeafOf("2", "x&#x9B;2J&#x202E;")))
      .ExpectDifferences(
          {"~ node 2 \"Top/a\": name \"a\" -> \"x\\x9B2J\\u202E\"", "0 added, 0 removed, 0 moved, 1 changed"});
}

TEST(Diff, ReadsTextAsItIsTold) {
  const ProjectPair folder(TreeOf(LeafOf("2", "\xC3\xB6")), TreeOf(LeafOf("2", "&#xF6;")));
  folder.ExpectNone();
  const CommandResult raw = folder.Run({"diff", "--raw-text", "old.xml", "new.xml"});
  EXPECT_EQ(raw.exitCode, 1);
  EXPECT_THAT(raw.output, HasSubstr("name \"\xC3\x83\xC2\xB6\" -> \"\xC3\xB6\"\n"));
}

/// The command failed and said so in one line.
void ExpectTrouble(const CommandResult& result, std::string_view start) {
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, testing::StartsWith("ondrel: " + std::string(start)));
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
}

TEST(Diff, AnswersTroubleWithTwo) {
  const ProjectPair folder("<Project/>", FilesOf(R"(<File Cookie="5" Name="gone.js"/>)"));
  folder.Write("older.xml", FilesOf(R"(<File Cookie="5" Name="a.js"/>)"));
  folder.Write("a.js", "");
  folder.Write("cut.xml", "<Project>");
  ExpectTrouble(folder.Run({"diff", "old.xml", "gone.xml"}), "gone.xml: there is no such file; ");
  ExpectTrouble(folder.Run({"diff", "cut.xml", "old.xml"}), "cut.xml:1: the XML cannot be read: ");
  ExpectTrouble(folder.Run({"diff", "older.xml", "new.xml"}), "gone.js: there is no such file; ");
}

TEST(Diff, RefusesWrongUsage) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"diff"}, {"diff", "a.xml"}, {"diff", "a.xml", "b.xml", "c.xml"}}) {
    const CommandResult result = ProjectFolder().Run(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.errors, HasSubstr("Try 'ondrel diff --help'."));
  }
}

TEST(Diff, IsFoundInTheHelp) {
  EXPECT_THAT(ProjectFolder().Run({"--help"}).output, HasSubstr("  diff "));
  EXPECT_THAT(ProjectFolder().Run({"diff", "--help"}).output, HasSubstr("Exit codes: 0 nothing differs, 1 something"));
}

TEST(Diff, BearsADeepTree) {
  const ProjectFolder folder;
  folder.Write("old.xml", ChainProject(kDeepChain));
  folder.Write("new.xml", ChainProject(kDeepChain - 1));
  const CommandResult result = folder.Run({"diff", "old.xml", "new.xml"});
  EXPECT_EQ(result.exitCode, 1) << result.errors;
  EXPECT_EQ(result.output, "- node " + std::to_string(kDeepChain - 1) +
                               " \".../n/n/n/n/n/n/n/n\"\n0 added, 1 removed, 0 moved, 0 changed\n");
}

TEST(Diff, BearsManySiblingsThatMoved) {
  constexpr int kManySiblings = kSanitized ? 20'000 : 100'000;
  std::string older;
  std::string newer;
  for (int node = 0; node < kManySiblings; ++node) {
    older += LeafOf(std::to_string(2 + node), "n" + std::to_string(node));
    newer += LeafOf(std::to_string(2 + kManySiblings + node), "n" + std::to_string(kManySiblings - 1 - node));
  }
  const CommandResult result = ProjectPair(TreeOf(older), TreeOf(newer)).Diff();
  EXPECT_EQ(result.exitCode, 1) << result.errors;
  const std::string closing = "\n0 added, 0 removed, " + std::to_string(kManySiblings - 1) + " moved, " +
                              std::to_string(kManySiblings) + " changed\n";
  EXPECT_TRUE(result.output.ends_with(closing))
      << result.output.substr(result.output.rfind('\n', result.output.size() - 2));
}

}  // namespace
}  // namespace ondrel::test
