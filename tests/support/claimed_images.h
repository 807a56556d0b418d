// Small object images in which a count or a length claims far more than follows: one for each place of an image where a
// count or a length stands, and each form that it may have.
#pragma once

#include <string>
#include <vector>

namespace ondrel::test {

struct ClaimedImage {
  std::string place;
  std::string claim;
  std::string bytes;
  int cause;  ///< Of the archive exception that refuses it.
};

/// The greatest claim of each place comes last of its place.
std::vector<ClaimedImage> ClaimedImages();

}  // namespace ondrel::test
