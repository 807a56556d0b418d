// The console tree with its branches, and the tables of dialogs, icons and code files.
#include "tree_drawing.h"

#include <set>
#include <vector>

#include "file_listing.h"
#include "node_walk.h"
#include "printable.h"
#include "table.h"

namespace ondrel::command {
namespace {

// Deeper nodes get their level in digits: branches as wide as the tree is deep would fill a disk.
constexpr std::size_t kDeepestDrawn = 24;

/// What to call the files that records refer to.
class FileNames {
 public:
  explicit FileNames(Definition& definition) : m_definition(definition) {
    for (const __int64 cookie : definition.set.GetIconFiles()) m_icons.insert(cookie);
    for (const __int64 cookie : definition.set.GetCodeFiles()) m_codeFiles.insert(cookie);
  }

  std::string Icon(__int64 cookie) const { return cookie == 0 ? "" : Name(cookie, m_icons); }
  std::string CodeFile(__int64 cookie) const { return cookie == 0 ? "none" : Name(cookie, m_codeFiles); }

 private:
  std::string Name(__int64 cookie, const std::set<__int64>& known) const {
    if (!known.contains(cookie)) return std::to_string(cookie) + " (missing)";
    CString path;
    if (m_definition.set.GetFilePath(cookie, path)) return Printable(m_definition.DisplayPath(path));
    return std::to_string(cookie);
  }

  Definition& m_definition;
  std::set<__int64> m_icons;
  std::set<__int64> m_codeFiles;
};

std::string Joined(const std::vector<std::string>& parts, const char* separator) {
  std::string text;
  for (const std::string& part : parts) {
    if (!text.empty()) text += separator;
    text += part;
  }
  return text;
}

std::string Queries(const CMMCObjectParams::QueryList& queries, const FileNames& names) {
  std::vector<std::string> parts;
  for (const auto& [tag, file] : queries) parts.push_back(Printable(tag) + " = " + names.CodeFile(file));
  return Joined(parts, ", ");
}

/// "menu a.js; scripts b.js, c.js; style d.xsl; children Disks = e.wql; view Summary = f.wql", without what is not
/// there.
std::string CodeFilesOf(const CMMCObjectParams& record, const FileNames& names) {
  std::vector<std::string> parts;
  if (record.GetMenuScript() != 0) parts.push_back("menu " + names.CodeFile(record.GetMenuScript()));
  std::vector<std::string> scripts;
  for (const __int64 script : record.GetScripts()) scripts.push_back(names.CodeFile(script));
  if (!scripts.empty()) parts.push_back("scripts " + Joined(scripts, ", "));
  if (record.GetStyleSheet() != 0) parts.push_back("style " + names.CodeFile(record.GetStyleSheet()));
  const auto children = record.GetChildQueries();
  if (!children.empty()) parts.push_back("children " + Queries(children, names));
  const auto view = record.GetRenderQueries();
  if (!view.empty()) parts.push_back("view " + Queries(view, names));
  return Joined(parts, "; ");
}

void AddRecord(const std::string& branches, const CMMCObjectParams& record, const FileNames& names, Table& table) {
  table.Add({branches + Printable(record.GetName()), Printable(CMMCObjectParams::GetNodeTypeName(record.GetNodeType())),
             std::to_string(record.GetCookie()), names.Icon(record.GetIcon()), CodeFilesOf(record, names)});
}

Table RecordTable(const char* title) { return Table({{title}, {"Type"}, {"Cookie"}, {"Icon"}, {"Files"}}); }

class TreeDrawing : public NodeVisitor {
 public:
  TreeDrawing(const FileNames& names, Table& table) : m_names(names), m_table(table) {}

  void EnterNode(const CMMCObjectParams& node, std::size_t depth, bool isLast) override {
    AddRecord(Branches(depth, isLast), node, m_names, m_table);
    m_isLast.push_back(isLast);
  }
  void LeaveNode(bool) override { m_isLast.pop_back(); }

 private:
  /// Top-level nodes stand at the margin; every other node hangs on the branches of those above it.
  std::string Branches(std::size_t depth, bool isLast) const {
    if (depth == 0) return {};
    std::string text;
    if (depth > kDeepestDrawn) {
      text = "[level " + std::to_string(depth) + "] ";
    } else {
      for (std::size_t level = 1; level < depth; ++level) text += m_isLast[level] ? "   " : "│  ";
    }
    return text + (isLast ? "└─ " : "├─ ");
  }

  const FileNames& m_names;
  Table& m_table;
  std::vector<bool> m_isLast;  ///< For each node above the next one.
};

std::string Section(const Table& table) { return '\n' + table.Text(); }

std::string ImageText(const tagBITMAP& image) {
  return SizeText(image.bmWidth, image.bmHeight) + ", " + std::to_string(image.bmBitsPixel) + " bit";
}

std::string PathText(const std::optional<CString>& path) { return path ? Printable(*path) : std::string(); }

std::string NodesText(Definition& definition, const FileNames& names) {
  if (definition.set.GetChildNodes(CMMCObjectSet::RootNode).empty()) return {};
  Table table = RecordTable("Nodes");
  TreeDrawing drawing(names, table);
  WalkNodes(definition.set, drawing);
  return Section(table);
}

std::string DialogsText(Definition& definition, const FileNames& names) {
  Table table = RecordTable("Dialogs");
  const auto dialogs = definition.set.GetDialogs();
  for (const __int64 cookie : dialogs) {
    CMMCObjectParams* dialog = nullptr;
    if (definition.set.GetParams(cookie, dialog)) AddRecord("", *dialog, names, table);
  }
  return dialogs.empty() ? std::string() : Section(table);
}

std::string IconsText(const Definition& definition) {
  const auto files = ListIconFiles(definition);
  Table table({{"Icons", Table::Alignment::right}, {"Large"}, {"Small"}, {"Path"}});
  for (const IconFile& file : files) {
    table.Add({std::to_string(file.cookie), ImageText(file.large), ImageText(file.smallIcon), PathText(file.path)});
  }
  return files.empty() ? std::string() : Section(table);
}

std::string CodeFilesText(Definition& definition) {
  const auto files = ListCodeFiles(definition);
  Table table({{"Code files", Table::Alignment::right}, {"Bytes", Table::Alignment::right}, {"Path"}});
  for (const CodeFile& file : files) {
    table.Add(
        {std::to_string(file.cookie), file.bytes ? std::to_string(*file.bytes) : "unreadable", PathText(file.path)});
  }
  return files.empty() ? std::string() : Section(table);
}

}  // namespace

std::string SummaryText(CMMCObjectSet& set) {
  return Counted(CountNodes(set), "node", "nodes") + ", " + Counted(set.GetDialogs().size(), "dialog", "dialogs") +
         ", " + Counted(set.GetIconFiles().size(), "icon", "icons") + ", " +
         Counted(set.GetCodeFiles().size(), "code file", "code files");
}

std::string DrawingText(Definition& definition) {
  const FileNames names(definition);
  const char* const form = definition.form == DefinitionForm::project ? "project" : "image";
  return PrintablePath(definition.file) + ": " + form + ", " + SummaryText(definition.set) + '\n' +
         NodesText(definition, names) + DialogsText(definition, names) + IconsText(definition) +
         CodeFilesText(definition);
}

}  // namespace ondrel::command
