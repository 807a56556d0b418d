// The JSON object, written record by record: children are nested to any depth, which a writer of whole documents would
// need the call stack for.
#include "json_output.h"

#include <ondrel/platform/program.h>

#include "edit/object_name.h"
#include "file_listing.h"
#include "json_values.h"
#include "node_walk.h"
#include "used_files.h"

namespace ondrel::command {
namespace {

Json Geometry(const tagBITMAP& bitmap) {
  return {{"width", bitmap.bmWidth}, {"height", bitmap.bmHeight}, {"bitsPixel", bitmap.bmBitsPixel}};
}

class NodeWriter : public NodeVisitor {
 public:
  explicit NodeWriter(std::string& out) : m_out(out) {}

  void EnterNode(const CMMCObjectParams& node, std::size_t, bool) override {
    std::string record = JsonLine(RecordJson(node));
    record.pop_back();  // the closing brace comes behind the children
    m_out += '\n' + record + ",\"children\":[";
  }
  void LeaveNode(bool isLast) override { m_out += isLast ? "]}" : "]},"; }

 private:
  std::string& m_out;
};

/// The tree of nodes that `walk` visits.
template <class Walk>
void WriteNodes(JsonObjectWriter& object, std::string& out, const Walk& walk) {
  const JsonArrayWriter array(object, "nodes");
  NodeWriter nodes(out);
  walk(nodes);
}

void WriteDialogs(CMMCObjectSet& set, const std::list<__int64>& cookies, JsonObjectWriter& object) {
  JsonArrayWriter array(object, "dialogs");
  for (const __int64 cookie : cookies) {
    CMMCObjectParams* record = nullptr;
    if (set.GetParams(cookie, record)) array.Add(RecordJson(*record));
  }
}

void WriteFiles(Definition& definition, const UsedFiles* used, JsonObjectWriter& object) {
  {
    JsonArrayWriter array(object, "icons");
    for (const IconFile& file : ListIconFiles(definition, used == nullptr ? nullptr : &used->icons)) {
      array.Add({{"cookie", CookieJson(file.cookie)},
                 {"path", PathJson(file.path)},
                 {"large", Geometry(file.large)},
                 {"small", Geometry(file.smallIcon)}});
    }
  }
  JsonArrayWriter array(object, "codeFiles");
  for (const CodeFile& file : ListCodeFiles(definition, used == nullptr ? nullptr : &used->codeFiles)) {
    array.Add({{"cookie", CookieJson(file.cookie)},
               {"path", PathJson(file.path)},
               {"bytes", file.bytes ? Json(*file.bytes) : Json()}});
  }
}

const char* FormName(const Definition& definition) {
  return definition.form == DefinitionForm::project ? "project" : "image";
}

/// A node as its relatives are told of it.
Json Relative(CMMCObjectSet& set, __int64 cookie) {
  CMMCObjectParams* node = nullptr;
  if (!set.GetParams(cookie, node)) return {};
  return {{"cookie", CookieJson(cookie)}, {"name", platform::ToUtf8(node->GetName())}};
}

}  // namespace

std::string JsonText(Definition& definition) {
  CMMCObjectSet& set = definition.set;
  std::string out;
  {
    JsonObjectWriter object(out);
    object.Add("form", FormName(definition));
    WriteNodes(object, out, [&set](NodeVisitor& nodes) { WalkNodes(set, nodes); });
    WriteDialogs(set, set.GetDialogs(), object);
    WriteFiles(definition, nullptr, object);
  }
  return out + '\n';
}

std::string SubtreeJsonText(Definition& definition, __int64 node) {
  CMMCObjectSet& set = definition.set;
  const UsedFiles used = FilesOfSubtree(set, node);
  std::string out;
  {
    JsonObjectWriter object(out);
    object.Add("form", FormName(definition));
    WriteNodes(object, out, [&set, node](NodeVisitor& nodes) { WalkSubtree(set, node, nodes); });
    WriteDialogs(set, {}, object);
    WriteFiles(definition, &used, object);
  }
  return out + '\n';
}

std::string RecordJsonText(Definition& definition, __int64 cookie) {
  CMMCObjectSet& set = definition.set;
  CMMCObjectParams* record = nullptr;
  set.GetParams(cookie, record);
  const bool isDialog = IsDialog(set, cookie);
  const auto parent = isDialog ? std::nullopt : FindParent(set, cookie);
  UsedFiles used;
  used.Add(*record);
  std::string out;
  {
    JsonObjectWriter object(out);
    object.Add("form", FormName(definition));
    object.Add("kind", isDialog ? "dialog" : "node");
    object.Add("record", RecordJson(*record));
    object.Add("parent", parent ? Relative(set, *parent) : Json());
    {
      JsonArrayWriter array(object, "children");
      for (const __int64 child : set.GetChildNodes(cookie)) array.Add(Relative(set, child));
    }
    WriteFiles(definition, &used, object);
  }
  return out + '\n';
}

}  // namespace ondrel::command
