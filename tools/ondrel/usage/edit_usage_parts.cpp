// Options of the commands that change a project.
#include "usage/edit_usage_parts.h"

#include <map>

#include "printable.h"
#include "usage/usage_parts.h"

namespace ondrel::command {
namespace {

using NodeType = CMMCObjectParams::_eTypeNode;

NodeType ReadNodeType(const std::string& text) {
  static const std::map<std::string, NodeType> kTypes = {
      {"list", CMMCObjectParams::eList}, {"html", CMMCObjectParams::eHTML}, {"dialog", CMMCObjectParams::eDialog}};
  const auto found = kTypes.find(CLI::detail::to_lower(text));
  if (found == kTypes.end()) {
    throw CLI::ValidationError("--type", Shortened(text) + " is no type; give list, html or dialog");
  }
  return found->second;
}

QueryOption ReadQueryOption(const std::string& option, const std::string& text) {
  const std::size_t sign = text.find('=');
  if (sign == std::string::npos || sign == 0 || sign + 1 == text.size()) {
    throw CLI::ValidationError(option, Shortened(text) + " is no query; give a tag, \"=\" and a file");
  }
  return {text.substr(0, sign), text.substr(sign + 1)};
}

/// An option that takes one text.
void AddTextOption(CLI::App& command, const std::string& name, std::optional<std::string>& value,
                   const std::string& purpose, const std::string& kind) {
  command
      .add_option_function<std::string>(
          name, [&value](const std::string& text) { value = text; }, purpose)
      ->option_text(kind);
}

/// An option that can be given several times, and the flag that empties the list. `add` takes each text.
template <class Item, class Read>
void AddListOption(CLI::App& command, const std::string& name, const std::string& noneName,
                   std::optional<std::vector<Item>>& list, const std::string& purpose, const std::string& kind,
                   Read read) {
  CLI::Option* const items = command
                                 .add_option_function<std::vector<std::string>>(
                                     name,
                                     [&list, read](const std::vector<std::string>& texts) {
                                       list.emplace();
                                       for (const std::string& text : texts) list->push_back(read(text));
                                     },
                                     purpose + " (repeatable)")
                                 ->allow_extra_args(false)
                                 ->option_text(kind);
  command
      .add_flag_callback(
          noneName, [&list] { list.emplace(); }, "No " + purpose.substr(purpose.find(' ') + 1))
      ->excludes(items);
}

}  // namespace

void AddNewFile(CLI::App& command, EditRequest& request) {
  command.add_option("PROJECT", request.project, "The project file, XML (required)")->required()->option_text(" ");
  command.add_flag("--dry-run", request.isDryRun, "Write nothing, and print what would change as a unified diff");
}

void AddEdit(CLI::App& command, EditRequest& request) {
  AddNewFile(command, request);
  command.add_flag(
      "--lossy", request.isLossy,
      "Save although something of the file gets lost, as comments and what else the library does not read");
  AddTextReading(command, request.reading);
}

void AddRecordChange(CLI::App& command, RecordChange& change) {
  command
      .add_option_function<std::string>(
          "--type", [&change](const std::string& text) { change.type = ReadNodeType(text); }, "What kind of node it is")
      ->option_text("list|html|dialog");
  AddTextOption(command, "--icon", change.icon, "The icon file", "FILE");
  AddTextOption(command, "--menu-script", change.menuScript, "The script that builds the context menu", "FILE");
  AddTextOption(command, "--style-sheet", change.styleSheet, "The style sheet that renders the view", "FILE");
  AddListOption(command, "--script", "--no-scripts", change.scripts, "Attached scripts", "FILE",
                [](const std::string& text) { return text; });
  AddListOption(command, "--child-query", "--no-child-queries", change.childQueries,
                "The queries that give the children", "TAG=FILE",
                [](const std::string& text) { return ReadQueryOption("--child-query", text); });
  AddListOption(command, "--render-query", "--no-render-queries", change.renderQueries,
                "The queries that the view shows", "TAG=FILE",
                [](const std::string& text) { return ReadQueryOption("--render-query", text); });
}

}  // namespace ondrel::command
