// A project that is edited through the command.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "project_folder.h"

namespace ondrel::test {

/// Statuses as messages tell them.
inline constexpr const char* kAlreadyExistsText = "0x800700B7";
inline constexpr const char* kNotFoundText = "0x80070490";
inline constexpr const char* kInvalidText = "0x80070057";

/// The beginning of a node of type List without any files, up to what else it holds: "<Node ...><MenuScript/>".
std::string ListNode(const std::string& cookie, const std::string& name);

/// A folder with a small project, written by hand:
///
///     node 0 "Console", HTML   icon 11, script 22, style sheet 21, render query All=23
///         node 1 "Disks"
///             node 3 "Volumes"
///                 node 4 "Quotas"
///         node 2 "Events"
///     dialog 5 "Settings"
///     icons\disk.ico 11; queries\q.xml 23; scripts\a.js 22; scripts\b.js 24; styles\view.xslt 21
class EditFolder : public ProjectFolder {
 public:
  EditFolder();

  /// The command with the project, in its place: {"set", kProjectName, "1", "--name", "x"}. It is done, and prints
  /// `output`.
  void ExpectEdit(std::vector<std::string> arguments, std::string_view output) const;
  /// It fails with "console.xml<complaint>...", and no byte in the folder changes.
  void ExpectRefused(std::vector<std::string> arguments, std::string_view complaint, std::string_view status) const;
  /// It is done and prints `output`, and no byte in the folder changes.
  void ExpectNothingChanged(std::vector<std::string> arguments, std::string_view output) const;

  /// The node or dialog of a cookie, as `show --json` tells it. Raises when there is none.
  nlohmann::json Object(std::string_view cookie) const;
  /// The nodes, a line each: "  1 Disks" at level 1.
  std::string Tree() const;
  /// The bytes of every file, by its name.
  std::map<std::string, std::string> Files() const;
};

}  // namespace ondrel::test
