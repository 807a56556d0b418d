// A look at a project's text before and after the library's own: it knows lines, and it knows what a load would trip
// over.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/platform/xml_scan.h>

#include "project_findings.h"

namespace ondrel::command {

/// An icon file or code file as the project names it.
struct ProjectFile {
  LoadOrder order;
  int line = 0;
  std::optional<__int64> cookie;  ///< None when it is missing or no number.
  std::optional<CString> path;    ///< As the set files it, with the project's folder before a relative name.
  CString spelling;               ///< As it stands in the project.
};

/// Reads project text by the rules of the library's load: which elements are read at all, in which order, and what
/// makes a load fail or never end. The text is scanned once, at construction.
class ProjectInspector : private platform::XmlScanHandler {
 public:
  /// `folder` is the project's, with its closing separator.
  ProjectInspector(const CString& text, CString folder);

  /// Why the text is no XML that a load accepts, when it is not.
  const std::optional<platform::XmlFault>& Fault() const { return m_fault; }
  const ProjectFindings& Findings() const { return m_findings; }
  const std::vector<ProjectFile>& IconFiles() const { return m_iconFiles; }
  const std::vector<ProjectFile>& CodeFiles() const { return m_codeFiles; }
  /// The line of the node or dialog with that cookie; 0 when there is none.
  int LineOfObject(__int64 cookie) const;

 private:
  /// What an open element is to the load.
  enum class Role {
    unread,
    nodes,  ///< A NodeGroup, or the Nodes of a node: its Node elements are read.
    node,
    dialogs,
    dialog,
    files,  ///< The first FileGroup.
    childQueries,
    renderQueries,
    scripts,
  };

  /// A node or dialog.
  struct Record {
    LoadOrder order;
    int line = 0;
    std::string label;  ///< "node 5"
    std::optional<__int64> cookie;
    CString name;
    bool isDialog = false;
    bool hasView = false;  ///< HTML and Dialog: a style sheet and render queries are read.
    bool hasMenuScript = false;
    bool hasStyleSheet = false;
  };

  struct OpenElement {
    Role role = Role::unread;
    std::size_t group = 0;
    std::size_t record = 0;  ///< The record that the element is or belongs to.
  };

  using Attributes = std::vector<Attribute>;

  void OnStartElement(const CString& name, const Attributes& attributes, int line) override;
  void OnEndElement(const CString& name, int line) override;

  void ReadRoot(const CString& name, int line);
  OpenElement ReadChild(const CString& name, const Attributes& attributes, int line);
  OpenElement ReadRecordChild(const OpenElement& parent, const CString& name, const Attributes& attributes, int line);
  OpenElement ReadRecord(const OpenElement& parent, bool isDialog, const Attributes& attributes, int line);
  void ReadQuery(const Record& record, LoadOrder::Step step, const Attributes& attributes, int line);
  void ReadFileReference(const Record& record, LoadOrder::Step step, const CString& name, const Attributes& attributes,
                         int line);
  void ReadScript(const Record& record, const Attributes& attributes, int line);
  void ReadFile(bool isIcon, const Attributes& attributes, int line);
  void CloseRecord(const Record& record);

  /// The number in an attribute, with a finding when it is none.
  template <class Owner>
  std::optional<__int64> ReadCookie(LoadOrder order, const Owner& owner, const Attribute& attribute, int line);
  void FindTakenObjects();
  void FindTakenFiles(const std::vector<ProjectFile>& files, const char* kind);
  void Report(LoadOrder order, int line, std::string explanation, HRESULT status);

  CString m_folder;
  std::optional<platform::XmlFault> m_fault;
  ProjectFindings m_findings;
  std::vector<OpenElement> m_open;
  std::size_t m_groups = 0;
  bool m_sawFileGroup = false;
  std::vector<Record> m_records;
  std::map<__int64, int> m_objectLines;
  std::vector<ProjectFile> m_iconFiles;
  std::vector<ProjectFile> m_codeFiles;
};

}  // namespace ondrel::command
