// The JSON object, written record by record: children are nested to any depth, which a writer of whole documents would
// need the call stack for.
#include "json_output.h"

#include <nlohmann/json.hpp>

#include <ondrel/platform/program.h>

#include "file_listing.h"
#include "node_walk.h"

namespace ondrel::command {
namespace {

using Json = nlohmann::ordered_json;

Json Cookie(__int64 cookie) { return std::to_string(cookie); }

Json Path(const std::optional<CString>& path) { return path ? Json(platform::ToUtf8(*path)) : Json(); }

Json Queries(const CMMCObjectParams::QueryList& queries) {
  Json list = Json::array();
  for (const auto& [tag, file] : queries) list.push_back({{"tag", platform::ToUtf8(tag)}, {"file", Cookie(file)}});
  return list;
}

Json Record(const CMMCObjectParams& params) {
  Json scripts = Json::array();
  for (const __int64 script : params.GetScripts()) scripts.push_back(Cookie(script));
  return {{"cookie", Cookie(params.GetCookie())},
          {"name", platform::ToUtf8(params.GetName())},
          {"type", platform::ToUtf8(CMMCObjectParams::GetNodeTypeName(params.GetNodeType()))},
          {"icon", Cookie(params.GetIcon())},
          {"childQueries", Queries(params.GetChildQueries())},
          {"renderQueries", Queries(params.GetRenderQueries())},
          {"menuScript", Cookie(params.GetMenuScript())},
          {"scripts", std::move(scripts)},
          {"styleSheet", Cookie(params.GetStyleSheet())}};
}

Json Geometry(const tagBITMAP& bitmap) {
  return {{"width", bitmap.bmWidth}, {"height", bitmap.bmHeight}, {"bitsPixel", bitmap.bmBitsPixel}};
}

/// Escapes everything beyond ASCII, so that no terminal and no code page on the way can take harm from it.
std::string Text(const Json& value) { return value.dump(-1, ' ', true, Json::error_handler_t::replace); }

class NodeWriter : public NodeVisitor {
 public:
  explicit NodeWriter(std::string& out) : m_out(out) {}

  void EnterNode(const CMMCObjectParams& node, std::size_t, bool) override {
    std::string record = Text(Record(node));
    record.pop_back();  // the closing brace comes behind the children
    m_out += '\n' + record + ",\"children\":[";
  }
  void LeaveNode(bool isLast) override { m_out += isLast ? "]}" : "]},"; }

 private:
  std::string& m_out;
};

class ArrayWriter {
 public:
  ArrayWriter(std::string& out, const char* name) : m_out(out) { m_out += std::string(",\n\"") + name + "\":["; }
  ~ArrayWriter() { m_out += ']'; }
  ArrayWriter(const ArrayWriter&) = delete;
  ArrayWriter& operator=(const ArrayWriter&) = delete;

  void Add(const Json& value) {
    if (!m_isFirst) m_out += ',';
    m_isFirst = false;
    m_out += '\n' + Text(value);
  }

 private:
  std::string& m_out;
  bool m_isFirst = true;
};

void WriteDialogs(CMMCObjectSet& set, std::string& out) {
  ArrayWriter array(out, "dialogs");
  for (const __int64 cookie : set.GetDialogs()) {
    CMMCObjectParams* dialog = nullptr;
    if (set.GetParams(cookie, dialog)) array.Add(Record(*dialog));
  }
}

}  // namespace

std::string JsonText(Definition& definition) {
  std::string out = "{\"form\":";
  out += definition.form == DefinitionForm::project ? "\"project\"" : "\"image\"";
  out += ",\n\"nodes\":[";
  NodeWriter nodes(out);
  WalkNodes(definition.set, nodes);
  out += ']';
  WriteDialogs(definition.set, out);
  {
    ArrayWriter array(out, "icons");
    for (const IconFile& file : ListIconFiles(definition)) {
      array.Add({{"cookie", Cookie(file.cookie)},
                 {"path", Path(file.path)},
                 {"large", Geometry(file.large)},
                 {"small", Geometry(file.smallIcon)}});
    }
  }
  {
    ArrayWriter array(out, "codeFiles");
    for (const CodeFile& file : ListCodeFiles(definition)) {
      array.Add({{"cookie", Cookie(file.cookie)},
                 {"path", Path(file.path)},
                 {"bytes", file.bytes ? Json(*file.bytes) : Json()}});
    }
  }
  out += "}\n";
  return out;
}

}  // namespace ondrel::command
