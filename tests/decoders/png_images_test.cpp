// PNG images of every form in icons, decoded by us, by ImageMagick and by LodePNG.
#include <gtest/gtest.h>

#include <algorithm>

#include "decoders/icon_comparison.h"
#include "decoders/png_forms.h"
#include "support/posix/package_tools.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

namespace fs = std::filesystem;

struct ImageSize {
  int width;
  int height;
};

// Adam7 makes seven images of one, some of them empty in the smallest.
constexpr ImageSize kImageSizes[] = {{1, 1}, {3, 2}, {5, 9}, {16, 16}, {17, 33}, {32, 32}, {48, 48}, {256, 256}};

class PngImages : public ::testing::TestWithParam<Decoder> {};

INSTANTIATE_TEST_SUITE_P(WithEachDecoder, PngImages, ::testing::ValuesIn(kDecoders),
                         [](const auto& info) { return NameOf(info.param); });

TEST_P(PngImages, OfEveryFormAreTheSame) {
  const TemporaryFolder folder;
  std::vector<fs::path> icons;
  const std::vector<PngForm> forms = AllPngForms();
  for (const PngForm& form : forms) {
    icons.push_back(folder / (form.Name() + ".ico"));
    std::vector<std::string> arguments = {"--create", "--output", icons.back().string()};
    for (const ImageSize& size : kImageSizes) {
      const std::string name = form.Name() + "-" + std::to_string(size.width) + ".png";
      folder.Write(name, PngBytes(form, size.width, size.height, static_cast<unsigned>(icons.size())));
      arguments.push_back("--raw=" + name);
    }
    RunTool(kIcotool, arguments, folder.Path());
  }
  const ImageCounts compared = CompareWith(GetParam(), BothTheSame(icons));
  const auto inEverySize = [](auto count) {
    return static_cast<int>(count) * static_cast<int>(std::size(kImageSizes));
  };
  const auto withGamma = std::count_if(forms.begin(), forms.end(), [](const PngForm& form) { return form.hasGamma; });
  const int leftOut = GetParam() == Decoder::imageMagick ? inEverySize(withGamma) : 0;
  EXPECT_EQ(compared.Of("PNG"), inEverySize(forms.size()) - leftOut);
}

}  // namespace
}  // namespace ondrel::test
