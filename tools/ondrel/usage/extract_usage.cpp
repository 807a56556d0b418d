// How `ondrel extract` is called.
#include "extract/extract.h"
#include "usage/usage_parts.h"

namespace ondrel::command {

void DescribeExtract(CLI::App& command, Run& run) {
  const auto request = std::make_shared<ExtractRequest>();
  command.add_option("IMAGE", request->image, "The object image (required)")->required()->option_text(" ");
  command
      .add_option("-d,--directory", request->folder,
                  "The folder to make (required); it is not there yet, or empty, and appears whole, or not at all")
      ->required()
      ->option_text("DIR");
  SetClosingText(command,
                 "Writes project.xml, which compiles to the same image again, the code files (code) and the icons\n"
                 "(icons; each as .ico, and the large image as .png). An image has no names of files: they are made\n"
                 "of what records use a file for and of its cookie. Where the project compiles to another image, the\n"
                 "folder is written all the same, a line says why, and the exit code is 1.",
                 "  ondrel extract console.img -d console\n");
  RunWith(command, run, request, Extract);
}

}  // namespace ondrel::command
