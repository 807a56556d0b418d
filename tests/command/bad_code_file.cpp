#include "bad_code_file.h"

#include <gtest/gtest.h>

namespace ondrel::test {

void ExpectCodeFileRefused(const ProjectFolder& folder, const std::string& attributes, const std::string& complaint,
                           const std::string& status) {
  folder.Write("a.js", "");
  folder.WriteProject(Lines({R"(<Project><FileGroup>)", R"(<File Cookie="1" Name="a.js"/>)",
                             "<File Cookie=\"2\" " + attributes + "/>", R"(</FileGroup></Project>)"}));
  folder.Write(kImageName, "old image");
  const std::string listing = folder.Listing();
  ExpectFailure(folder.Compile(), "console.xml:3: code file 2, " + complaint, status);
  EXPECT_EQ(ReadBytes(folder / kImageName), "old image");
  EXPECT_EQ(folder.Listing(), listing);
}

}  // namespace ondrel::test
