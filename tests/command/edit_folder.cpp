// The project, and the comparison of all that lies beside it.
#include "edit_folder.h"

#include <sstream>
#include <stdexcept>
#include <utility>

#include <gtest/gtest.h>

namespace ondrel::test {
namespace {

/// Tells the nodes at `level`; the trees of these tests are as deep as they make them.
void TellNodes(const nlohmann::json& nodes, std::size_t level, std::string& text) {
  for (const nlohmann::json& node : nodes) {
    text +=
        std::string(2 * level, ' ') + node["cookie"].get<std::string>() + ' ' + node["name"].get<std::string>() + '\n';
    TellNodes(node["children"], level + 1, text);
  }
}

const nlohmann::json* FindObject(const nlohmann::json& objects, std::string_view cookie) {
  for (const nlohmann::json& object : objects) {
    if (object["cookie"] == cookie) return &object;
    if (!object.contains("children")) continue;
    if (const nlohmann::json* const found = FindObject(object["children"], cookie); found != nullptr) return found;
  }
  return nullptr;
}

}  // namespace

std::string ListNode(const std::string& cookie, const std::string& name) {
  return "<Node Cookie=\"" + cookie + "\" Name=\"" + name + "\" Icon=\"0\" Type=\"List\"><MenuScript/>";
}

EditFolder::EditFolder() {
  WriteProject(Lines(
      {R"(<?xml version="1.0" encoding="utf-8"?>)", R"(<Project>)",
       R"(<NodeGroup><Node Cookie="0" Name="Console" Icon="11" Type="HTML"><ChildQueries/><MenuScript/>)",
       R"(<Scripts><Script File="22"/></Scripts><StyleSheet File="21"/>)",
       R"(<RenderQueries><Query Tag="All" File="23"/></RenderQueries><Nodes>)", ListNode("1", "Disks") + "<Nodes>",
       ListNode("3", "Volumes") + "<Nodes>", ListNode("4", "Quotas") + "</Node></Nodes></Node></Nodes></Node>",
       ListNode("2", "Events") + "</Node></Nodes></Node></NodeGroup>",
       R"(<DialogGroup><Dialog Cookie="5" Name="Settings" Icon="0" Type="Dialog"><MenuScript/>)",
       R"(<StyleSheet/></Dialog></DialogGroup>)",
       R"(<FileGroup><Icon Cookie="11" Name="icons\disk.ico"/><File Cookie="21" Name="styles\view.xslt"/>)",
       R"(<File Cookie="22" Name="scripts\a.js"/><File Cookie="23" Name="queries\q.xml"/>)",
       R"(<File Cookie="24" Name="scripts\b.js"/></FileGroup></Project>)"}));
  Write("icons/disk.ico", SmallIconFile());
  Write("styles/view.xslt", "view");
  Write("scripts/a.js", "a");
  Write("queries/q.xml", "q");
  Write("scripts/b.js", "b");
}

void EditFolder::ExpectEdit(std::vector<std::string> arguments, std::string_view output) const {
  const std::string listing = Listing();
  const CommandResult result = Run(std::move(arguments));
  ExpectSuccess(result);
  EXPECT_EQ(result.output, output);
  EXPECT_EQ(Listing(), listing);
}

void EditFolder::ExpectRefused(std::vector<std::string> arguments, std::string_view complaint,
                               std::string_view status) const {
  const auto files = Files();
  ExpectFailure(Run(std::move(arguments)), kProjectName + std::string(complaint), status);
  EXPECT_TRUE(Files() == files) << "the folder has changed:\n" << Listing();
}

void EditFolder::ExpectNothingChanged(std::vector<std::string> arguments, std::string_view output) const {
  const auto files = Files();
  const CommandResult result = Run(std::move(arguments));
  ExpectSuccess(result);
  EXPECT_EQ(result.output, output);
  EXPECT_TRUE(Files() == files) << "the folder has changed:\n" << Listing();
}

nlohmann::json EditFolder::Object(std::string_view cookie) const {
  const nlohmann::json definition = Json(kProjectName);
  for (const char* const kind : {"nodes", "dialogs"}) {
    if (const nlohmann::json* const found = FindObject(definition[kind], cookie); found != nullptr) return *found;
  }
  throw std::runtime_error("no node or dialog " + std::string(cookie));
}

std::string EditFolder::Tree() const {
  std::string text;
  TellNodes(Json(kProjectName)["nodes"], 0, text);
  return text;
}

std::map<std::string, std::string> EditFolder::Files() const {
  std::map<std::string, std::string> files;
  std::istringstream names(Listing());
  for (std::string name; std::getline(names, name);) {
    const std::filesystem::path path = *this / name;
    files[name] = std::filesystem::is_regular_file(path) ? ReadBytes(path) : std::string();
  }
  return files;
}

}  // namespace ondrel::test
