// The fields of a record, with what is known of the files and nodes that they name.
#include "record_drawing.h"

#include <map>
#include <vector>

#include "edit/object_name.h"
#include "file_listing.h"
#include "node_walk.h"
#include "printable.h"
#include "tree_drawing.h"
#include "used_files.h"

namespace ondrel::command {
namespace {

class RecordDrawing {
 public:
  RecordDrawing(Definition& definition, const CMMCObjectParams& record, const Colours& colours);

  std::string Text() &&;

 private:
  void AddField(const char* label, const std::string& value);
  /// One line for each of `values`, or one that says that there are none.
  void AddList(const char* label, const std::vector<std::string>& values);
  void AddQueries(const char* label, const CMMCObjectParams::QueryList& queries);
  void AddRelatives();

  std::string NodeName(__int64 cookie) const;
  std::string IconName(__int64 cookie) const;
  std::string CodeFileName(__int64 cookie) const;
  std::string WithPath(__int64 cookie, const std::optional<CString>& path, const std::string& facts) const;
  std::string MissingFile(__int64 cookie) const;

  Definition& m_definition;
  const CMMCObjectParams& m_record;
  const Colours& m_colours;
  std::map<__int64, IconFile> m_icons;
  std::map<__int64, CodeFile> m_codeFiles;
  std::string m_text;
};

RecordDrawing::RecordDrawing(Definition& definition, const CMMCObjectParams& record, const Colours& colours)
    : m_definition(definition), m_record(record), m_colours(colours) {
  UsedFiles used;
  used.Add(record);
  for (IconFile& file : ListIconFiles(definition, &used.icons)) m_icons.emplace(file.cookie, std::move(file));
  for (CodeFile& file : ListCodeFiles(definition, &used.codeFiles)) m_codeFiles.emplace(file.cookie, std::move(file));
}

std::string RecordDrawing::Text() && {
  const auto type = m_record.GetNodeType();
  AddField("Name", m_colours.Name(Printable(m_record.GetName()), type));
  AddField("Cookie", m_colours.Cookie(std::to_string(m_record.GetCookie())));
  AddField("Type", Printable(CMMCObjectParams::GetNodeTypeName(type)));
  AddRelatives();
  AddField("Icon", IconName(m_record.GetIcon()));
  AddQueries("Child queries", m_record.GetChildQueries());
  AddField("Menu script", CodeFileName(m_record.GetMenuScript()));
  std::vector<std::string> scripts;
  for (const __int64 script : m_record.GetScripts()) scripts.push_back(CodeFileName(script));
  AddList("Scripts", scripts);
  AddField("Style sheet", CodeFileName(m_record.GetStyleSheet()));
  AddQueries("Render queries", m_record.GetRenderQueries());
  return std::move(m_text);
}

void RecordDrawing::AddField(const char* label, const std::string& value) {
  constexpr std::size_t kLabelWidth = 16;
  const std::string text(label);
  m_text += m_colours.Title(text);
  if (!value.empty()) m_text += std::string(kLabelWidth - text.size(), ' ') + value;
  m_text += '\n';
}

void RecordDrawing::AddList(const char* label, const std::vector<std::string>& values) {
  if (values.empty()) return AddField(label, "none");
  for (std::size_t index = 0; index < values.size(); ++index) AddField(index == 0 ? label : "", values[index]);
}

void RecordDrawing::AddQueries(const char* label, const CMMCObjectParams::QueryList& queries) {
  std::vector<std::string> values;
  for (const auto& [tag, file] : queries) values.push_back(Printable(tag) + " = " + CodeFileName(file));
  AddList(label, values);
}

void RecordDrawing::AddRelatives() {
  CMMCObjectSet& set = m_definition.set;
  const __int64 cookie = m_record.GetCookie();
  if (IsDialog(set, cookie)) return;  // which has none
  const auto parent = FindParent(set, cookie);
  if (!parent) {
    AddField("Parent", "unknown: a node with a negative cookie, and what is below it, is not listed");
  } else {
    AddField("Parent", *parent == CMMCObjectSet::RootNode ? "none, it is a top-level node" : NodeName(*parent));
  }
  std::vector<std::string> children;
  for (const __int64 child : set.GetChildNodes(cookie)) children.push_back(NodeName(child));
  AddList("Children", children);
}

std::string RecordDrawing::NodeName(__int64 cookie) const {
  CMMCObjectParams* node = nullptr;
  std::string text = m_colours.Cookie(std::to_string(cookie));
  if (m_definition.set.GetParams(cookie, node)) {
    text += "  " + m_colours.Name(Printable(node->GetName()), node->GetNodeType());
  }
  return text;
}

std::string RecordDrawing::IconName(__int64 cookie) const {
  if (cookie == 0) return "none";
  const auto file = m_icons.find(cookie);
  if (file == m_icons.end()) return MissingFile(cookie);
  return WithPath(cookie, file->second.path,
                  "large " + ImageText(file->second.large) + "; small " + ImageText(file->second.smallIcon));
}

std::string RecordDrawing::CodeFileName(__int64 cookie) const {
  if (cookie == 0) return "none";
  const auto file = m_codeFiles.find(cookie);
  if (file == m_codeFiles.end()) return MissingFile(cookie);
  const CodeFile& found = file->second;
  return WithPath(cookie, found.path,
                  found.bytes ? Counted(*found.bytes, "byte", "bytes") : BytesText(found, m_colours));
}

std::string RecordDrawing::WithPath(__int64 cookie, const std::optional<CString>& path,
                                    const std::string& facts) const {
  std::string text = m_colours.Cookie(std::to_string(cookie));
  if (path) text += "  " + Printable(*path);
  return text + "  " + facts;
}

std::string RecordDrawing::MissingFile(__int64 cookie) const {
  return m_colours.Missing(std::to_string(cookie) + " (missing)");
}

}  // namespace

std::string RecordText(Definition& definition, __int64 cookie, const Colours& colours) {
  CMMCObjectParams* record = nullptr;
  definition.set.GetParams(cookie, record);
  return FormText(definition) + ObjectLabel(definition.set, cookie) + "\n\n" +
         RecordDrawing(definition, *record, colours).Text();
}

}  // namespace ondrel::command
