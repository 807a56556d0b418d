// Pictures written to files.
#pragma once

#include <string>
#include <vector>

#include <ondrel/platform/picture.h>

namespace ondrel::command {

struct PictureFile {
  std::string place;
  platform::Picture picture;
};

/// Writes PNG files. All are complete beside their places before the first takes its own; until then every place stays
/// as it was. Two pictures for one place are refused. Raises Failure.
void WritePictures(const std::vector<PictureFile>& files);

}  // namespace ondrel::command
