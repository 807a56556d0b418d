// From a definition to pictures of its icons side by side.
#include "strips.h"

#include <utility>
#include <vector>

#include "output.h"
#include "output_place.h"
#include "picture_files.h"
#include "printable.h"
#include "strip_pictures.h"

namespace ondrel::command {

int WriteStrips(const StripsRequest& request) {
  const auto definition = ReadDefinition(request.file, request.reading);
  for (const auto& place : {request.smallIcons, request.largeIcons}) {
    if (place) RequirePlace(*place, "the picture", *definition);
  }
  StripPictures strips = MakeStripPictures(*definition, request.key);
  std::vector<PictureFile> pictures;
  if (request.smallIcons) pictures.push_back({*request.smallIcons, std::move(strips.smallIcons)});
  if (request.largeIcons) pictures.push_back({*request.largeIcons, std::move(strips.largeIcons)});
  WritePictures(pictures);

  const std::string icons = Counted(definition->set.GetIconFiles().size(), "icon", "icons");
  std::string text;
  for (const auto& [place, picture] : pictures) {
    text += PrintablePath(place) + ": " + icons + ", " + SizeText(picture.width, picture.height) + " pixels\n";
  }
  WriteOutput(text);
  return kDone;
}

}  // namespace ondrel::command
