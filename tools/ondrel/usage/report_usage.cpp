// How `ondrel report` is called.
#include "report/report.h"
#include "usage/usage_parts.h"

namespace ondrel::command {

void DescribeReport(CLI::App& command, Run& run) {
  const auto request = std::make_shared<ReportRequest>();
  AddDefinition(command, request->file, request->reading);
  command.add_option("-o,--output", request->page, "The page, HTML (required); it is replaced whole, or not at all")
      ->required()
      ->option_text("PAGE");
  SetClosingText(command,
                 "The page is one file that needs no other and no network: the console tree with its icons, the\n"
                 "record of each node and dialog, files with what they hold, what 'ondrel check' finds, and the\n"
                 "image strips. Of a file it shows 256 KiB of text at most, and of all files 16 MiB. The same\n"
                 "definition gives the same page.",
                 "  ondrel report console.xml -o console.html\n");
  RunWith(command, run, request, WriteReport);
}

}  // namespace ondrel::command
