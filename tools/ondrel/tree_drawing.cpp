// The console tree with its branches, and the tables of dialogs, icons and code files.
#include "tree_drawing.h"

#include <set>
#include <vector>

#include "node_walk.h"
#include "printable.h"
#include "table.h"
#include "used_files.h"

namespace ondrel::command {
namespace {

// Deeper nodes get their level in digits: branches as wide as the tree is deep would fill a disk.
constexpr std::size_t kDeepestDrawn = 24;

/// What to call the files that records refer to.
class FileNames {
 public:
  FileNames(Definition& definition, const Colours& colours) : m_definition(definition), m_colours(colours) {
    for (const __int64 cookie : definition.set.GetIconFiles()) m_icons.insert(cookie);
    for (const __int64 cookie : definition.set.GetCodeFiles()) m_codeFiles.insert(cookie);
  }

  std::string Icon(__int64 cookie) const { return cookie == 0 ? "" : Name(cookie, m_icons); }
  std::string CodeFile(__int64 cookie) const { return cookie == 0 ? "none" : Name(cookie, m_codeFiles); }

 private:
  std::string Name(__int64 cookie, const std::set<__int64>& known) const {
    if (!known.contains(cookie)) return m_colours.Missing(std::to_string(cookie) + " (missing)");
    CString path;
    if (m_definition.set.GetFilePath(cookie, path)) return Printable(m_definition.DisplayPath(path));
    return m_colours.Cookie(std::to_string(cookie));
  }

  Definition& m_definition;
  const Colours& m_colours;
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

/// What is drawn, and how.
struct Drawing {
  Drawing(Definition& drawn, const Colours& itsColours)
      : definition(drawn), colours(itsColours), names(drawn, itsColours) {}

  Definition& definition;
  const Colours& colours;
  FileNames names;
};

void AddRecord(const std::string& branches, const CMMCObjectParams& record, const Drawing& drawing, Table& table) {
  const auto type = record.GetNodeType();
  table.Add({branches + drawing.colours.Name(Printable(record.GetName()), type),
             Printable(CMMCObjectParams::GetNodeTypeName(type)),
             drawing.colours.Cookie(std::to_string(record.GetCookie())), drawing.names.Icon(record.GetIcon()),
             CodeFilesOf(record, drawing.names)});
}

Table RecordTable(const char* title, const Colours& colours) {
  return Table({{colours.Title(title)},
                {colours.Title("Type")},
                {colours.Title("Cookie")},
                {colours.Title("Icon")},
                {colours.Title("Files")}});
}

class TreeDrawing : public NodeVisitor {
 public:
  TreeDrawing(const Drawing& drawing, Table& table) : m_drawing(drawing), m_table(table) {}

  void EnterNode(const CMMCObjectParams& node, std::size_t depth, bool isLast) override {
    AddRecord(Branches(depth, isLast), node, m_drawing, m_table);
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

  const Drawing& m_drawing;
  Table& m_table;
  std::vector<bool> m_isLast;  ///< For each node above the next one.
};

std::string Section(const Table& table) { return '\n' + table.Text(); }

std::string PathText(const std::optional<CString>& path) { return path ? Printable(*path) : std::string(); }

/// The tree, or one node of it with what is below.
std::string NodesText(const Drawing& drawing, std::optional<__int64> node) {
  CMMCObjectSet& set = drawing.definition.set;
  if (!node && set.GetChildNodes(CMMCObjectSet::RootNode).empty()) return {};
  Table table = RecordTable("Nodes", drawing.colours);
  TreeDrawing tree(drawing, table);
  if (node) {
    WalkSubtree(set, *node, tree);
  } else {
    WalkNodes(set, tree);
  }
  return Section(table);
}

std::string DialogsText(const Drawing& drawing) {
  Table table = RecordTable("Dialogs", drawing.colours);
  const auto dialogs = drawing.definition.set.GetDialogs();
  for (const __int64 cookie : dialogs) {
    CMMCObjectParams* dialog = nullptr;
    if (drawing.definition.set.GetParams(cookie, dialog)) AddRecord("", *dialog, drawing, table);
  }
  return dialogs.empty() ? std::string() : Section(table);
}

std::string IconsText(const std::vector<IconFile>& files, const Colours& colours) {
  Table table({{colours.Title("Icons"), Table::Alignment::right},
               {colours.Title("Large")},
               {colours.Title("Small")},
               {colours.Title("Path")}});
  for (const IconFile& file : files) {
    table.Add({colours.Cookie(std::to_string(file.cookie)), ImageText(file.large), ImageText(file.smallIcon),
               PathText(file.path)});
  }
  return files.empty() ? std::string() : Section(table);
}

std::string CodeFilesText(const std::vector<CodeFile>& files, const Colours& colours) {
  Table table({{colours.Title("Code files"), Table::Alignment::right},
               {colours.Title("Bytes"), Table::Alignment::right},
               {colours.Title("Path")}});
  for (const CodeFile& file : files) {
    table.Add({colours.Cookie(std::to_string(file.cookie)), BytesText(file, colours), PathText(file.path)});
  }
  return files.empty() ? std::string() : Section(table);
}

}  // namespace

std::string FormText(const Definition& definition) {
  return PrintablePath(definition.file) + (definition.form == DefinitionForm::project ? ": project, " : ": image, ");
}

std::string ImageText(const tagBITMAP& image) {
  return SizeText(image.bmWidth, image.bmHeight) + ", " + std::to_string(image.bmBitsPixel) + " bit";
}

std::string BytesText(const CodeFile& file, const Colours& colours) {
  return file.bytes ? std::to_string(*file.bytes) : colours.Missing("unreadable");
}

std::string SummaryText(CMMCObjectSet& set) {
  return Counted(CountNodes(set), "node", "nodes") + ", " + Counted(set.GetDialogs().size(), "dialog", "dialogs") +
         ", " + Counted(set.GetIconFiles().size(), "icon", "icons") + ", " +
         Counted(set.GetCodeFiles().size(), "code file", "code files");
}

std::string DrawingText(Definition& definition, const Colours& colours) {
  const Drawing drawing(definition, colours);
  return FormText(definition) + SummaryText(definition.set) + '\n' + NodesText(drawing, std::nullopt) +
         DialogsText(drawing) + IconsText(ListIconFiles(definition), colours) +
         CodeFilesText(ListCodeFiles(definition), colours);
}

std::string SubtreeText(Definition& definition, __int64 node, const Colours& colours) {
  const Drawing drawing(definition, colours);
  const UsedFiles used = FilesOfSubtree(definition.set, node);
  const auto icons = ListIconFiles(definition, &used.icons);
  const auto codeFiles = ListCodeFiles(definition, &used.codeFiles);
  return FormText(definition) + "subtree of node " + std::to_string(node) + ", " +
         Counted(CountNodes(definition.set, node), "node", "nodes") + ", " + Counted(icons.size(), "icon", "icons") +
         ", " + Counted(codeFiles.size(), "code file", "code files") + '\n' + NodesText(drawing, node) +
         IconsText(icons, colours) + CodeFilesText(codeFiles, colours);
}

}  // namespace ondrel::command
