// How `ondrel diff` is called.
#include "diff/diff.h"
#include "usage/usage_parts.h"

namespace ondrel::command {

void DescribeDiff(CLI::App& command, Run& run) {
  const auto request = std::make_shared<DiffRequest>();
  constexpr const char* kOperand = "A project file or an object image, told by its content (required)";
  command.add_option("A", request->older, kOperand)->required()->option_text(" ");
  command.add_option("B", request->newer, kOperand)->required()->option_text(" ");
  AddTextReading(command, request->reading);
  command.add_flag("--json", request->json, "Print one JSON object; cookies are strings of decimal digits");
  SetClosingText(
      command,
      "Every difference is a line: \"+\" for what only B has, \"-\" for what only A has, \">\" for a node that\n"
      "was moved and \"~\" for what was changed. Nodes belong together by cookie and name, then by their path\n"
      "in the tree, then by cookie; dialogs by name, then by cookie; files by cookie. Code files are compared\n"
      "byte by byte, and paths only where both sides have them: an image has none.",
      "  ondrel diff console.xml console.img\n  ondrel diff --json old.img new.img\n",
      "Exit codes: 0 nothing differs, 1 something differs, 2 failed or wrong usage.");
  RunWith(command, run, request, Diff);
}

}  // namespace ondrel::command
