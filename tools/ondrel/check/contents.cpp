// The walk over a loaded image's records and files.
#include "check/contents.h"

#include <vector>

#include "node_walk.h"

namespace ondrel::command {
namespace {

class ContentsWriter : public NodeVisitor {
 public:
  void EnterNode(const CMMCObjectParams& node, std::size_t, bool) override {
    const std::size_t parent = m_open.empty() ? kNoRecord : m_open.back();
    m_open.push_back(m_contents.records.size());
    AddRecord(node, false, parent);
  }
  void LeaveNode(bool) override { m_open.pop_back(); }

  void AddRecord(const CMMCObjectParams& params, bool isDialog, std::size_t parent) {
    ProjectRecord record;
    record.line = ++m_place;
    record.cookie = params.GetCookie();
    record.label = (isDialog ? "dialog " : "node ") + std::to_string(*record.cookie);
    record.name = params.GetName();
    record.type = params.GetNodeType();
    record.isDialog = isDialog;
    record.parent = parent;
    m_contents.records.push_back(std::move(record));
    AddReferences(params);
  }

  ProjectFile FileOf(Subject::Kind kind, __int64 cookie) {
    ProjectFile file;
    file.kind = kind;
    file.line = ++m_place;
    file.cookie = cookie;
    return file;
  }

  ProjectContents& Contents() { return m_contents; }

 private:
  void AddReferences(const CMMCObjectParams& params) {
    using Kind = FileReference::Kind;
    const auto add = [&](Kind kind, __int64 cookie) {
      m_contents.references.push_back({kind, m_contents.records.size() - 1, cookie, m_place});
    };
    add(Kind::icon, params.GetIcon());
    for (const auto& [tag, file] : params.GetChildQueries()) add(Kind::childQuery, file);
    add(Kind::menuScript, params.GetMenuScript());
    for (const __int64 script : params.GetScripts()) add(Kind::script, script);
    add(Kind::styleSheet, params.GetStyleSheet());
    for (const auto& [tag, file] : params.GetRenderQueries()) add(Kind::renderQuery, file);
  }

  ProjectContents m_contents;
  std::vector<std::size_t> m_open;
  int m_place = 0;
};

}  // namespace

ProjectContents ContentsOfImage(CMMCObjectSet& set) {
  ContentsWriter writer;
  WalkNodes(set, writer);
  for (const __int64 cookie : set.GetDialogs()) {
    CMMCObjectParams* dialog = nullptr;
    if (set.GetParams(cookie, dialog)) writer.AddRecord(*dialog, true, kNoRecord);
  }
  for (const __int64 cookie : set.GetIconFiles()) {
    writer.Contents().iconFiles.push_back(writer.FileOf(Subject::Kind::iconFile, cookie));
  }
  for (const __int64 cookie : set.GetCodeFiles()) {
    writer.Contents().codeFiles.push_back(writer.FileOf(Subject::Kind::codeFile, cookie));
  }
  return std::move(writer.Contents());
}

}  // namespace ondrel::command
