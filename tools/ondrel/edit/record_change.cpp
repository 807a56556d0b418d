// Names of files become cookies, and a record keeps only what its type can hold.
#include "edit/record_change.h"

#include <utility>

#include "edit/file_name.h"
#include "edit/written_text.h"
#include "printable.h"

namespace ondrel::command {
namespace {

constexpr const char* kNoFile = "none";

/// The files that a change names. A look at all files of a project is taken only when one of them is wanted.
class NamedFiles {
 public:
  NamedFiles(Definition& definition, FileKind kind) : m_definition(definition), m_kind(kind) {}

  __int64 Cookie(const std::string& name) {
    if (!m_files) m_files.emplace(m_definition, m_kind);
    return m_files->Find(name);
  }
  /// 0 for "none".
  __int64 CookieOrNone(const std::string& name) { return name == kNoFile ? 0 : Cookie(name); }

  CMMCObjectParams::QueryList Queries(const std::vector<QueryOption>& options) {
    CMMCObjectParams::QueryList queries;
    for (const QueryOption& option : options) {
      queries.emplace_back(TextToWrite(m_definition.At(0), "the tag", option.tag), Cookie(option.file));
    }
    return queries;
  }

 private:
  Definition& m_definition;
  FileKind m_kind;
  std::optional<ProjectFiles> m_files;
};

void RequireKept(const Definition& definition, const CMMCObjectParams& record) {
  const CMMCObjectParams::_eTypeNode type = record.GetNodeType();
  const auto require = [&](bool isKept, const char* what, const char* advice) {
    if (isKept) return;
    throw Failure(definition.At(0),
                  "the type " + Printable(CMMCObjectParams::GetNodeTypeName(type)) + " keeps no " + what +
                      ", and a save would lose what is given; " + advice,
                  StatusText(E_INVALIDARG));
  };
  const bool hasView = type == CMMCObjectParams::eHTML || type == CMMCObjectParams::eDialog;
  require(hasView || record.GetStyleSheet() == 0, "style sheet", "give \"--style-sheet none\", or \"--type html\"");
  require(hasView || record.GetRenderQueries().empty(), "render queries",
          "give \"--no-render-queries\", or \"--type html\"");
  require(type != CMMCObjectParams::eDialog || record.GetChildQueries().empty(), "child queries",
          "give \"--no-child-queries\", or another type");
}

}  // namespace

bool RecordChange::IsEmpty() const {
  return !name && !type && !icon && !menuScript && !styleSheet && !scripts && !childQueries && !renderQueries;
}

void ChangeRecord(Definition& definition, const RecordChange& change, CMMCObjectParams& record) {
  NamedFiles icons(definition, FileKind::icon);
  NamedFiles code(definition, FileKind::code);
  if (change.name) record.SetName(NameToWrite(definition.At(0), *change.name));
  if (change.type) record.SetNodeType(*change.type);
  if (change.icon) record.SetIcon(icons.CookieOrNone(*change.icon));
  if (change.menuScript) record.SetMenuScript(code.CookieOrNone(*change.menuScript));
  if (change.styleSheet) record.SetStyleSheet(code.CookieOrNone(*change.styleSheet));
  if (change.scripts) {
    CMMCObjectParams::ScriptList scripts;
    for (const std::string& file : *change.scripts) scripts.push_back(code.Cookie(file));
    record.SetScripts(std::move(scripts));
  }
  if (change.childQueries) record.SetChildQueries(code.Queries(*change.childQueries));
  if (change.renderQueries) record.SetRenderQueries(code.Queries(*change.renderQueries));
  RequireKept(definition, record);
}

bool HoldTheSame(const CMMCObjectParams& left, const CMMCObjectParams& right) {
  return left.GetName() == right.GetName() && left.GetNodeType() == right.GetNodeType() &&
         left.GetIcon() == right.GetIcon() && left.GetMenuScript() == right.GetMenuScript() &&
         left.GetStyleSheet() == right.GetStyleSheet() && left.GetScripts() == right.GetScripts() &&
         left.GetChildQueries() == right.GetChildQueries() && left.GetRenderQueries() == right.GetRenderQueries();
}

}  // namespace ondrel::command
