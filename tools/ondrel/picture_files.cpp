// The writing of several pictures as one step.
#include "picture_files.h"

#include <list>

#include <ondrel/platform/program.h>

#include "failure.h"

namespace ondrel::command {
namespace {

/// A picture beside the place that it is to take.
class PreparedPicture {
 public:
  explicit PreparedPicture(const PictureFile& picture)
      : m_place(picture.place), m_file(platform::PathFromUtf8(picture.place)) {
    const std::vector<BYTE> bytes = platform::EncodePng(picture.picture);
    m_file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
  }

  const std::string& Place() const { return m_place; }
  void RequireOtherPlace(const PreparedPicture& earlier) const {
    if (!m_file.SharesPlaceWith(earlier.m_file)) return;
    throw Failure({m_place}, "the picture would overwrite the other one; give it another name",
                  StatusText(E_INVALIDARG));
  }
  void Commit() { m_file.Commit(); }

 private:
  std::string m_place;
  platform::ReplacementFile m_file;
};

}  // namespace

void WritePictures(const std::vector<PictureFile>& files) {
  std::list<PreparedPicture> prepared;
  for (const PictureFile& file : files) {
    try {
      prepared.emplace_back(file);
    } catch (const std::exception&) {
      throw CurrentFailure({file.place});
    }
    for (auto earlier = prepared.begin(); &*earlier != &prepared.back(); ++earlier) {
      prepared.back().RequireOtherPlace(*earlier);
    }
  }
  for (PreparedPicture& picture : prepared) {
    try {
      picture.Commit();
    } catch (const std::exception&) {
      throw CurrentFailure({picture.Place()});
    }
  }
}

}  // namespace ondrel::command
