// How `ondrel icon` and `ondrel strips` are called.
#include "icon.h"
#include "printable.h"
#include "strips.h"
#include "usage/usage_parts.h"

namespace ondrel::command {
namespace {

/// RRGGBB, a "#" before it or not, as 0x00BBGGRR.
DWORD ReadColour(std::string_view text) {
  constexpr std::size_t kDigits = 6;
  constexpr std::string_view kHexadecimal = "0123456789abcdefABCDEF";
  std::string_view digits = text;
  if (digits.starts_with('#')) digits.remove_prefix(1);
  if (digits.size() != kDigits || digits.find_first_not_of(kHexadecimal) != std::string_view::npos) {
    throw CLI::ValidationError(
        "--key", Shortened(std::string(text)) + " is no colour; give red, green and blue as six hexadecimal digits");
  }
  const auto value = static_cast<DWORD>(std::stoul(std::string(digits), nullptr, 16));
  return (value & 0xFF) << 16 | (value & 0xFF00) | value >> 16;
}

}  // namespace

void DescribeIcon(CLI::App& command, Run& run) {
  const auto request = std::make_shared<IconRequest>();
  command.add_option("FILE", request->file, "An .ico, .exe or .dll file, told by its content (required)")
      ->required()
      ->option_text(" ");
  command.add_option("-o,--output", request->picture, "A PNG picture of the icon; it is replaced whole, or not at all")
      ->option_text("PICTURE");
  SetClosingText(command,
                 "Of all images of the file's first icon, one becomes the large icon and one the small one; one that\n"
                 "has not the icon's size is scaled. The picture shows, from left to right, the large icon, its\n"
                 "mask, the small icon and its mask; a mask is white where the icon is transparent.",
                 "  ondrel icon disk.ico\n  ondrel icon console.exe -o console.png\n");
  RunWith(command, run, request, ShowIcon);
}

void DescribeStrips(CLI::App& command, Run& run) {
  const auto request = std::make_shared<StripsRequest>();
  AddDefinition(command, request->file, request->reading);
  command
      .add_option_function<std::string>(
          "--key", [request](const std::string& text) { request->key = ReadColour(text); },
          "The colour of transparent pixels, as FF00FF (required)")
      ->required()
      ->option_text("RRGGBB");
  const CLI::Option* const smallPicture =
      command.add_option("--small", request->smallIcons, "A PNG picture of the small icons")->option_text("PICTURE");
  const CLI::Option* const largePicture =
      command.add_option("--large", request->largeIcons, "A PNG picture of the large icons")->option_text("PICTURE");
  command.parse_complete_callback([smallPicture, largePicture] {
    if (smallPicture->empty() && largePicture->empty()) throw CLI::RequiredError("--small or --large");
  });
  SetClosingText(command,
                 "The icons stand in the order of their cookies. At least one picture is to be named; the pictures\n"
                 "are replaced whole, or not at all.",
                 "  ondrel strips console.img --key FF00FF --small small.png --large large.png\n");
  RunWith(command, run, request, WriteStrips);
}

}  // namespace ondrel::command
