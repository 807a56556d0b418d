// Files with names outside ASCII, through both commands: found, and printed as they are, in UTF-8.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// Letters of the narrow code page, letters that it does not have, and a character of two UTF-16 units.
const std::string kFolder =
    "Gr\xC3\xB6\xC3\x9F"
    "e";
const std::string kFile = "\xE6\x96\x87 \xF0\x9F\x98\x80";
// The same as the text of a project, which is read through the narrow code page: character references.
const std::string kWrittenFolder = "Gr&#xF6;&#xDF;e";
const std::string kWrittenFile = "&#x6587; &#x1F600;";

const std::string kDeepProject = kFolder + "/" + kFile + ".xml";
const std::string kImage = kFolder + "/" + kFile + ".img";

/// A project that names an icon and a code file in a folder below its own.
void WriteDefinition(const ProjectFolder& folder) {
  const std::string below = kWrittenFolder + "\\" + kWrittenFile;
  folder.Write(kDeepProject, "<Project><FileGroup>\n<Icon Cookie=\"1\" Name=\"" + below +
                                 ".ico\"/>\n<File Cookie=\"2\" Name=\"" + below + ".js\"/></FileGroup></Project>");
  folder.Write(kFolder + "/" + kFolder + "/" + kFile + ".ico", SmallIconFile());
  folder.Write(kFolder + "/" + kFolder + "/" + kFile + ".js", "run()");
}

TEST(Names, OutsideAsciiAreFoundAndPrinted) {
  const ProjectFolder folder;
  WriteDefinition(folder);
  const CommandResult compiled = folder.Run({"compile", kDeepProject, "-o", kImage});
  ExpectSuccess(compiled);
  EXPECT_THAT(compiled.output, StartsWith(kImage + ": 0 nodes, 0 dialogs, 1 icon, 1 code file, "));
  EXPECT_GT(ReadBytes(folder / kImage).size(), 4096U) << "the icon is in it";

  const CommandResult shown = folder.Show(kDeepProject);
  ExpectSuccess(shown);
  EXPECT_THAT(shown.output, StartsWith(kDeepProject + ": project, "));
  EXPECT_THAT(shown.output, HasSubstr("         2      5  " + kFolder + "\\" + kFile + ".js\n"));
  EXPECT_EQ(folder.Json(kDeepProject)["icons"][0]["path"], kFolder + "\\" + kFile + ".ico");
  ExpectSuccess(folder.Show(kImage));
}

TEST(Names, OutsideAsciiArePrintedInErrors) {
  const ProjectFolder folder;
  WriteDefinition(folder);
  ExpectFailure(folder.Show(kFile), kFile + ": there is no such file; ", "0x80070002");
  ExpectFailure(folder.Show(kFolder), kFolder + ": it is a folder; ", "0x80070005");
  ExpectFailure(folder.Run({"compile", kDeepProject, "-o", kDeepProject}),
                kDeepProject + ": the image would overwrite the project", "0x80070057");
  std::filesystem::remove(folder / (kFolder + "/" + kFolder + "/" + kFile + ".js"));
  ExpectFailure(folder.Run({"compile", kDeepProject, "-o", kImage}),
                kDeepProject + ":3: code file 2, \"" + kFolder + "\\" + kFile + ".js\": there is no such file; ",
                "0x80070002");
}

TEST(Names, OfIconsAndPicturesMayBeOutsideAscii) {
  const ProjectFolder folder;
  WriteDefinition(folder);
  const std::string icon = kFolder + "/" + kFolder + "/" + kFile + ".ico";
  const std::string picture = kFolder + "/" + kFile + ".png";
  const CommandResult shown = folder.Run({"icon", icon, "-o", picture});
  ExpectSuccess(shown);
  EXPECT_THAT(shown.output, StartsWith(icon + ": icon file, 2 images\n"));
  EXPECT_THAT(shown.output, testing::EndsWith("\n" + picture + ": 96 x 32 pixels\n"));
  const CommandResult strips = folder.Run({"strips", kDeepProject, "--key", "FF00FF", "--large", picture});
  ExpectSuccess(strips);
  EXPECT_EQ(strips.output, picture + ": 1 icon, 32 x 32 pixels\n");
  ExpectFailure(folder.Run({"strips", kDeepProject, "--key", "FF00FF", "--large", icon}),
                icon + ": the picture would overwrite icon file \"" + kFolder + "\\" + kFile + ".ico\"", "0x80070057");
}

TEST(Names, OfTheWorkingFolderMayBeOutsideAscii) {
  const ProjectFolder folder;
  WriteDefinition(folder);
  CommandLine commandLine = folder.Command({"compile", kFile + ".xml", "-o", "a.img"});
  commandLine.workingFolder = folder / kFolder;
  ExpectSuccess(RunCommand(commandLine));
}

}  // namespace
}  // namespace ondrel::test
