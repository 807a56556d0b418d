// libxml2: the tree is built without blanks and with short text in place, and walked by its pointers, without the
// copies of the convenient functions.
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>
#include <stdexcept>

#include "project_peers.h"
#include "xml_values.h"

namespace ondrel::bench {
namespace {

struct FreeDocument {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};

std::string_view TextOf(const xmlChar* text) { return text == nullptr ? "" : reinterpret_cast<const char*>(text); }

std::string_view NameOf(const xmlNode& node) {
  return node.type == XML_ELEMENT_NODE ? TextOf(node.name) : std::string_view();
}

/// Calls `read` with the name and the value of each attribute.
template <class Read>
void ForEachAttribute(const xmlNode& element, const Read& read) {
  for (const xmlAttr* attribute = element.properties; attribute != nullptr; attribute = attribute->next) {
    // The value is one text node: there are no entities in it that are not replaced.
    read(TextOf(attribute->name), attribute->children == nullptr ? "" : TextOf(attribute->children->content));
  }
}

template <class Read>
void ForEachChild(const xmlNode& parent, std::string_view name, const Read& read) {
  for (const xmlNode* child = parent.children; child != nullptr; child = child->next) {
    if (NameOf(*child) == name) read(*child);
  }
}

/// The file cookie of an element, 0 where it has none.
__int64 FileOf(const xmlNode& element) {
  __int64 file = 0;
  ForEachAttribute(element, [&](std::string_view name, std::string_view value) {
    if (name == "File") file = NumberOf(value);
  });
  return file;
}

std::vector<Query> LoadQueries(const xmlNode& list) {
  std::vector<Query> queries;
  ForEachChild(list, "Query", [&](const xmlNode& element) {
    Query query;
    ForEachAttribute(element, [&](std::string_view name, std::string_view value) {
      if (name == "Tag") query.first = Utf16(value);
      if (name == "File") query.second = NumberOf(value);
    });
    queries.push_back(std::move(query));
  });
  return queries;
}

Record LoadRecord(const xmlNode& element) {
  Record record;
  ForEachAttribute(element, [&](std::string_view name, std::string_view value) {
    if (name == "Cookie") record.cookie = NumberOf(value);
    if (name == "Name") record.name = Utf16(value);
    if (name == "Icon") record.icon = NumberOf(value);
    if (name == "Type") record.type = TypeOf(value);
  });
  for (const xmlNode* child = element.children; child != nullptr; child = child->next) {
    const std::string_view name = NameOf(*child);
    if (name == "ChildQueries") {
      record.childQueries = LoadQueries(*child);
    } else if (name == "MenuScript") {
      record.menuScript = FileOf(*child);
    } else if (name == "Scripts") {
      ForEachChild(*child, "Script", [&](const xmlNode& script) { record.scripts.push_back(FileOf(script)); });
    } else if (name == "StyleSheet") {
      record.styleSheet = FileOf(*child);
    } else if (name == "RenderQueries") {
      record.renderQueries = LoadQueries(*child);
    }
  }
  return record;
}

void LoadNodes(const xmlNode& group, __int64 parent, Model& model) {
  ForEachChild(group, "Node", [&](const xmlNode& element) {
    Record record = LoadRecord(element);
    const __int64 cookie = record.cookie;
    model.AddNode(parent, std::move(record));
    ForEachChild(element, "Nodes", [&](const xmlNode& nodes) { LoadNodes(nodes, cookie, model); });
  });
}

}  // namespace

void LoadWithLibxml2(std::string_view bytes, Model& model) {
  constexpr int kOptions = XML_PARSE_NOBLANKS | XML_PARSE_COMPACT | XML_PARSE_NONET | XML_PARSE_HUGE;
  const std::unique_ptr<xmlDoc, FreeDocument> document(
      xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr, kOptions));
  if (document == nullptr) throw std::runtime_error("libxml2 refuses the project");
  const xmlNode& project = *xmlDocGetRootElement(document.get());
  ForEachChild(project, "NodeGroup", [&](const xmlNode& group) { LoadNodes(group, CMMCObjectSet::RootNode, model); });
  ForEachChild(project, "DialogGroup", [&](const xmlNode& group) {
    ForEachChild(group, "Dialog", [&](const xmlNode& dialog) { model.AddDialog(LoadRecord(dialog)); });
  });
}

}  // namespace ondrel::bench
