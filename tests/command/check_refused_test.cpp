// What `ondrel check` tells of projects and images that do not load: all that is wrong, and not the first alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checked_project.h"

namespace ondrel::test {
namespace {

constexpr const char* kNoNumber =
    "2: error: a node has the Cookie \"one\", which is no whole number; give it decimal digits [number-malformed]";

TEST(CheckRefused, AllThatALoadWouldTripOverIsTold) {
  CheckedProject(
      {
          R"(<Project><NodeGroup>)",
          R"(<Node Cookie="one" Name="a" Icon="0" Type="List"><MenuScript/></Node>)",
          R"(<Node Cookie="2" Icon="x" Type="HTML"><Scripts><Script/></Scripts><ChildQueries>)",
          R"(<Query Tag="t"/></ChildQueries></Node></NodeGroup><DialogGroup>)",
          R"(<Dialog Cookie="2" Name="d" Icon="0" Type="List"><MenuScript File="77"/></Dialog>)",
          R"(<Dialog Cookie="3" Name="d" Icon="0" Type="List"><MenuScript/></Dialog></DialogGroup><FileGroup>)",
          R"(<Icon Cookie="4" Name="a.js"/><File Cookie="5"/>)",
          R"(<File Cookie="6" Name="a.js"/>)",
          R"(<File Cookie="7" Name="a.js"/>)",
          R"(<File Cookie="6" Name="b.js"/>)",
          R"(</FileGroup></Project>)",
      })
      .ExpectRemarks(
          {kNoNumber, "3: error: node 2 has no Name attribute; give it one [attribute-missing]",
           "3: error: node 2 has the Icon \"x\", which is no whole number; give it decimal digits [number-malformed]",
           "3: error: node 2 has no MenuScript element; add <MenuScript/> [element-missing]",
           // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a long line goes on in the next one
           "3: error: a Script of node 2 has no File attribute, and reading it would never end; give it a code file's "
           "cookie or remove it [script-without-file]",
           "3: error: node 2 shows a view but has no StyleSheet element; add <StyleSheet/> [element-missing]",
           "4: error: a Query of node 2 has no File attribute; give it a code file's cookie [attribute-missing]",
           "5: error: dialog 2 has the cookie of the node or dialog in line 3; give it another [cookie-taken]",
           "5: error: the MenuScript of dialog 2 is to be the file 77, which is not in the definition; add it, or take "
           "the reference away [file-unknown]",
           "6: error: dialog 3 has the name \"d\" of the dialog in line 5; give it another [name-taken]",
           "7: error: code file 5 has neither a Name nor a Path attribute; say where the file is [attribute-missing]",
           "7: warning: icon file 4, \"a.js\": no node and no dialog refers to it; remove it, or refer to it "
           "[file-unused]",
           "7: warning: code file 5: no node and no dialog refers to it; remove it, or refer to it [file-unused]",
           "7: error: icon file 4, \"a.js\": it holds no icon; name an icon file, or a program or library that has one "
           "[icon-missing]",
           "8: warning: code file 6, \"a.js\": no node and no dialog refers to it; remove it, or refer to it "
           "[file-unused]",
           "9: error: code file 7 names the same file as in line 8; remove one of the two [file-repeated]",
           "9: warning: code file 7, \"a.js\": no node and no dialog refers to it; remove it, or refer to it "
           "[file-unused]",
           "10: error: code file 6 has the cookie of the code file in line 8; give it another [cookie-taken]",
           "10: warning: code file 6, \"b.js\": no node and no dialog refers to it; remove it, or refer to it "
           "[file-unused]"},
          "14 errors, 5 warnings", 1);
}

TEST(CheckRefused, AFaultOfTheXmlIsToldAlone) {
  const CommandResult result = CheckedProject({"<Project>", "<NodeGroup Kind='1'>", "</Project>"}).Check();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(result.output, testing::StartsWith("console.xml:3: error: the XML cannot be read: "));
  EXPECT_THAT(result.output, testing::EndsWith("; correct it [xml-malformed]\n1 error, 0 warnings\n"));
}

TEST(CheckRefused, AByteOrderMarkIsTold) {
  CheckedProject({"\xEF\xBB\xBF<Project/>"})
      .ExpectRemarks({"1: error: the text begins with a byte-order mark; save it as UTF-8 without one [xml-malformed]"},
                     "1 error, 0 warnings", 1);
}

TEST(CheckRefused, AnotherRootIsTold) {
  CheckedProject({"<project/>"})
      .ExpectRemarks({"1: error: the root element is \"project\"; a project's is \"Project\", with a capital P "
                      "[root-element]"},
                     "1 error, 0 warnings", 1);
}

TEST(CheckRefused, ADamagedImageIsToldAsARemark) {
  const CheckedProject folder({"<Project/>"});
  ExpectSuccess(folder.Compile());
  folder.Write(kImageName, ReadBytes(folder / kImageName).substr(0, 20));
  const CommandResult result = folder.Run({"check", "--json", kImageName});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "");
  const nlohmann::json expected = {{"file", "console.img"},
                                   {"remarks",
                                    {{{"severity", "error"},
                                      {"code", "image-damaged"},
                                      {"line", nullptr},
                                      {"object", nullptr},
                                      {"cookie", nullptr},
                                      {"text", "it ends early, after 20 bytes, in the number of dialogs"},
                                      {"advice", "compile it anew"}}}},
                                   {"errors", 1},
                                   {"warnings", 0}};
  EXPECT_EQ(nlohmann::json::parse(result.output).dump(1), expected.dump(1));
}

TEST(CheckRefused, AScriptWithoutFileThatNoLoadReachesIsOnlyUnread) {
  const CommandResult result = CheckedProject({"<Project>", "<Scripts><Script/></Scripts>", "</Project>"}).Check();
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_THAT(result.output,
              testing::StartsWith("console.xml:2: warning: the element \"Scripts\" in the Project is not "
                                  "read, with all that is in it, and not kept by a save; "));
}

}  // namespace
}  // namespace ondrel::test
