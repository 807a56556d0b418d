// How `ondrel check` is called.
#include "check/check.h"
#include "usage/usage_parts.h"

namespace ondrel::command {

void DescribeCheck(CLI::App& command, Run& run) {
  const auto request = std::make_shared<CheckRequest>();
  AddDefinition(command, request->file, request->reading);
  command.add_flag("--json", request->json, "Print one JSON object; cookies are strings of decimal digits");
  command.add_flag("--warnings-as-errors", request->areWarningsErrors, "Exit with 1 for warnings, too");
  command.add_flag("--losses", request->lossesAlone,
                   "Tell only what a host would lose when it saves the project: comments, too");
  SetClosingText(
      command,
      "Every remark is a line: file, line of the project, severity, what is wrong, what to do, and a code in\n"
      "brackets that stays the same. An error is what does not load or compile, loses something when it is\n"
      "saved, or refers to what is not there; everything else is a warning.",
      "  ondrel check console.xml\n  ondrel check --json --warnings-as-errors console.xml\n",
      "Exit codes: 0 no errors, 1 errors or a file that cannot be read, 2 wrong usage.");
  RunWith(command, run, request, Check);
}

}  // namespace ondrel::command
