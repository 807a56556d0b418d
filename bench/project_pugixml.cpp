// pugixml: parsed in place, and written through its tree.
#include <pugixml.hpp>
#include <stdexcept>

#include "project_peers.h"
#include "xml_values.h"

namespace ondrel::bench {
namespace {

__int64 FileOf(pugi::xml_node element) {
  const pugi::xml_attribute file = element.attribute("File");
  return file ? NumberOf(file.value()) : 0;
}

std::vector<Query> LoadQueries(pugi::xml_node list) {
  std::vector<Query> queries;
  for (const pugi::xml_node element : list.children("Query")) {
    queries.emplace_back(Utf16(element.attribute("Tag").value()), FileOf(element));
  }
  return queries;
}

Record LoadRecord(pugi::xml_node element) {
  Record record;
  record.cookie = NumberOf(element.attribute("Cookie").value());
  record.name = Utf16(element.attribute("Name").value());
  record.icon = NumberOf(element.attribute("Icon").value());
  record.type = TypeOf(element.attribute("Type").value());
  for (const pugi::xml_node child : element.children()) {
    const std::string_view name = child.name();
    if (name == "ChildQueries") {
      record.childQueries = LoadQueries(child);
    } else if (name == "MenuScript") {
      record.menuScript = FileOf(child);
    } else if (name == "Scripts") {
      for (const pugi::xml_node script : child.children("Script")) record.scripts.push_back(FileOf(script));
    } else if (name == "StyleSheet") {
      record.styleSheet = FileOf(child);
    } else if (name == "RenderQueries") {
      record.renderQueries = LoadQueries(child);
    }
  }
  return record;
}

void LoadNodes(pugi::xml_node group, __int64 parent, Model& model) {
  for (const pugi::xml_node element : group.children("Node")) {
    Record record = LoadRecord(element);
    const __int64 cookie = record.cookie;
    model.AddNode(parent, std::move(record));
    for (const pugi::xml_node nodes : element.children("Nodes")) LoadNodes(nodes, cookie, model);
  }
}

void SaveFile(pugi::xml_node parent, const char* name, __int64 file) {
  pugi::xml_node element = parent.append_child(name);
  if (file != 0) element.append_attribute("File") = file;
}

void SaveQueries(pugi::xml_node parent, const char* name, const std::vector<Query>& queries) {
  pugi::xml_node list = parent.append_child(name);
  for (const auto& [tag, file] : queries) {
    pugi::xml_node element = list.append_child("Query");
    element.append_attribute("Tag") = Utf8(tag).c_str();
    element.append_attribute("File") = file;
  }
}

void SaveRecord(pugi::xml_node element, const Record& record) {
  element.append_attribute("Cookie") = record.cookie;
  element.append_attribute("Name") = Utf8(record.name).c_str();
  element.append_attribute("Icon") = record.icon;
  element.append_attribute("Type") = NameOfType(record.type);
  if (record.type != CMMCObjectParams::eDialog) SaveQueries(element, "ChildQueries", record.childQueries);
  SaveFile(element, "MenuScript", record.menuScript);
  pugi::xml_node scripts = element.append_child("Scripts");
  for (const __int64 script : record.scripts) SaveFile(scripts, "Script", script);
  if (record.type != CMMCObjectParams::eList) {
    SaveFile(element, "StyleSheet", record.styleSheet);
    SaveQueries(element, "RenderQueries", record.renderQueries);
  }
}

void SaveNodes(pugi::xml_node group, __int64 parent, const Model& model) {
  for (auto node = model.nodes.lower_bound({parent, 0}); node != model.nodes.end() && node->first.first == parent;
       ++node) {
    pugi::xml_node element = group.append_child("Node");
    SaveRecord(element, node->second);
    const __int64 cookie = node->first.second;
    const auto child = model.nodes.lower_bound({cookie, 0});
    const bool hasChildren = child != model.nodes.end() && child->first.first == cookie;
    if (hasChildren) SaveNodes(element.append_child("Nodes"), cookie, model);
  }
}

class StringWriter : public pugi::xml_writer {
 public:
  void write(const void* bytes, std::size_t size) override { m_text.append(static_cast<const char*>(bytes), size); }
  std::string Take() { return std::move(m_text); }

 private:
  std::string m_text;
};

}  // namespace

void LoadWithPugixml(std::string& bytes, Model& model) {
  pugi::xml_document document;
  if (!document.load_buffer_inplace(bytes.data(), bytes.size(), pugi::parse_default, pugi::encoding_utf8)) {
    throw std::runtime_error("pugixml refuses the project");
  }
  const pugi::xml_node project = document.child("Project");
  for (const pugi::xml_node group : project.children("NodeGroup")) LoadNodes(group, CMMCObjectSet::RootNode, model);
  for (const pugi::xml_node group : project.children("DialogGroup")) {
    for (const pugi::xml_node dialog : group.children("Dialog")) model.AddDialog(LoadRecord(dialog));
  }
}

std::string SaveWithPugixml(const Model& model) {
  pugi::xml_document document;
  pugi::xml_node declaration = document.append_child(pugi::node_declaration);
  declaration.append_attribute("version") = "1.0";
  declaration.append_attribute("encoding") = "utf-8";
  declaration.append_attribute("standalone") = "yes";
  pugi::xml_node project = document.append_child("Project");
  SaveNodes(project.append_child("NodeGroup"), CMMCObjectSet::RootNode, model);
  pugi::xml_node dialogs = project.append_child("DialogGroup");
  for (const auto& [key, record] : model.dialogs) SaveRecord(dialogs.append_child("Dialog"), record);
  project.append_child("FileGroup");
  StringWriter writer;
  document.save(writer, "\t", pugi::format_indent, pugi::encoding_utf8);
  return writer.Take();
}

}  // namespace ondrel::bench
