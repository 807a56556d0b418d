// How `ondrel add` is called.
#include "edit/add_files.h"
#include "edit/add_object.h"
#include "usage/edit_usage_parts.h"
#include "usage/usage_parts.h"

namespace ondrel::command {
namespace {

void AddNameOperand(CLI::App& command, RecordChange& record) {
  command
      .add_option_function<std::string>(
          "NAME", [&record](const std::string& text) { record.name = text; }, "The name (required)")
      ->required()
      ->option_text(" ");
}

void DescribeAddNode(CLI::App& command, Run& run) {
  const auto request = std::make_shared<AddNodeRequest>();
  AddEdit(command, request->edit);
  AddNameOperand(command, request->record);
  command
      .add_option_function<std::string>(
          "--parent", [request](const std::string& text) { request->parent = text; },
          "The node to put it below; without one it becomes the top-level node")
      ->option_text("NODE");
  AddRecordChange(command, request->record);
  SetClosingText(command, std::string(kNodeNames) + "\n\n" + kFileNames,
                 "  ondrel add node console.xml Quotas --parent \"Disk Console/Volumes\" --script scripts/quotas.js\n");
  RunWith(command, run, request, AddNode);
}

void DescribeAddDialog(CLI::App& command, Run& run) {
  const auto request = std::make_shared<AddDialogRequest>();
  AddEdit(command, request->edit);
  AddNameOperand(command, request->record);
  AddRecordChange(command, request->record);
  SetClosingText(command, kFileNames, "  ondrel add dialog console.xml Settings --style-sheet views/settings.xslt\n");
  RunWith(command, run, request, AddDialog);
}

void DescribeAddFiles(CLI::App& command, Run& run, int (*work)(const AddFilesRequest&), const std::string& purpose,
                      const std::string& example) {
  const auto request = std::make_shared<AddFilesRequest>();
  AddEdit(command, request->edit);
  command.add_option("FILE", request->files, purpose)->required()->option_text("...");
  SetClosingText(command,
                 "Paths start at the working folder. A file in the project's folder is named from there, so that the\n"
                 "folder can move; any other by its whole path. Of several files all are added, or none.",
                 example);
  RunWith(command, run, request, work);
}

}  // namespace

void DescribeAdd(CLI::App& command, Run& run) {
  constexpr const char* kWhat = "What";
  command.require_subcommand(1);
  DescribeAddNode(*command.add_subcommand("node", "Add a node to the console tree")->group(kWhat), run);
  DescribeAddDialog(*command.add_subcommand("dialog", "Add a dialog")->group(kWhat), run);
  DescribeAddFiles(*command.add_subcommand("icon", "Add icon files")->group(kWhat), run, AddIcons,
                   "Icon files, or programs or libraries with an icon (required)",
                   "  ondrel add icon console.xml icons/disk.ico\n");
  DescribeAddFiles(*command.add_subcommand("code", "Add scripts, style sheets and queries")->group(kWhat), run, AddCode,
                   "Scripts, style sheets, query files (required)",
                   "  ondrel add code console.xml scripts/quotas.js views/settings.xslt\n");
  SetClosingText(command, "Each prints the new cookie.", "  ondrel add node console.xml Disks --parent 0\n");
}

}  // namespace ondrel::command
