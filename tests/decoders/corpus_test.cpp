// Icons of other makers, decoded by us and by others.
#include <gtest/gtest.h>

#include "decoders/icon_comparison.h"
#include "support/posix/icon_corpus.h"

namespace ondrel::test {
namespace {

class IconsInTheWild : public ::testing::TestWithParam<Decoder> {};

INSTANTIATE_TEST_SUITE_P(WithEachDecoder, IconsInTheWild, ::testing::ValuesIn(kDecoders),
                         [](const auto& info) { return NameOf(info.param); });

TEST_P(IconsInTheWild, OfIconFilesAreTheSame) {
  const std::vector<std::filesystem::path>& files = WholeIconCorpus().IconFiles();
  EXPECT_GE(files.size(), 36U);
  const ImageCounts compared = CompareWith(GetParam(), BothTheSame(files));
  for (const char* const kind : {"4 bits", "8 bits", "32 bits"}) EXPECT_GE(compared.Of(kind), 40) << kind;
  EXPECT_GE(compared.Of("PNG"), 4);
}

TEST_P(IconsInTheWild, TakenOutOfProgramsAreTheSame) {
  const std::vector<std::filesystem::path>& files = WholeIconCorpus().ProgramIcons();
  EXPECT_GE(files.size(), 248U);
  const ImageCounts compared = CompareWith(GetParam(), BothTheSame(files));
  for (const char* const kind : {"4 bits", "8 bits", "32 bits"}) EXPECT_GE(compared.Of(kind), 500) << kind;
  for (const char* const kind : {"1 bit", "24 bits", "PNG"}) EXPECT_GE(compared.Of(kind), 50) << kind;
}

TEST_P(IconsInTheWild, OfProgramsAreTheFirstThatTheyStore) {
  std::vector<ComparedIcon> icons;
  for (const ProgramWithIcon& program : WholeIconCorpus().Programs())
    icons.push_back({program.path, program.firstIcon});
  EXPECT_GE(icons.size(), 38U);
  const ImageCounts compared = CompareWith(GetParam(), icons);
  EXPECT_GE(compared.Total(), 200);
}

}  // namespace
}  // namespace ondrel::test
