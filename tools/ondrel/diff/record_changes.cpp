// The comparison of two records, value by value.
#include "diff/record_changes.h"

#include "printable.h"

namespace ondrel::command {
namespace {

class ChangeList {
 public:
  void Compare(const char* name, const std::string& older, const std::string& newer) {
    if (older == newer) return;
    if (!m_text.empty()) m_text += ", ";
    m_text.append(name).append(" ").append(Shortened(older)).append(" -> ").append(Shortened(newer));
  }
  void Compare(const char* name, __int64 older, __int64 newer) {
    Compare(name, std::to_string(older), std::to_string(newer));
  }

  std::string Text() && { return std::move(m_text); }

 private:
  std::string m_text;
};

/// The whole name in quotes: two long names may differ at their ends.
std::string WholeQuoted(const CString& text) { return '"' + Printable(text) + '"'; }

std::string QueriesText(const CMMCObjectParams::QueryList& queries) {
  std::string text = "[";
  for (const auto& [tag, file] : queries) {
    if (text.size() > 1) text += ", ";
    text += WholeQuoted(tag) + ' ' + std::to_string(file);
  }
  return text + ']';
}

std::string ScriptsText(const CMMCObjectParams::ScriptList& scripts) {
  std::string text = "[";
  for (const __int64 script : scripts) {
    if (text.size() > 1) text += ", ";
    text += std::to_string(script);
  }
  return text + ']';
}

std::string TypeText(const CMMCObjectParams& params) {
  return Printable(CMMCObjectParams::GetNodeTypeName(params.GetNodeType()));
}

}  // namespace

std::string RecordChanges(const CMMCObjectParams& older, const CMMCObjectParams& newer) {
  ChangeList changes;
  changes.Compare("cookie", older.GetCookie(), newer.GetCookie());
  changes.Compare("name", WholeQuoted(older.GetName()), WholeQuoted(newer.GetName()));
  changes.Compare("icon", older.GetIcon(), newer.GetIcon());
  changes.Compare("type", TypeText(older), TypeText(newer));
  changes.Compare("child queries", QueriesText(older.GetChildQueries()), QueriesText(newer.GetChildQueries()));
  changes.Compare("menu script", older.GetMenuScript(), newer.GetMenuScript());
  changes.Compare("scripts", ScriptsText(older.GetScripts()), ScriptsText(newer.GetScripts()));
  changes.Compare("style sheet", older.GetStyleSheet(), newer.GetStyleSheet());
  changes.Compare("render queries", QueriesText(older.GetRenderQueries()), QueriesText(newer.GetRenderQueries()));
  return std::move(changes).Text();
}

}  // namespace ondrel::command
