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

void WriteRecords(CMMCObjectSet& set, const std::list<__int64>& cookies, const char* name, std::string& out) {
  JsonArrayWriter array(out, name);
  for (const __int64 cookie : cookies) {
    CMMCObjectParams* record = nullptr;
    if (set.GetParams(cookie, record)) array.Add(RecordJson(*record));
  }
}

void WriteFiles(Definition& definition, const UsedFiles* used, std::string& out) {
  {
    JsonArrayWriter array(out, "icons");
    for (const IconFile& file : ListIconFiles(definition, used == nullptr ? nullptr : &used->icons)) {
      array.Add({{"cookie", CookieJson(file.cookie)},
                 {"path", PathJson(file.path)},
                 {"large", Geometry(file.large)},
                 {"small", Geometry(file.smallIcon)}});
    }
  }
  JsonArrayWriter array(out, "codeFiles");
  for (const CodeFile& file : ListCodeFiles(definition, used == nullptr ? nullptr : &used->codeFiles)) {
    array.Add({{"cookie", CookieJson(file.cookie)},
               {"path", PathJson(file.path)},
               {"bytes", file.bytes ? Json(*file.bytes) : Json()}});
  }
}

std::string Head(const Definition& definition) {
  return definition.form == DefinitionForm::project ? "{\"form\":\"project\"" : "{\"form\":\"image\"";
}

/// A node as its relatives are told of it.
Json Relative(CMMCObjectSet& set, __int64 cookie) {
  CMMCObjectParams* node = nullptr;
  if (!set.GetParams(cookie, node)) return {};
  return {{"cookie", CookieJson(cookie)}, {"name", platform::ToUtf8(node->GetName())}};
}

}  // namespace

std::string JsonString(const std::string& utf8) { return JsonLine(Json(utf8)); }

std::string JsonText(Definition& definition) {
  std::string out = Head(definition) + ",\n\"nodes\":[";
  NodeWriter nodes(out);
  WalkNodes(definition.set, nodes);
  out += ']';
  WriteRecords(definition.set, definition.set.GetDialogs(), "dialogs", out);
  WriteFiles(definition, nullptr, out);
  return out + "}\n";
}

std::string SubtreeJsonText(Definition& definition, __int64 node) {
  const UsedFiles used = FilesOfSubtree(definition.set, node);
  std::string out = Head(definition) + ",\n\"nodes\":[";
  NodeWriter nodes(out);
  WalkSubtree(definition.set, node, nodes);
  out += ']';
  WriteRecords(definition.set, {}, "dialogs", out);
  WriteFiles(definition, &used, out);
  return out + "}\n";
}

std::string RecordJsonText(Definition& definition, __int64 cookie) {
  CMMCObjectSet& set = definition.set;
  CMMCObjectParams* record = nullptr;
  set.GetParams(cookie, record);
  const bool isDialog = IsDialog(set, cookie);
  const auto parent = isDialog ? std::nullopt : FindParent(set, cookie);
  std::string out = Head(definition) + ",\n\"kind\":" + (isDialog ? "\"dialog\"" : "\"node\"") +
                    ",\n\"record\":" + JsonLine(RecordJson(*record)) +
                    ",\n\"parent\":" + JsonLine(parent ? Relative(set, *parent) : Json());
  {
    JsonArrayWriter array(out, "children");
    for (const __int64 child : set.GetChildNodes(cookie)) array.Add(Relative(set, child));
  }
  UsedFiles used;
  used.Add(*record);
  WriteFiles(definition, &used, out);
  return out + "}\n";
}

}  // namespace ondrel::command
