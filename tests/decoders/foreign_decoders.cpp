// Each tool runs once over all files. ImageMagick writes what it makes of them as portable arbitrary maps (PAM):
// a header of lines and the plain pixels, one after the other for the images of one file.
#include "decoders/foreign_decoders.h"

#include <lodepng.h>

#include <cstdio>
#include <sstream>
#include <stdexcept>

#include "support/posix/package_tools.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

namespace fs = std::filesystem;

constexpr unsigned kMost = 65535;  // of a channel of 16 bits

/// Channels of 16 bits, the higher byte first, as channels of 8.
std::string Rounded(std::string_view channels) {
  std::string rounded(channels.size() / 2, '\0');
  for (std::size_t index = 0; index < rounded.size(); ++index) {
    const auto higher = static_cast<unsigned char>(channels[index * 2]);
    const auto lower = static_cast<unsigned char>(channels[index * 2 + 1]);
    rounded[index] = static_cast<char>(((higher * 256U + lower) * 255 + kMost / 2) / kMost);
  }
  return rounded;
}

std::vector<ForeignImage> ReadMaps(const std::string& bytes) {
  std::vector<ForeignImage> images;
  std::istringstream stream(bytes);
  for (std::string line; std::getline(stream, line);) {
    if (line != "P7") throw std::runtime_error("no portable arbitrary map: " + line.substr(0, 20));
    ForeignImage image;
    std::string kind;
    int depth = 0;
    unsigned most = 0;
    while (std::getline(stream, line) && line != "ENDHDR") {
      std::istringstream words(line);
      std::string name;
      words >> name;
      if (name == "WIDTH") words >> image.width;
      if (name == "HEIGHT") words >> image.height;
      if (name == "DEPTH") words >> depth;
      if (name == "MAXVAL") words >> most;
      if (name == "TUPLTYPE") words >> kind;
    }
    if (depth != 4 || kind != "RGB_ALPHA" || most != kMost) throw std::runtime_error("a map of another kind: " + kind);
    const auto pixelCount = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    std::string pixels(pixelCount * 4 * 2, '\0');
    stream.read(pixels.data(), static_cast<std::streamsize>(pixels.size()));
    if (!stream) throw std::runtime_error("a map that ends early");
    image.rgba = Rounded(pixels);
    images.push_back(std::move(image));
  }
  return images;
}

/// Writes a map beside each file that ends so. ImageMagick chooses the depth: asked for 8 bits, it would cut, not
/// round.
void MakeMaps(const fs::path& folder, const std::string& ending, OnFailure onFailure) {
  RunTool(kMogrify, {"-format", "pam", "-depth", "16", "-alpha", "set", "-type", "TrueColorAlpha", "*" + ending},
          folder, onFailure);
}

/// The files under short names in a folder of their own.
class LinkedFiles {
 public:
  explicit LinkedFiles(const std::vector<fs::path>& files) {
    for (const fs::path& file : files) {
      m_names.push_back(std::to_string(m_names.size()));
      fs::create_symlink(file, m_folder / (m_names.back() + file.extension().string()));
    }
  }

  const fs::path& Folder() const { return m_folder.Path(); }
  std::vector<std::string> Names(const std::string& ending) const {
    std::vector<std::string> names;
    for (const std::string& name : m_names) names.push_back(name + ending);
    return names;
  }
  std::vector<ForeignImage> Map(std::size_t index) const {
    const fs::path map = m_folder / (m_names[index] + ".pam");
    return fs::exists(map) ? ReadMaps(ReadBytes(map)) : std::vector<ForeignImage>();
  }

 private:
  TemporaryFolder m_folder;
  std::vector<std::string> m_names;
};

std::vector<std::vector<ForeignImage>> DecodeWithImageMagick(const std::vector<fs::path>& files) {
  const LinkedFiles linked(files);
  MakeMaps(linked.Folder(), ".ico", OnFailure::ignore);
  std::vector<std::vector<ForeignImage>> icons;
  for (std::size_t index = 0; index < files.size(); ++index) icons.push_back(linked.Map(index));
  return icons;
}

// icotool writes the images as PNG files named FILE_IMAGE_WIDTHxHEIGHTxBITS.png.
std::vector<std::vector<ForeignImage>> DecodeWithIcotool(const std::vector<fs::path>& files) {
  const LinkedFiles linked(files);
  const fs::path taken = linked.Folder() / "taken";
  fs::create_directory(taken);
  std::vector<std::string> arguments = linked.Names(".ico");
  arguments.insert(arguments.begin(), {"--extract", "--output", taken.string()});
  RunTool(kIcotool, arguments, linked.Folder(), OnFailure::ignore);  // it fails for files that it reads only in part

  std::vector<std::vector<ForeignImage>> icons(files.size());
  for (const fs::directory_entry& entry : fs::directory_iterator(taken)) {
    std::size_t file = 0;
    std::size_t number = 0;
    const std::string name = entry.path().stem().string();
    // NOLINTNEXTLINE(cert-err34-c): the tool counts no further than its files go
    if (std::sscanf(name.c_str(), "%zu_%zu_", &file, &number) != 2) throw std::runtime_error("unexpected: " + name);
    std::vector<ForeignImage>& images = icons.at(file);
    if (images.size() < number) images.resize(number);
    images[number - 1] = DecodePng(ReadBytes(entry.path()));
  }
  return icons;
}

}  // namespace

const char* NameOf(Decoder decoder) { return decoder == Decoder::icotool ? "icotool" : "ImageMagick"; }

std::vector<std::vector<ForeignImage>> DecodeIconFiles(Decoder decoder, const std::vector<fs::path>& files) {
  return decoder == Decoder::icotool ? DecodeWithIcotool(files) : DecodeWithImageMagick(files);
}

ForeignImage DecodePng(const std::string& bytes) {
  // With all 16 bits of a channel: asked for 8, LodePNG would cut the lower ones off.
  std::vector<unsigned char> channels;
  unsigned width = 0;
  unsigned height = 0;
  const unsigned error = lodepng::decode(channels, width, height, reinterpret_cast<const unsigned char*>(bytes.data()),
                                         bytes.size(), LCT_RGBA, 16);
  if (error != 0) throw std::runtime_error(std::string("LodePNG: ") + lodepng_error_text(error));
  return {static_cast<int>(width), static_cast<int>(height),
          Rounded({reinterpret_cast<const char*>(channels.data()), channels.size()}), bytes};
}

std::vector<ForeignImage> DecodePictures(const std::vector<fs::path>& files) {
  const LinkedFiles linked(files);
  MakeMaps(linked.Folder(), files.at(0).extension().string(), OnFailure::raise);
  std::vector<ForeignImage> images;
  for (std::size_t index = 0; index < files.size(); ++index) images.push_back(linked.Map(index).at(0));
  return images;
}

}  // namespace ondrel::test
