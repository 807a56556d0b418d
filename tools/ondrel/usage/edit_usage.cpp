// How `ondrel new`, `set`, `move-down` and `remove` are called.
#include "edit/move_node.h"
#include "edit/new_project.h"
#include "edit/remove_object.h"
#include "edit/set_record.h"
#include "usage/edit_usage_parts.h"
#include "usage/usage_parts.h"

namespace ondrel::command {
namespace {

/// The operand NODE.
void AddNodeName(CLI::App& command, std::string& name, const std::string& purpose) {
  command.add_option("NODE", name, purpose + " (required)")->required()->option_text(" ");
}

void AddNameOption(CLI::App& command, RecordChange& record, const std::string& purpose) {
  command
      .add_option_function<std::string>(
          "--name", [&record](const std::string& text) { record.name = text; }, purpose)
      ->option_text("NAME");
}

}  // namespace

void DescribeNew(CLI::App& command, Run& run) {
  const auto request = std::make_shared<NewRequest>();
  AddNewFile(command, request->edit);
  AddNameOption(command, request->record, "A top-level node's name; without one the project stays empty");
  AddRecordChange(command, request->record);
  command.parse_complete_callback([request] {
    if (!request->record.name && !request->record.IsEmpty()) throw CLI::RequiredError("--name");
  });
  SetClosingText(command, "Nothing may be at the project's place.",
                 "  ondrel new console.xml --name \"Disk Console\" --type html\n");
  RunWith(command, run, request, NewProject);
}

void DescribeSet(CLI::App& command, Run& run) {
  const auto request = std::make_shared<SetRequest>();
  AddEdit(command, request->edit);
  AddNodeName(command, request->object, "The node or dialog");
  AddNameOption(command, request->record, "Another name");
  AddRecordChange(command, request->record);
  command.parse_complete_callback([request] {
    if (request->record.IsEmpty()) throw CLI::RequiredError("At least one option that says what to set");
  });
  SetClosingText(command, std::string(kNodeNames) + " A dialog is named by its cookie or its name.\n\n" + kFileNames,
                 "  ondrel set console.xml \"Disk Console/Volumes\" --icon icons/disk.ico --child-query "
                 "Quotas=queries/quotas.xml\n");
  RunWith(command, run, request, SetRecord);
}

void DescribeMoveDown(CLI::App& command, Run& run) {
  const auto request = std::make_shared<MoveDownRequest>();
  AddEdit(command, request->edit);
  AddNodeName(command, request->node, "The node");
  SetClosingText(
      command,
      std::string("The order of siblings is that of their cookies, so the node exchanges its cookie with the "
                  "next one's.\nThe new one is printed.\n\n") +
          kNodeNames,
      "  ondrel move-down console.xml \"Disk Console/Volumes\"\n");
  RunWith(command, run, request, MoveDown);
}

void DescribeRemove(CLI::App& command, Run& run) {
  const auto request = std::make_shared<RemoveRequest>();
  AddEdit(command, request->edit);
  AddNodeName(command, request->object, "The node or dialog");
  command.add_flag("--recursive", request->isRecursive, "With all nodes below it");
  SetClosingText(command, std::string(kNodeNames) + " A dialog is named by its cookie or its name.",
                 "  ondrel remove console.xml \"Disk Console/Volumes\" --recursive\n");
  RunWith(command, run, request, Remove);
}

}  // namespace ondrel::command
