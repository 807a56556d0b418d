// Icons of every depth and of many sizes, made by ImageMagick and icotool, decoded by us and by both.
#include <gtest/gtest.h>

#include "decoders/icon_comparison.h"
#include "decoders/made_pictures.h"
#include "support/posix/package_tools.h"

namespace ondrel::test {
namespace {

namespace fs = std::filesystem;

class MadeIcons : public ::testing::TestWithParam<Decoder> {};

INSTANTIATE_TEST_SUITE_P(WithEachDecoder, MadeIcons, ::testing::ValuesIn(kDecoders),
                         [](const auto& info) { return NameOf(info.param); });

TEST_P(MadeIcons, OfImageMagickAreTheSame) {
  const ImageCounts compared = CompareWith(GetParam(), BothTheSame(AllDrawnPictures().Icons()));
  // It writes no 24 bits.
  for (const char* const kind : {"1 bit", "4 bits", "8 bits", "32 bits"}) EXPECT_GE(compared.Of(kind), 60) << kind;
  EXPECT_GE(compared.Of("PNG"), 13);
}

// Every picture in every depth that it can be stored in.
TEST_P(MadeIcons, OfIcotoolAreTheSame) {
  const DrawnPictures& drawn = AllDrawnPictures();
  const TemporaryFolder folder;
  std::vector<fs::path> icons;
  for (const std::vector<std::string>& pictures : drawn.Kinds()) {
    for (const char* const bits : {"1", "4", "8", "24", "32"}) {
      icons.push_back(folder / (std::to_string(icons.size()) + ".ico"));
      std::vector<std::string> arguments = {"--create", "--output", icons.back().string(), "--bit-depth", bits};
      arguments.insert(arguments.end(), pictures.begin(), pictures.end());
      RunTool(kIcotool, arguments, drawn.Folder().Path());
    }
  }
  const ImageCounts compared = CompareWith(GetParam(), BothTheSame(icons));
  EXPECT_GE(compared.Of("1 bit"), 30);
  EXPECT_GE(compared.Of("4 bits"), 70);
  EXPECT_GE(compared.Of("8 bits"), 100);
  EXPECT_GE(compared.Of("24 bits"), 200);
  EXPECT_GE(compared.Of("32 bits"), 100);
}

}  // namespace
}  // namespace ondrel::test
