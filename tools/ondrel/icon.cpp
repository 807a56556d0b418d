// What a file offers for an icon, what is chosen, and what comes of it.
#include "icon.h"

#include <ondrel/MMCObjectIcon.h>
#include <ondrel/platform/icon_scan.h>
#include <ondrel/platform/program.h>

#include "failure.h"
#include "icon_picture.h"
#include "output.h"
#include "output_place.h"
#include "picture_files.h"
#include "printable.h"
#include "table.h"

namespace ondrel::command {
namespace {

/// A file with an icon.
struct IconFacts {
  platform::IconScan scan;
  CMMCObjectIcon icon;
};

IconFacts ReadIcon(const std::string& file) {
  IconFacts facts;
  try {
    // The system looks for a name without a folder in other folders, too.
    const CString path = platform::FullPath(platform::PathFromUtf8(file));
    HRESULT status = platform::ScanIcon(path, facts.scan);
    if (SUCCEEDED(status)) status = facts.icon.Construct(path);
    if (FAILED(status)) throw Failure({file}, ExplainIconFault(path, status), StatusText(status));
  } catch (const std::exception&) {
    throw CurrentFailure({file});
  }
  return facts;
}

std::string HeadText(const std::string& file, const platform::IconScan& scan) {
  const std::string images = Counted(scan.offers.size(), "image", "images");
  const bool isProgram = scan.container == platform::IconContainer::program;
  return PrintablePath(file) + (isProgram ? ": program, first icon of " : ": icon file, ") + images + '\n';
}

std::string DepthText(const platform::IconOffer& offer) {
  if (offer.isPng) return "PNG";
  return offer.bitsPerPixel == 0 ? "unknown" : std::to_string(offer.bitsPerPixel) + " bit";
}

std::string OffersText(const platform::IconScan& scan) {
  Table table({{"Images", Table::Alignment::right}, {"Size"}, {"Depth"}});
  std::size_t number = 0;
  for (const platform::IconOffer& offer : scan.offers) {
    table.Add({std::to_string(++number), SizeText(offer.width, offer.height), DepthText(offer)});
  }
  return table.Text();
}

std::string ChoicesText(const IconFacts& facts) {
  Table table({{"Icon"}, {"Size"}, {"Made from"}});
  for (const bool large : {true, false}) {
    const std::size_t index = large ? facts.scan.large : facts.scan.smallIcon;
    const platform::IconOffer& offer = facts.scan.offers[index];
    const tagBITMAP& image = facts.icon.GetColourBitmap(large);
    const bool isExact = offer.width == image.bmWidth && offer.height == image.bmHeight;
    table.Add({large ? "large" : "small", SizeText(image.bmWidth, image.bmHeight),
               "image " + std::to_string(index + 1) + ", " +
                   (isExact ? "exact" : SizeText(offer.width, offer.height) + ", scaled")});
  }
  return table.Text();
}

}  // namespace

int ShowIcon(const IconRequest& request) {
  const auto& [file, place] = request;
  const IconFacts facts = ReadIcon(file);
  std::string text = HeadText(file, facts.scan) + '\n' + OffersText(facts.scan) + '\n' + ChoicesText(facts);
  if (place) {
    RequirePlace(*place, "the picture", {{platform::PathFromUtf8(file), "the file of the icon"}});
    const platform::Picture picture = PictureOf(facts.icon);
    WritePictures({{*place, picture}});
    text += '\n' + PrintablePath(*place) + ": " + SizeText(picture.width, picture.height) + " pixels\n";
  }
  WriteOutput(text);
  return kDone;
}

}  // namespace ondrel::command
