// `ondrel add icon` and `ondrel add code`: what lands in the project, and how files are named there.
#include <regex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "edit_folder.h"

namespace ondrel::test {
namespace {

/// Runs the command, which is done, and gives what its output has where `pattern` has groups.
std::vector<std::string> ExpectOutputLike(const EditFolder& folder, std::vector<std::string> arguments,
                                          const std::string& pattern) {
  const CommandResult result = folder.Run(std::move(arguments));
  ExpectSuccess(result);
  std::smatch match;
  if (!std::regex_match(result.output, match, std::regex(pattern))) {
    ADD_FAILURE() << result.output;
    return std::vector<std::string>(9);
  }
  return {std::next(match.begin()), match.end()};
}

/// The paths of files of a kind by their cookies.
std::map<std::string, std::string> PathsOf(const EditFolder& folder, const char* kind) {
  std::map<std::string, std::string> paths;
  const nlohmann::json definition = folder.Json(kProjectName);
  for (const nlohmann::json& file : definition[kind]) paths[file["cookie"]] = file["path"];
  return paths;
}

TEST(AddFiles, NamesThemFromTheProjectsFolderAndPrintsTheirCookies) {
  const EditFolder folder;
  folder.Write("new.js", "n");
  folder.Write("scripts/deep/c d.js", "c");
  const auto cookies = ExpectOutputLike(folder, {"add", "code", kProjectName, "new.js", "scripts/deep/../deep/c d.js"},
                                        "code file (\\d+): new\\.js\ncode file (\\d+): scripts\\\\deep\\\\c d\\.js\n");
  EXPECT_NE(cookies[0], cookies[1]);
  const auto paths = PathsOf(folder, "codeFiles");
  EXPECT_EQ(paths.size(), 6U);
  EXPECT_EQ(paths.at(cookies[0]), "new.js");
  EXPECT_EQ(paths.at(cookies[1]), "scripts\\deep\\c d.js");
  EXPECT_THAT(ReadBytes(folder / kProjectName), testing::HasSubstr(" Name=\"scripts\\deep\\c d.js\"/>"));
}

TEST(AddFiles, AnIconCanBeUsedByItsCookieAtOnce) {
  const EditFolder folder;
  folder.Write("icons/two.ico", SmallIconFile());
  const auto cookies = ExpectOutputLike(folder, {"add", "icon", kProjectName, "icons\\two.ico"},
                                        "icon file (\\d+): icons\\\\two\\.ico\n");
  folder.ExpectEdit({"set", kProjectName, "1", "--icon", cookies[0]}, "node 1: Disks\n");
  EXPECT_EQ(folder.Object("1")["icon"], cookies[0]);
  ExpectSuccess(folder.Compile());
}

TEST(AddFiles, StartsAtTheWorkingFolderAndStoresFromTheProjects) {
  const EditFolder folder;
  folder.Write("scripts/here.js", "h");
  CommandLine commandLine = folder.Command({"add", "code", "../console.xml", "here.js"});
  commandLine.workingFolder = folder / "scripts";
  const CommandResult result = RunCommand(commandLine);
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::EndsWith(": scripts\\here.js\n"));
  EXPECT_THAT(ReadBytes(folder / kProjectName), testing::HasSubstr(" Name=\"scripts\\here.js\"/>"));
}

TEST(AddFiles, AFileOutsideTheFolderIsNamedByItsWholePathAndThatIsSaid) {
  const EditFolder folder;
  folder.Write("sub/console.xml", "<Project/>");
  const CommandResult result = folder.Run({"add", "code", "sub/console.xml", "scripts/a.js"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output,
              testing::EndsWith("scripts\\a.js (outside the project's folder, so it is named by its whole path)\n"));
  EXPECT_THAT(ReadBytes(folder / "sub/console.xml"), testing::HasSubstr(" Path=\""));
  const CommandResult compiled = folder.Run({"compile", "sub/console.xml", "-o", kImageName});
  ExpectSuccess(compiled);
  EXPECT_EQ(folder.Json(kImageName)["codeFiles"][0]["bytes"], 1);
}

TEST(AddFiles, OneThatIsThereAlreadyIsToldWithItsCookie) {
  const EditFolder folder;
  for (const char* const spelling : {"scripts/a.js", "scripts\\a.js", "./scripts/../scripts/a.js"}) {
    folder.ExpectRefused({"add", "code", kProjectName, "queries/q.xml", spelling},
                         ": code file \"queries\\q.xml\" is in the project already, with the cookie 23; use that",
                         kAlreadyExistsText);
    folder.ExpectRefused({"add", "code", kProjectName, spelling},
                         ": code file \"scripts\\a.js\" is in the project already, with the cookie 22; use that",
                         kAlreadyExistsText);
  }
  folder.ExpectRefused({"add", "icon", kProjectName, "icons/disk.ico"},
                       ": icon file \"icons\\disk.ico\" is in the project already, with the cookie 11; use that",
                       kAlreadyExistsText);
}

TEST(AddFiles, OneMayBeAnIconFileAndACodeFile) {
  const EditFolder folder;
  ExpectOutputLike(folder, {"add", "code", kProjectName, "icons/disk.ico"}, "code file (\\d+): icons\\\\disk\\.ico\n");
}

TEST(AddFiles, AllAreAddedOrNone) {
  const EditFolder folder;
  folder.Write("new.js", "n");
  folder.Write("good.ico", SmallIconFile());
  folder.ExpectRefused({"add", "code", kProjectName, "new.js", "missing.js"},
                       ": code file \"missing.js\": there is no such file; ", "0x80070002");
  folder.ExpectRefused({"add", "code", kProjectName, "new.js", "./new.js"},
                       ": code file \"new.js\" is named twice; name it once", kAlreadyExistsText);
  folder.ExpectRefused({"add", "icon", kProjectName, "good.ico", "new.js"},
                       ": icon file \"new.js\": it holds no icon; ", "0x80070714");
}

TEST(AddFiles, RefusesWhatIsNoFile) {
  const EditFolder folder;
  for (const char* const kind : {"icon", "code"}) {
    const std::string start = std::string(": ") + kind + " file ";
    folder.ExpectRefused({"add", kind, kProjectName, "scripts"}, start + "\"scripts\": it is a folder; ", "0x80070005");
    folder.ExpectRefused({"add", kind, kProjectName, "no/a"}, start + "\"no/a\": its folder is not there; ",
                         "0x80070002");
    folder.ExpectRefused({"add", kind, kProjectName, ""}, start + "\"\": the name is empty; ", "0x80070002");
  }
}

TEST(AddFiles, RefusesADamagedIcon) {
  const EditFolder folder;
  folder.Write("bad.ico", SmallIconFile().substr(0, 100));
  folder.ExpectRefused({"add", "icon", kProjectName, "bad.ico"}, ": icon file \"bad.ico\": its icon is damaged; ",
                       "0x8007000D");
}

}  // namespace
}  // namespace ondrel::test
