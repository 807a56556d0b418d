// The two strips of a definition's icons, against copying as many bytes.
#include <ondrel/platform/graphics.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <vector>

#include "definition_files.h"
#include "forms.h"
#include "measure.h"

namespace ondrel::bench {
namespace {

using platform::UniqueBitmap;

constexpr int kIcons = 200;
constexpr DWORD kKey = 0x0000A0FF;             // blue, green, red
constexpr std::uint32_t kKeyPixel = 0xFFA000;  // as a pixel has it
constexpr std::size_t kPixelBytes = 4;
constexpr std::size_t kStripBytes = kPixelBytes * kIcons * (16 * 16 + 32 * 32);

struct Strips {
  UniqueBitmap smallIcons;
  UniqueBitmap largeIcons;
};

/// A set of icons, and the number of each icon by its cookie.
struct Icons {
  std::unique_ptr<CMMCObjectSet> set = MakeSet();
  std::map<__int64, int> numbers;
};

Icons& AllIcons() {
  static Icons icons = [] {
    const ondrel::test::TemporaryFolder folder;
    Icons made;
    for (int icon = 0; icon < kIcons; ++icon) {
      const auto path = folder.Write(std::to_string(icon) + ".ico", IconBytes(icon));
      __int64 cookie = 0;
      AtlThrowIfFailed(made.set->AddIconFile(ondrel::test::Wide(path), cookie));
      made.numbers.emplace(cookie, icon);
    }
    return made;
  }();
  return icons;
}

void MakeStrips(Strips& strips) {
  HBITMAP smallIcons = nullptr;
  HBITMAP largeIcons = nullptr;
  AllIcons().set->GetIconBitmapImages(kKey, smallIcons, largeIcons);
  strips = {UniqueBitmap(smallIcons), UniqueBitmap(largeIcons)};
}

/// A strip shows the icons in the order of their cookies.
void RequireIcons(HBITMAP strip, int size) {
  BITMAP bitmap{};
  Require(strip != nullptr && GetObjectW(strip, sizeof bitmap, &bitmap) != 0, "a strip is not made");
  Require(bitmap.bmWidth == size * kIcons && bitmap.bmHeight == size && bitmap.bmBitsPixel == 8 * kPixelBytes,
          "a strip has the wrong size");
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(size * kIcons * size));
  const auto bytes = static_cast<LONG>(pixels.size() * kPixelBytes);
  Require(GetBitmapBits(strip, bytes, pixels.data()) == bytes, "a strip has too few pixels");
  int left = 0;
  for (const auto& [cookie, number] : AllIcons().numbers) {
    for (int y = 0; y < size; ++y) {
      for (int x = 0; x < size; ++x) {
        const std::uint32_t drawn = pixels[static_cast<std::size_t>(y * size * kIcons + left + x)] & 0xFFFFFF;
        Require(drawn == (IsInDisc(size, x, y) ? IconColour(number) : kKeyPixel), "an icon is not drawn as it is");
      }
    }
    left += size;
  }
}

void DrawOurs(benchmark::State& state) {
  AllIcons();
  MeasureUsed(state, std::make_unique<Strips>, MakeStrips);
  Strips strips;
  MakeStrips(strips);
  RequireIcons(strips.smallIcons.get(), platform::kSmallIconSize);
  RequireIcons(strips.largeIcons.get(), platform::kLargeIconSize);
}

void CopyBytes(benchmark::State& state) {
  const std::vector<unsigned char> source(kStripBytes, 0x55);
  std::vector<unsigned char> target(kStripBytes);
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    std::memcpy(target.data(), source.data(), target.size());
    benchmark::ClobberMemory();
    const auto end = std::chrono::steady_clock::now();
    state.SetIterationTime(std::chrono::duration<double>(end - start).count());
  }
  Require(target == source, "memcpy does not copy");
}

}  // namespace

void AddBenchmarks() {
  const int iterations = IsQuick() ? 2 : 50;
  AddWork("icon_strips/ours", kIcons, iterations, DrawOurs);
  AddWork("icon_strips/memcpy", kIcons, iterations, CopyBytes);
}

}  // namespace ondrel::bench
