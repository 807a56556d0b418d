#include "strip_images.h"

#include "support/model/hand_bytes.h"

namespace ondrel::test {

std::string StoredBitmaps(const IconPicture& picture) {
  const int maskRow = (picture.width + 15) / 16 * 2;
  std::string colours;
  std::string mask(static_cast<std::size_t>(maskRow * picture.height), '\0');
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      for (const std::uint8_t part : picture.Colour(x, y)) colours += static_cast<char>(part);
      if (!picture.IsTransparent(x, y)) continue;
      char& bits = mask[static_cast<std::size_t>(y * maskRow + x / 8)];
      bits = static_cast<char>(bits | 0x80 >> x % 8);
    }
  }
  return BitmapBytes(picture.width, picture.height, 4 * picture.width, 32, colours) +
         BitmapBytes(picture.width, picture.height, maskRow, 1, mask);
}

std::string IconImage(const std::vector<std::string>& icons) {
  std::string bytes = Long(1) + Long(1);  // versions of the set and of its records
  bytes += Count(0) + Count(0);           // top-level nodes, dialogs
  bytes += Count(icons.size());
  std::int64_t cookie = 0;
  for (const std::string& icon : icons) bytes += Cookie(++cookie) + icon;
  return bytes + Count(0) + Count(0);  // code files from disk and from memory
}

RgbaPicture StripOf(const std::vector<IconPicture>& pictures, const RgbaPixel& key) {
  constexpr RgbaPixel kBlack = {0, 0, 0, 255};
  RgbaPicture strip(pictures.front().width * static_cast<int>(pictures.size()), pictures.front().height, kBlack);
  for (std::size_t place = 0; place < pictures.size(); ++place) {
    const IconPicture& picture = pictures[place];
    for (int y = 0; y < picture.height && y < strip.height; ++y) {
      for (int x = 0; x < picture.width; ++x) {
        const int column = static_cast<int>(place) * picture.width + x;
        if (column >= strip.width) continue;
        const PixelBytes colour = picture.Colour(x, y);
        strip.At(column, y) = picture.IsTransparent(x, y) ? key : RgbaPixel{colour[2], colour[1], colour[0], kBlack[3]};
      }
    }
  }
  return strip;
}

CommandResult RunStrips(const ProjectFolder& folder, const std::string& file, const std::string& key) {
  return folder.Run({"strips", file, "--key", key, "--small", kSmallName, "--large", kLargeName});
}

}  // namespace ondrel::test
