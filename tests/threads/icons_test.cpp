// The same icon files on several threads at once, good ones of every kind and damaged ones: each thread gets what one
// thread alone gets.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <ondrel/MMCObjectIcon.h>

#include "support/archive_bytes.h"
#include "support/executable_bytes.h"
#include "support/model/icon_strips.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/png_bytes.h"
#include "support/status_text.h"
#include "support/temporary_folder.h"
#include "threads/on_threads.h"

namespace ondrel::test {
namespace {

class IconsOfThreads : public testing::Test {
 protected:
  IconsOfThreads() {
    for (const int depth : {1, 4, 8, 16, 24, 32}) {
      Add(std::to_string(depth) + ".ico",
          IconFileBytes({PatternPicture(16, 16, depth), PatternPicture(48, 48, depth), PatternPicture(32, 32, depth)}));
    }
    const std::vector<StoredImage> png = {StoredPng(PatternPng(32, 32, PngColour::trueColourAlpha, 8)),
                                          StoredPng(PatternPng(16, 16, PngColour::palette, 4))};
    Add("png.ico", IconFileBytes(png));
    Add("program.exe", BuildProgram(IconResources(png)).bytes);
    Add("cut.ico", IconFileBytes(png).substr(0, 100));
    Add("text.ico", "no icon");
    m_paths.push_back(Wide(m_folder / "missing.ico"));
  }

  /// The status of each file and, where there is an icon, its images and which of its handles fit.
  std::string ReadAll() const {
    std::string told;
    for (const CString& path : m_paths) {
      CMMCObjectIcon icon;
      told += StatusText(icon.Construct(path));
      told += Stored([&](CVellum& archive) { icon.Serialize(archive); });
      told += icon.GetIcon(32, 32) == nullptr ? "-" : "+";
      told += icon.GetIcon(16, 16) == icon.GetIcon(32, 32) ? "=" : "#";
      const CMMCObjectBitmap masked = icon.GetMaskedBitmap(true, 0x00123456);
      told += std::to_string(masked.GetPixel(3, 5));
    }
    return told;
  }

  TemporaryFolder m_folder;
  std::vector<CString> m_paths;

 private:
  void Add(const std::string& name, const std::string& bytes) { m_paths.push_back(Wide(m_folder.Write(name, bytes))); }
};

TEST_F(IconsOfThreads, AreReadFromTheSameFilesAtOnce) {
  constexpr int kRounds = 4;
  const std::string alone = ReadAll();
  OnThreads([&](int thread) {
    for (int round = 0; round < kRounds; ++round) EXPECT_TRUE(ReadAll() == alone) << "thread " << thread;
  });
}

TEST_F(IconsOfThreads, StandInStripsAndListsOfSetsOfTheirOwn) {
  const auto strips = [&] {
    CMMCObjectSet set(LeaveToSet);
    __int64 next = 1;
    for (const CString& path : m_paths) CMMCObjectSetProbe::InsertIconFile(set, path, next++);
    const Strips made(set);
    CImageList list;
    EXPECT_TRUE(list.Create(16, 16, ILC_COLOR32 | ILC_MASK, 0, 1));
    set.GetIconImageList(16, 16, list);
    return Pixels(made.large) + Pixels(made.smallIcon) + std::to_string(list.GetImageCount());
  };
  const std::string alone = strips();
  OnThreads([&](int thread) {
    for (int round = 0; round < 2; ++round) EXPECT_TRUE(strips() == alone) << "thread " << thread;
  });
}

}  // namespace
}  // namespace ondrel::test
